// Writes down what is drawn, from the very calls: a line for each drawing call, copy, clear and swap, and
// before it what has changed in the state that it is drawn with. Linked in with the calls wrapped (see
// CMakeLists.txt).
#pragma once

#include <string>
#include <vector>

namespace record {

// Lines so far, without line ends. Numbers have four digits: what every driver agrees on.
std::vector<std::string> takeLines();

// Adds a line of the caller's own, such as the moment that is drawn next.
void say(const std::string& line);

// The resources as they are loaded: textures with wrap and size, meshes with their attributes, programs,
// effects.
void sayTables();

}  // namespace record
