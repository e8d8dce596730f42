// Reading AML mesh files, which aml_format.h describes, into mesh sets.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "geometry/mesh.h"
#include "geometry/res_desc.h"

// Replaces the set's meshes by those of the file. A file that is not AML of version 2, ends early, or holds
// what a mesh can't (attributes, indices) ends the process with status 1 and a line on standard error. `name`
// is the file's, for that line.
void loadAml(MeshSet& set, ResDesc& stream, const char* name);

// The meshes in the bytes of a whole file, or nothing and the reason in `problem`; prints and ends nothing.
// No more than 10000 of them.
std::optional<MeshSet> readAml(std::string_view bytes, std::string* problem);

// For inspection: reads the older layout, without magic and version and with attribute sizes alone, prints
// every record to standard output and returns the last mesh's index (-1 if there is none). Vertices must
// start with a position index, a normal and texture coordinates.
int dumpAml(MeshSet& set, ResDesc& stream, const char* name);
