#include "tools/rehearse/reload.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <optional>
#include <utility>

#include "app/sound_music.h"
#include "app/startup.h"
#include "effects/cube_heap.h"
#include "geometry/aml.h"
#include "production/making/laying.h"
#include "production/shaders/shaders.h"
#include "render/demo.h"
#include "render/shaders.h"
#include "script/resources.h"
#include "tools/rehearse/loading.h"
#include "tools/rehearse/uniforms.h"

namespace fs = std::filesystem;

namespace {

constexpr size_t mostChecks = 2;       // at a time
constexpr double returnsWithin = 0.5;  // seconds; editors put the old file away before the new one comes

double secondsNow() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

const TextureRow* textureOf(const std::string& path) {
    if (path == loadingRow.path) return &loadingRow;
    for (const TextureRow& row : textureRows())
        if (path == row.path) return &row;
    return nullptr;
}

const MeshRow* meshOf(const std::string& path) {
    for (const MeshRow& row : meshRows())
        if (path == row.path) return &row;
    return nullptr;
}

std::optional<FileKind> kindOf(const std::string& path) {
    if (path == SoundMusic::path) return FileKind::music;
    if (meshOf(path)) return FileKind::model;
    if (textureOf(path)) return FileKind::picture;
    return std::nullopt;
}

constexpr const char* stages[] = {".vs", ".fs"};

// The generator's source of a shader below data/.
std::string sourceOf(const std::string& sources, const std::string& file) {
    if (sources.empty()) return "";
    for (const ShaderProduct& product : shaderProducts)
        if (file == std::string("data/") + product.file) return sources + "/" + product.source;
    return "";
}

// Effects keep what beams see of a model from when they are made. The boxes go on where they are.
void remakeEffects() {
    for (const EffectRow& row : effectRows()) {
        EffectBase*& effect = demo->effects[row.key];
        EffectBase* fresh = row.create();
        const auto* heap = dynamic_cast<CubeHeap*>(effect);
        if (heap) *static_cast<CubeHeap*>(fresh) = *heap;
        delete effect;
        effect = fresh;
    }
}

}  // namespace

Reload::Reload(Transport* transport, const std::string& sources) : transport(transport), sources(sources) {
    for (const ShaderRow& row : shaderRows()) {
        for (const char* stage : stages) {
            const std::string file = std::string(row.base) + stage;
            if (auto text = readWholeFile(file.c_str())) loadedShaders[file] = *text;
        }
    }
}

bool Reload::isShader(const std::string& path) const {
    for (const ShaderRow& row : shaderRows()) {
        for (const char* stage : stages) {
            const std::string file = std::string(row.base) + stage;
            if (path == file || path == sourceOf(sources, file)) return true;
        }
    }
    return false;
}

void Reload::saved(const std::string& path) {
    if (path.empty()) return;
    missing.erase(path);
    if (path == SoundMusic::path) measuring = false;
    if (isShader(path)) savedShaders.insert(path);
    if (!kindOf(path)) return;
    if (std::find(waiting.begin(), waiting.end(), path) == waiting.end()) waiting.push_back(path);
}

void Reload::gone(const std::string& path) {
    if (!isShader(path) && !kindOf(path)) return;
    missing[path] = secondsNow();
}

void Reload::everything() {
    saved(loadingRow.path);
    for (const TextureRow& row : textureRows()) saved(row.path);
    for (const MeshRow& row : meshRows()) saved(row.path);
    saved(SoundMusic::path);
    for (const ShaderRow& row : shaderRows()) {
        for (const char* stage : stages) {
            saved(std::string(row.base) + stage);
            saved(sourceOf(sources, std::string(row.base) + stage));
        }
    }
}

void Reload::measureMusic() {
    saved(SoundMusic::path);
    measuring = true;
}

bool Reload::apply() {
    startChecks();
    lookForMissing();
    const bool programs = loadShaders(), others = finishChecks();
    return programs || others;
}

void Reload::startChecks() {
    while (!waiting.empty() && checks.size() < mostChecks) {
        const std::string path = waiting.front();
        // One of the same file is outdated, if it is still under way.
        std::erase_if(checks, [&](const auto& check) { return check->name == path; });
        waiting.pop_front();
        std::string problem;
        auto snapshot = takeSnapshot(path, &problem);
        if (snapshot)
            checks.push_back(std::make_unique<Check>(*kindOf(path), path, std::move(snapshot)));
        else if (fs::exists(path))
            tell(path, path + ": " + problem);
        else
            gone(path);
    }
}

bool Reload::finishChecks() {
    bool changed = false;
    std::erase_if(checks, [&](const auto& check) {
        const auto result = check->result();
        if (!result) return false;
        if (!result->good)
            tell(check->name, result->problem);
        else if (load(*check, result->output))
            changed = true;
        return true;
    });
    return changed;
}

