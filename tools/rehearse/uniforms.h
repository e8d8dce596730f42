// The values that a program's uniforms have at the moment.
#pragma once

#include <GL/glew.h>

#include <vector>

// All floats to 0, as a program has them that was just linked.
void clearUniforms(GLhandleARB program);

// Another program in the place of one, with the values of those uniforms that both have by the same name and
// type; the old one is deleted, and "boom" is centred anew.
void replaceProgram(GLhandleARB* current, GLhandleARB fresh);

// A float, or a vector of two to four; nothing if there is none by that name.
void setUniform(GLhandleARB program, const char* name, const std::vector<float>& values);
