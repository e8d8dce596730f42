// What building a GLSL program needs besides GL: its source as text, and a check of GL's error flag.
#pragma once

#include <GL/glew.h>

#include <optional>
#include <string>

// The whole content of a file, zero-terminated by the string; nothing if the file can't be opened.
std::optional<std::string> readWholeFile(const char* path);

// Ends the program if a GL error is pending; returns GL_NO_ERROR otherwise.
GLenum checkGlError();