bool Reload::load(const Check& check, const std::string& output) {
    const bool loaded = check.kind == FileKind::picture ? loadPicture(check)
                        : check.kind == FileKind::model ? loadModel(check)
                                                        : loadMusic(check, output);
    mend(check.name);
    if (check.kind != FileKind::music || !measuring) news.push_back("loaded " + check.name);
    return loaded;
}

bool Reload::loadPicture(const Check& check) {
    const TextureRow& row = *textureOf(check.name);
    Image image = {};
    if (readPicture(check.snapshot->path().c_str(), check.name, &image) != 0) return false;
    demo->replaceTexture(row.key, image, row.wrapS, row.wrapT);
    demo->setTextureSize(row.key, row.width, row.height);
    delete[] image.pixels;
    return true;
}

bool Reload::loadModel(const Check& check) {
    const MeshRow& row = *meshOf(check.name);
    auto set = std::make_unique<MeshSet>();
    ResDescFile file(check.snapshot->path().c_str());
    loadAml(*set, file, row.path);
    for (Mesh& mesh : *set) {
        mesh.expandPositions(row.path);
        mesh.upload();
    }
    demo->replaceMesh(row.key, set.release());
    if (row.afterwards) row.afterwards();
    remakeEffects();
    return true;
}

bool Reload::loadMusic(const Check& check, const std::string& columns) {
    waveform = columns;
    if (!measuring) transport->replaceStream(sound::openStream(check.snapshot->path().c_str()));
    return false;
}

bool Reload::loadShaders() {
    bool changed = false;
    for (const std::string& path : std::exchange(savedShaders, {})) {
        const auto text = readWholeFile(path.c_str());
        if (!text) {
            gone(path);
            continue;
        }
        std::string problem;
        for (const ShaderRow& row : shaderRows()) {
            if (loadProgram(row, {path, *text}, &problem)) changed = true;
        }
        if (problem.empty()) {
            brokenShaders.erase(path);
            mend(path);
        } else {
            brokenShaders[path] = *text;
            tell(path, problem);
        }
    }
    return changed;
}

// With what was saved in its own stage, and in the other one what waits there for a partner, or else what is
// in use.
bool Reload::loadProgram(const ShaderRow& row, const ShaderText& saved, std::string* problem) {
    struct Stage {
        std::string file;  // below data/
        std::optional<ShaderText> inUse;
        std::optional<ShaderText> newer;  // saved now, or waiting
        bool isSaved = false;
    } parts[2];
    for (int i = 0; i < 2; i++) {
        Stage& part = parts[i];
        part.file = std::string(row.base) + stages[i];
        const std::string source = sourceOf(sources, part.file);
        const auto known = loadedShaders.find(part.file);
        if (known != loadedShaders.end()) part.inUse = ShaderText{part.file, known->second};
        for (const std::string& file : {part.file, source}) {
            const auto broken = brokenShaders.find(file);
            if (broken != brokenShaders.end()) part.newer = ShaderText{file, broken->second};
        }
        part.isSaved = saved.file == part.file || saved.file == source;
        if (part.isSaved) part.newer = saved;
    }
    Stage& own = parts[parts[0].isSaved ? 0 : 1];
    Stage& other = parts[parts[0].isSaved ? 1 : 0];
    // The other's file, or what is in use already: a copy that was made here, or an edit that was undone.
    if (!own.isSaved || (own.inUse && own.inUse->text == saved.text)) return false;

    const auto build = [&] {
        const auto choice = [](const Stage& part) { return part.newer ? part.newer : part.inUse; };
        return buildProgram(choice(parts[0]), choice(parts[1]));
    };
    BuiltProgram built = build();
    if (!built.program && other.newer) {
        other.newer.reset();
        built = build();
    }
    if (!built.program) {
        *problem = built.problem;
        return false;
    }
    GLhandleARB& current = demo->shaders[row.name];
    copyUniforms(current, built.program);
    deleteProgram(current);
    current = built.program;
    centreBoom();
    for (const Stage& part : parts) {
        if (!part.newer) continue;
        loadedShaders[part.file] = part.newer->text;
        if (part.newer->file != part.file)
            lay({{part.newer->file, part.file.substr(strlen("data/"))}}, "data");
        brokenShaders.erase(part.newer->file);
        mend(part.newer->file);
    }
    news.push_back("loaded " + saved.file);
    return true;
}

void Reload::lookForMissing() {
    const double now = secondsNow();
    std::erase_if(missing, [&](const auto& entry) {
        const auto& [path, since] = entry;
        if (now - since < returnsWithin) return false;
        if (!fs::exists(path)) tell(path, path + ": is gone");
        return true;
    });
}

void Reload::tell(const std::string& file, const std::string& problem) {
    if (problems[file] == problem) return;
    problems[file] = problem;
    fprintf(stderr, "%s\n", problem.c_str());
}

void Reload::mend(const std::string& file) {
    if (problems.erase(file)) news.push_back("good again: " + file);
}
