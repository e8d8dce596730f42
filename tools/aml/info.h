// What an AML file holds, and what the show has against it.
#pragma once

#include <string>
#include <vector>

#include "geometry/mesh.h"
#include "script/resources.h"

// That of the file's name, in whatever folder; nullptr if the show has no such file.
const MeshRow* rowOf(const std::string& path);

// Several lines, each ended. `set` as readAml leaves it.
std::string describeMeshes(const MeshSet& set);

// A line, not ended, for each reason why the show can't use the file under its name, or would look wrong or
// run slow with it. A file of another name is judged by what holds for all.
std::vector<std::string> objections(const MeshSet& set, const std::string& path);
