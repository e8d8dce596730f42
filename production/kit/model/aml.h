// Turns shapes into AML files: triangles, normals smoothed by angle, 16-bit indices.
#pragma once

#include <vector>

#include "production/kit/model/shape.h"

namespace model {

// Writes the shapes as the meshes of one file, in order; a shape that outgrows 16-bit counts is continued in
// further meshes. Every render vertex holds the index of its position (type 1), a unit normal (type 2) and
// texture coordinates of unit 0 (type 6). Corners share a vertex where point, normal and coordinates agree.
// A file that can't be written ends the process with a line.
void writeAml(const char* path, const std::vector<Shape>& shapes);

}  // namespace model
