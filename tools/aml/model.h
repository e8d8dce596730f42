// Models in the formats of modellers, to meshes as the show's files have them and back, through assimp.
#pragma once

#include <string>
#include <vector>

#include "geometry/aml_writer.h"
#include "geometry/mesh.h"

namespace Assimp {
class Importer;
}

struct Turn {
    int axis;  // 0 to 2: x, y, z
    float degrees;
};

struct Placing {
    float scale = 1;
    std::vector<Turn> turns;  // one after the other, after the scaling
};

struct ImportedModel {
    std::vector<AmlMeshData> meshes;
    std::vector<std::string> notes;  // what was made up or left out, a line each
    std::string problem;             // a line; if it isn't empty, there are no meshes
};

// Every triangle that the model's scene shows, where it shows it; polygons are cut. Normals are kept, or made
// smooth across edges that bend by less than 40 degrees. Of several sets of texture coordinates the first is
// taken; T runs down the picture.
ImportedModel importModel(const std::string& path, const Placing& placing);
// The same by an importer that may have loaders of the caller's.
ImportedModel importModel(Assimp::Importer& importer, const std::string& path, const Placing& placing);

// The format is that of the path's ending. Returns what went wrong, as a line, or nothing. The set as loadAml
// leaves it, or with expanded positions.
std::string exportModel(const MeshSet& set, const std::string& path);
