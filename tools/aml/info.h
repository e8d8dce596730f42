// What an AML file holds, and what the show has against it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "geometry/mesh.h"
#include "script/resources.h"

// That of the file's name, in whatever folder; nullptr if the show has no such file.
const MeshRow* rowOf(const std::string& path);

// Of the file as it is at this moment; nothing, with a line that names it in `problem`, if it can't be read.
std::optional<MeshSet> readMeshes(const std::string& path, std::string* problem);

// Several lines, each ended. `set` as readMeshes leaves it.
std::string describeMeshes(const MeshSet& set);

// A line, not ended, for each reason why the show can't use the file under its name, or would look wrong or
// run slow with it. A file of another name is judged by what holds for all.
std::vector<std::string> objections(const MeshSet& set, const std::string& path);
