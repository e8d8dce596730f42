// The files below data/ that the show loads before its first frame. Its soundtrack, which it plays, is not
// among them.
#pragma once

#include <string>
#include <vector>

#include "render/demo.h"
#include "script/resources.h"

// In no particular order; of a shader one of the two may be missing.
inline std::vector<std::string> showFiles() {
    std::vector<std::string> files = {loadingPicture};
    for (const TextureRow& row : textureRows()) files.emplace_back(row.path);
    for (const MeshRow& row : meshRows()) files.emplace_back(row.path);
    for (const ShaderRow& row : shaderRows()) {
        for (const char* stage : {".vs", ".fs"}) files.push_back(std::string(row.base) + stage);
    }
    return files;
}
