#include "tools/rehearse/live/library.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

#include "interface.h"
#include "render/demo.h"
#include "tools/formatted.h"
#include "tools/rehearse/live/number.h"
#include "tools/whole_file.h"

namespace fs = std::filesystem;

const ShowCode* loadedCode = nullptr;

namespace live {

std::map<std::string, Source> sources;

Source& sourceOf(const char* path, const char* text) {
    return sources.try_emplace(path, Source{text, false, {}}).first->second;
}

double ask(Source& source, size_t at, double written, bool whole, bool single) {
    Slot& slot = source.slots.try_emplace(at, Slot{written}).first->second;
    slot.whole = slot.whole || whole;
    slot.single = slot.single || single;
    return slot.value;
}

}  // namespace live

namespace {

constexpr char copies[] = "loaded-";  // PID-NUMBER.so

// Those whose processes were killed before they could do it.
void removeCopiesOfTheDead(const fs::path& folder) {
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        const std::string name = entry.path().filename();
        if (!name.starts_with(copies)) continue;
        const std::string process =
            name.substr(sizeof copies - 1, name.find('-', sizeof copies) - (sizeof copies - 1));
        if (!fs::exists("/proc/" + process, error)) fs::remove(entry.path(), error);
    }
}

std::string objectionTo(const ShowCode& code) {
    if (std::string(code.interface) != SHOW_INTERFACE)
        return "a header outside script/ and effects/ was changed: build and start the rehearsal anew";
    if (code.grid != gridOfBeats)
        return "script/show_times.h: the grid of the beats was changed: build and start the rehearsal anew";
    return "";
}

}  // namespace

LiveCode::LiveCode(const std::string& production) {
    const fs::path root = fs::path(production).parent_path();
    folder = root.empty() ? "" : root.string() + "/";
    const fs::path make = fs::absolute(root / "tools/rehearse/live/make");
    std::error_code error;
    if (!fs::exists(make, error) || access((root / "effects").c_str(), W_OK) != 0) return;
    const fs::path where = production.empty() ? fs::absolute("build") : fs::path(BUILD_FOLDER);
    built = where / "live/libshow.so";
    build.what = "scenes and effects";
    build.command = {make, where / "live", COMPILER};
    build.root = (fs::current_path() / root).lexically_normal().string();
    if (!build.root.ends_with('/')) build.root += '/';
    removeCopiesOfTheDead(where / "live");
}

LiveCode::~LiveCode() {
    for (const std::string& library : {left.failed, left.before})
        if (!library.empty()) unlink(library.c_str());
}

void LiveCode::comeBack(const Comeback& state) {
    left = state;
    left.before.clear();
    left.failed.clear();
    left.builds = {};
    if (!state.before.empty()) take(state.before);
    std::error_code error;
    failed = fs::last_write_time(state.failed, error);
    unlink(state.failed.c_str());
    problem = state.problem;
    if (problem.starts_with(build.root)) problem.erase(0, build.root.size());
    fprintf(stderr, "%s\n", problem.c_str());
    build.newer = state.sources;
    build.request();
}

bool LiveCode::isSource(const std::string& path) const {
    return path.starts_with(folder + "script/") || path.starts_with(folder + "effects/");
}

bool LiveCode::poll() {
    if (!build.poll() || !build.problem.empty()) return false;
    build.news.clear();
    std::error_code error;
    const auto time = fs::last_write_time(built, error);
    if (time == failed) {
        build.newer.insert(build.seen.begin(), build.seen.end());
        return false;
    }
    // What is in force stays, with what is said of it, where nothing else was built.
    const bool isKnown = loadedCode ? time == fs::last_write_time(left.failed, error)
                                    : build.seen.empty() && !isLinkedOutdated();
    return !isKnown && take(copyOfBuilt());
}

bool LiveCode::load() {
    std::error_code error;
    const bool unbuilt =
        build.command.empty() || build.requested || build.running() || !build.problem.empty();
    if (loadedCode || unbuilt || !problem.empty() || !fs::exists(built, error)) return false;
    build.seen.clear();
    return fs::last_write_time(built, error) != failed && take(copyOfBuilt());
}

bool LiveCode::isLinkedOutdated() const {
    std::error_code error;
    const auto linked = fs::last_write_time("/proc/self/exe", error);
    for (const char* name : {"script", "effects"}) {
        for (const fs::directory_entry& entry : fs::directory_iterator(folder + name, error))
            if (entry.last_write_time(error) > linked) return true;
    }
    return false;
}

// Under a name of its own: of the same name it would be taken for the one that is loaded. With its time, by
// which it is known again. None, with `problem`, if there is no room for it: half of one would crash.
std::string LiveCode::copyOfBuilt() {
    fs::path copy;
    std::error_code error;
    do {
        const std::string name = formatted("%s%d-%d.so", copies, int(getpid()), ++taken);
        copy = fs::path(built).parent_path() / name;
    } while (fs::exists(copy, error));
    const auto time = fs::last_write_time(built, error);
    if (!writeWholeFile(copy, contentOf(built))) {
        problem = copy.string() + ": " + strerror(errno);
        fprintf(stderr, "%s\n", problem.c_str());
        return "";
    }
    fs::last_write_time(copy, time, error);
    return copy;
}

bool LiveCode::take(const std::string& library) {
    if (library.empty()) return false;
    const Comeback good = left;
    left.builds[1] = build.process;
    left.before = good.failed;
    left.failed = library;
    left.begin = 0;
    left.sources = build.seen;
    left.turned.clear();
    setComeback(left);
    auto before = std::exchange(live::sources, {});
    void* fresh = dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
    const void* code = fresh ? dlsym(fresh, "showCode") : nullptr;
    const char* error = code ? nullptr : dlerror();
    problem = error ? error : objectionTo(*static_cast<const ShowCode*>(code));
    if (!problem.empty()) {
        fprintf(stderr, "%s\n", problem.c_str());
        if (fresh) dlclose(fresh);
        unlink(library.c_str());
        live::sources.swap(before);
        left = good;
        setComeback(left);
        return false;
    }
    // They go by the code that made them.
    setComeback(good);
    if (demo) deleteEffects();
    if (handle) dlclose(handle);
    use(fresh);
    if (!good.before.empty()) unlink(good.before.c_str());
    for (const std::string& source : build.seen) build.news.push_back("loaded " + source);
    return true;
}

void LiveCode::use(void* library) {
    handle = library;
    loadedCode = static_cast<const ShowCode*>(dlsym(handle, "showCode"));
    Dl_info place;
    if (dladdr(loadedCode, &place)) left.begin = reinterpret_cast<uintptr_t>(place.dli_fbase);
    setComeback(left);
}

void LiveCode::renew() {
    if (!handle) return;
    deleteEffects();
    dlclose(handle);
    use(dlopen(left.failed.c_str(), RTLD_NOW | RTLD_LOCAL));
}
