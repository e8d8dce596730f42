// What building a GLSL program needs besides GL: its source as text, and a check of GL's error flag.
#pragma once

#include <GL/glew.h>

#include <optional>
#include <string>

#include "image/whole_file.h"

// Of the two files of a program, the vertex shader's and the fragment shader's.
constexpr const char* shaderEndings[] = {".vs", ".fs"};

// Ends the program if a GL error is pending; returns GL_NO_ERROR otherwise.
GLenum checkGlError();

struct BuiltProgram {
    GLhandleARB program = 0;
    GLhandleARB vertexShader = 0;  // 0 without a source
    GLhandleARB fragmentShader = 0;
    GLint linkStatus = 0;
    // Which step turned it down, whose log then says why. Each step needs the one before.
    enum { nothing, vertexCompiler, fragmentCompiler, linker } failed = nothing;
};
// Off to the side of the show's table. Without one of the sources, what GL has in its place. `check` is
// called before, and after the program and each step of the vertex shader.
BuiltProgram buildProgram(const std::optional<std::string>& vertex,
                          const std::optional<std::string>& fragment, GLenum (*check)());
