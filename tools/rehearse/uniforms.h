// The values that a program's uniforms have at the moment.
#pragma once

#include <GL/glew.h>

// All floats to 0, as a program has them that was just linked.
void clearUniforms(GLhandleARB program);

// Those that both have by the same name and type.
void copyUniforms(GLhandleARB from, GLhandleARB to);
