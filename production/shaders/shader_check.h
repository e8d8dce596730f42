// Compiles and links a program of the show when the data is made, so that a mistake in a shader is named
// there: the show itself can only say that there is one.
#pragma once

#include <string>

// What the compiler has against the program of the two source files: a line for each fault, with the file and
// the line in it. Empty if there is none; and where no compiler is installed, which is said once on standard
// error.
std::string shaderFaults(const std::string& vertex, const std::string& fragment);
