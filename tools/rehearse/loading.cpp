#include "tools/rehearse/loading.h"

#include <unistd.h>

#include <filesystem>
#include <memory>
#include <thread>
#include <vector>

#include "geometry/mesh.h"
#include "image/image.h"
#include "render/demo.h"
#include "render/shaders.h"
#include "tools/rehearse/check.h"
#include "tools/rehearse/program_build.h"

namespace {

constexpr int checkerSide = 64;    // pixels
constexpr int checkerSquare = 16;  // pixels

std::map<std::string, std::string> broken;

bool isGood(const char* path) {
    return broken.find(path) == broken.end();
}

// A colour that no picture of the show has.
Image checkerboard() {
    const Image image = createImage(checkerSide, checkerSide, 3);
    for (int y = 0; y < checkerSide; y++) {
        for (int x = 0; x < checkerSide; x++) {
            const bool dark = (x / checkerSquare + y / checkerSquare) % 2;
            uint8_t* pixel = image.pixels + size_t(y) * image.stride + x * 3;
            pixel[0] = pixel[2] = dark ? 40 : 230;
            pixel[1] = dark ? 0 : 20;
        }
    }
    return image;
}

void loadCheckerboard(const TextureRow& row) {
    demo->textureNames[row.key] = demo->nextTexture++;
    const Image image = checkerboard();
    demo->replaceTexture(row.key, image, row.wrapS, row.wrapT);
    delete[] image.pixels;
}

void loadGoodLoadingPicture() {
    if (isGood(loadingRow.path)) return loadLoadingPicture();
    loadCheckerboard(loadingRow);
    demo->setTextureSize(loadingRow.key, loadingRow.width, loadingRow.height);
}

void loadGoodMeshes() {
    for (const MeshRow& row : meshRows()) {
        if (isGood(row.path))
            demo->loadMesh(row.path, row.key, 1);
        else
            demo->replaceMesh(row.key, new MeshSet);
        if (row.afterwards) row.afterwards();
        demo->drawLoadingScreen();
    }
}

void loadGoodTextures() {
    for (const TextureRow& row : textureRows()) {
        if (isGood(row.path))
            demo->loadTexture(row.path, row.key, row.wrapS, row.wrapT);
        else
            loadCheckerboard(row);
        demo->setTextureSize(row.key, row.width, row.height);
        demo->drawLoadingScreen();
    }
}

std::optional<ShaderText> textOf(const std::string& file) {
    const auto text = readWholeFile(file.c_str());
    if (!text) return std::nullopt;
    return ShaderText{file, *text};
}

void loadGoodShaders() {
    for (const ShaderRow& row : shaderRows()) {
        const std::string base = row.base;
        const BuiltProgram built = buildProgram(textOf(base + ".vs"), textOf(base + ".fs"));
        demo->shaders[row.name] = built.program;
        if (!built.program) {
            // Where the compiler's words begin with.
            const bool vertex = built.problem.starts_with(base + ".vs");
            broken[base + (vertex ? ".vs" : ".fs")] = built.problem;
            fprintf(stderr, "%s\n", built.problem.c_str());
        }
        demo->drawLoadingScreen();
    }
}

void collect(std::vector<std::unique_ptr<Check>>& checks) {
    std::erase_if(checks, [](const auto& check) {
        const auto result = check->result();
        if (result && !result->good) {
            broken[check->name] = result->problem;
            fprintf(stderr, "%s\n", result->problem.c_str());
        }
        return result.has_value();
    });
}

}  // namespace

std::map<std::string, std::string>& brokenFiles() {
    return broken;
}

void lookForBrokenFiles() {
    std::vector<std::pair<FileKind, std::string>> files = {{FileKind::picture, loadingPicture}};
    for (const TextureRow& row : textureRows()) files.emplace_back(FileKind::picture, row.path);
    for (const MeshRow& row : meshRows()) files.emplace_back(FileKind::model, row.path);

    const size_t atATime = std::max(2u, std::thread::hardware_concurrency());
    std::vector<std::unique_ptr<Check>> checks;
    for (const auto& [kind, path] : files) {
        while (checks.size() == atATime) {
            usleep(500);
            collect(checks);
        }
        std::string problem;
        if (auto snapshot = takeSnapshot(path, &problem)) {
            checks.push_back(std::make_unique<Check>(kind, path, std::move(snapshot)));
        } else {
            broken[path] = path + ": " + problem;
            fprintf(stderr, "%s\n", broken[path].c_str());
        }
    }
    while (!checks.empty()) {
        usleep(500);
        collect(checks);
    }
}

Stages patientStages() {
    return {loadGoodLoadingPicture, loadGoodMeshes, loadGoodTextures, loadGoodShaders};
}
