// Building a shader program off to the side: what the compiler says is kept, and nothing is registered.
#pragma once

#include <GL/glew.h>

#include <optional>
#include <string>

#include "render/shaders.h"

struct ShaderText {
    std::string file;  // where it is from, for the compiler's words
    std::string text;
};

struct ProgramBuild {
    GLhandleARB program = 0;  // 0 if it could not be built
    std::string problem;      // then: FILE:LINE: what the compiler or the linker says, in several lines
    std::string file;         // and the file that it is about
};
// Without one of the two, what GL has in its place.
ProgramBuild buildProgram(const std::optional<ShaderText>& vertex, const std::optional<ShaderText>& fragment);

// With the shaders attached to it.
void deleteProgram(GLhandleARB program);

// "data/shaders/boom.fs:12:5: error: ..." from a driver's "0:12(5): error: ...", "0(12) : error ..." or
// "ERROR: 0:12: ...": the number before the line is that of the source string, of which there is one.
std::string withFileAndLine(const std::string& file, const std::string& log);
