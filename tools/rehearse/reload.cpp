#include "tools/rehearse/reload.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <optional>
#include <utility>

#include "app/startup.h"
#include "production/making/laying.h"
#include "production/shaders/shaders.h"
#include "render/demo.h"
#include "script/resources.h"
#include "tools/rehearse/uniforms.h"

namespace fs = std::filesystem;

namespace {

// A shader is read within that, so that it is seen in the very frame that notices the save.
constexpr auto quickRead = std::chrono::milliseconds(4);
constexpr double returnsWithin = 0.5;  // seconds; editors put the old file away before the new one comes

double secondsNow() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

const TextureRow& textureOf(const std::string& path) {
    for (const TextureRow& row : textureRows())
        if (path == row.path) return row;
    return loadingRow;
}

// The generator's source of a shader below data/.
std::string sourceOf(const std::string& sources, const std::string& file) {
    if (sources.empty()) return "";
    for (const ShaderProduct& product : shaderProducts)
        if (file == std::string("data/") + product.file) return sources + "/" + product.source;
    return "";
}

}  // namespace

Reload::Reload(Transport* transport, Loading& loading, const std::string& sources)
    : transport(transport), loading(loading), sources(sources) {
    for (const FileName& name : showFiles()) {
        known[name.path] = name.kind;
        const std::string source = sourceOf(sources, name.path);
        if (!source.empty()) known[source] = name.kind;
    }
}

void Reload::saved(const std::string& path) {
    missing.erase(path);
    const auto file = known.find(path);
    if (file == known.end()) return;
    loading.readers.request({file->second, path});
    waitUntil = std::chrono::steady_clock::now() + quickRead;
}

void Reload::gone(const std::string& path) {
    for (const auto& [file, kind] : known)
        if (file == path || file.starts_with(path + "/")) missing[file] = secondsNow();
}

void Reload::everything() {
    for (const auto& [file, kind] : known) saved(file);
}

bool Reload::apply() {
    lookForMissing();
    bool changed = false;
    while (auto file = loading.readers.take(waitUntil)) {
        if (load(*file)) changed = true;
    }
    return changed;
}

bool Reload::load(ShowFile& file) {
    const std::string& path = file.name.path;
    if (file.name.kind == FileKind::music) savedMusic.swap(file.music);
    if (file.missing) {
        gone(path);
        return false;
    }
    if (!file.problem.empty()) {
        tell(path, file.problem);
        return false;
    }
    switch (file.name.kind) {
        case FileKind::shader:
            return loadShader({path, file.text});
        case FileKind::music:
            loadMusic(file);
            return false;
        case FileKind::picture:
            putPicture(textureOf(path), file.picture);
            break;
        case FileKind::model:
            loadModel(file);
            break;
    }
    mend(path);
    news.push_back("loaded " + path);
    return true;
}

void Reload::loadModel(ShowFile& file) {
    const auto rows = meshRows();
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [&](const MeshRow& row) { return file.name.path == row.path; });
    putModel(*row, std::move(file.model));
}

// The one that was saved is played once it has been measured: damage is found on the way.
void Reload::loadMusic(ShowFile& file) {
    if (file.waveform.empty()) return;
    waveform = file.waveform;
    mend(file.name.path);
    if (!file.music) return;
    transport->replaceStream(sound::openStream(std::move(file.music)));
    news.push_back("loaded " + file.name.path);
}

bool Reload::loadShader(const ShaderText& saved) {
    bool changed = false;
    std::string problem;
    for (const ShaderRow& row : shaderRows()) {
        if (loadProgram(row, saved, &problem)) changed = true;
    }
    if (problem.empty()) {
        loading.brokenShaders.erase(saved.file);
        mend(saved.file);
    } else {
        loading.brokenShaders[saved.file] = saved.text;
        tell(saved.file, problem);
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
        part.file = std::string(row.base) + shaderStages[i];
        const std::string source = sourceOf(sources, part.file);
        const auto used = loading.shadersInUse.find(part.file);
        if (used != loading.shadersInUse.end()) part.inUse = ShaderText{part.file, used->second};
        for (const std::string& file : {part.file, source}) {
            const auto broken = loading.brokenShaders.find(file);
            if (broken != loading.brokenShaders.end()) part.newer = ShaderText{file, broken->second};
        }
        part.isSaved = saved.file == part.file || saved.file == source;
        if (part.isSaved) part.newer = saved;
    }
    Stage& own = parts[parts[0].isSaved ? 0 : 1];
    Stage& other = parts[parts[0].isSaved ? 1 : 0];
    // The other's file, or what is in use already: a copy that was made here, or an edit that was undone.
    if (!own.isSaved || (own.inUse && own.inUse->text == saved.text)) return false;
    const auto belowData = [](const Stage& part) { return part.file.substr(strlen("data/")); };
    if (saved.file != own.file && isAuthors("data", belowData(own))) {
        news.push_back(keptLine("data", belowData(own)));
        return false;
    }

    const auto build = [&] {
        const auto choice = [](const Stage& part) { return part.newer ? part.newer : part.inUse; };
        return buildProgram(choice(parts[0]), choice(parts[1]));
    };
    ProgramBuild built = build();
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
        loading.shadersInUse[part.file] = part.newer->text;
        if (part.newer->file != part.file) lay({{part.newer->file, belowData(part)}}, "data");
        loading.brokenShaders.erase(part.newer->file);
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
    if (loading.problems[file] == problem) return;
    loading.problems[file] = problem;
    fprintf(stderr, "%s\n", problem.c_str());
}

void Reload::mend(const std::string& file) {
    if (loading.problems.erase(file)) news.push_back("good again: " + file);
}
