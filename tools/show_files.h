// The files below data/ that the show loads.
#pragma once

#include <string>
#include <vector>

#include "app/sound_music.h"
#include "render/demo.h"
#include "render/shaders.h"
#include "script/resources.h"

enum class FileKind { picture, model, shader, music };

struct FileName {
    FileKind kind;
    std::string path;
};

// All that the show loads, in its order; then the music. Of a shader one of the two may be missing.
inline std::vector<FileName> showFiles() {
    const auto textures = textureRows();
    std::vector<FileName> files = {{FileKind::picture, textures.front().path}};
    for (const MeshRow& row : meshRows()) files.push_back({FileKind::model, row.path});
    for (const TextureRow& row : textures.subspan(1)) files.push_back({FileKind::picture, row.path});
    for (const ShaderRow& row : shaderRows()) {
        for (const char* ending : shaderEndings)
            files.push_back({FileKind::shader, std::string(row.base) + ending});
    }
    files.push_back({FileKind::music, SoundMusic::path});
    return files;
}
