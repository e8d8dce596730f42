#include "tools/rehearse/reload.h"

#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <optional>
#include <utility>

#include "app/startup.h"
#include "production/making/laying.h"
#include "production/shaders/shaders.h"
#include "render/demo.h"
#include "script/resources.h"
#include "tools/process.h"
#include "tools/rehearse/uniforms.h"
#include "tools/times.h"

namespace fs = std::filesystem;

namespace {

// A shader is read within that, so that it is seen in the very frame that notices the save.
constexpr auto quickRead = std::chrono::milliseconds(4);
constexpr double returnsWithin = 0.5;  // seconds; editors put the old file away before the new one comes

std::optional<ShaderText> entryOf(const std::map<std::string, std::string>& texts, const std::string& file) {
    const auto entry = texts.find(file);
    return entry == texts.end() ? std::nullopt : std::optional(ShaderText{file, entry->second});
}

}  // namespace

std::string sourceOf(const std::string& sources, const std::string& file) {
    if (sources.empty()) return "";
    for (const ShaderProduct& product : shaderProducts)
        if (file == std::string("data/") + product.file) return sources + "/" + product.source;
    return "";
}

// One of the two texts that a program is built from.
struct ShaderHalf {
    std::string file;    // below data/
    std::string source;  // the generator's; none if empty
    std::optional<ShaderText> inUse;
    std::optional<ShaderText> newer;  // saved now, or waiting for the other half

    bool comesFrom(const std::string& path) const { return path == file || path == source; }
    std::string product() const { return file.substr(strlen("data/")); }
    const std::optional<ShaderText>& latest() const { return newer ? newer : inUse; }
    // What was read, whatever has been saved there since.
    bool lay() const {
        const std::string text = fileInMemory(newer->text);
        const bool laid = ::lay({{text, product()}}, "data");
        close(std::stoi(text.substr(text.rfind('/') + 1)));
        return laid;
    }
};

Reload::Reload(Transport* transport, Loading& loading, const std::string& sources)
    : transport(transport), loading(loading), sources(sources) {
    knowFiles();
}

void Reload::knowFiles() {
    const auto before = std::exchange(known, {});
    for (const FileName& name : showFiles()) {
        known[name.path] = name.kind;
        const std::string source = sourceOf(sources, name.path);
        if (!source.empty()) known[source] = name.kind;
    }
    for (const auto& [path, kind] : before) {
        if (known.contains(path)) continue;
        loading.forget(path);
        missing.erase(path);
    }
}

void Reload::takeNewRows() {
    loading.loadNewRows();
    centreBoom();
    knowFiles();
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
        if (file == path || file.starts_with(path + "/")) missing[file] = steadySeconds();
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
    if (!known.contains(path)) return false;
    if (file.name.kind == FileKind::music) savedMusic.swap(file.music);
    if (file.missing) {
        gone(path);
        return false;
    }
    if (!file.problem.empty()) {
        loading.tell(path, file.problem);
        return false;
    }
    if (file.name.kind == FileKind::shader) return loadShader({path, file.text});
    if (file.name.kind == FileKind::music) return loadMusic(file), false;
    for (const TextureRow& row : textureRows())
        if (path == row.path) putPicture(row, file);
    bool taken = false;
    for (const MeshRow& row : meshRows()) {
        if (path != row.path) continue;
        std::exchange(taken, true) ? loading.load(row) : putModel(row, file);
    }
    return told(file);
}

bool Reload::told(const ShowFile& file) {
    mend(file.name.path);
    news.push_back("loaded " + file.name.path);
    return true;
}

// The one that was saved is played once it has been measured: damage is found on the way.
void Reload::loadMusic(ShowFile& file) {
    if (file.waveform.empty()) return;
    waveform = file.waveform;
    track = file.bytes;
    if (file.music) {
        transport->replaceMusic(std::move(file.music));
        told(file);
    } else {
        mend(file.name.path);
    }
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
        loading.tell(saved.file, problem);
    }
    return changed;
}

ShaderHalf Reload::halfOf(const ShaderRow& row, const char* ending, const ShaderText& saved) const {
    ShaderHalf half;
    half.file = std::string(row.base) + ending;
    half.source = sourceOf(sources, half.file);
    half.inUse = entryOf(loading.shadersInUse, half.file);
    half.newer = entryOf(loading.brokenShaders, half.source);
    if (!half.newer) half.newer = entryOf(loading.brokenShaders, half.file);
    if (half.comesFrom(saved.file)) half.newer = saved;
    return half;
}

// Not the other's file, nor what is in use already (a copy that was made here, or an edit that was undone),
// nor what would take the place of an author's own.
bool Reload::isWanted(const ShaderHalf& half, const ShaderText& saved) {
    if (!half.comesFrom(saved.file) || (half.inUse && half.inUse->text == saved.text)) return false;
    if (saved.file == half.file || !isAuthors("data", half.product())) return true;
    news.push_back(keptLine("data", half.product()));
    return false;
}

// With what was saved in its own half, and in the other one what waits there for a partner, or else what is
// in use.
bool Reload::loadProgram(const ShaderRow& row, const ShaderText& saved, std::string* problem) {
    ShaderHalf halves[] = {halfOf(row, shaderEndings[0], saved), halfOf(row, shaderEndings[1], saved)};
    const int own = halves[0].comesFrom(saved.file) ? 0 : 1;
    if (!isWanted(halves[own], saved)) return false;
    ProgramBuild built = buildProgram(halves[0].latest(), halves[1].latest());
    if (!built.program && halves[1 - own].newer) {
        halves[1 - own].newer.reset();
        built = buildProgram(halves[0].latest(), halves[1].latest());
    }
    if (!built.program) {
        *problem = built.problem;
        return false;
    }
    replaceProgram(&demo->shaders[row.key], built.program);
    for (const ShaderHalf& half : halves) {
        if (!half.newer) continue;
        loading.shadersInUse[half.file] = half.newer->text;
        if (half.newer->file != half.file && !half.lay())
            loading.tell(half.file, half.file + ": can't be written: it is older than what is shown");
        loading.brokenShaders.erase(half.newer->file);
        mend(half.newer->file);
    }
    news.push_back("loaded " + saved.file);
    return true;
}

void Reload::lookForMissing() {
    const double now = steadySeconds();
    std::erase_if(missing, [&](const auto& entry) {
        const auto& [path, since] = entry;
        if (now - since < returnsWithin) return false;
        if (!fs::exists(path)) loading.tell(path, path + ": is gone");
        return true;
    });
}

void Reload::mend(const std::string& file) {
    if (loading.problems.erase(file)) news.push_back("good again: " + file);
}
