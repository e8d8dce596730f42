// The values that a program's uniforms have at the moment.
#pragma once

#include <GL/glew.h>

#include <vector>

// All floats to 0, as a program has them that was just linked.
void clearUniforms(GLhandleARB program);

// Those that both have by the same name and type.
void copyUniforms(GLhandleARB from, GLhandleARB to);

// A float, or a vector of two to four; nothing if there is none by that name.
void setUniform(GLhandleARB program, const char* name, const std::vector<float>& values);
