// The shader programs, copied as they stand when the compiler has nothing against them; two share one
// vertex shader.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <string>

#include "production/forge.h"
#include "production/shaders/shader_check.h"

namespace {

namespace fs = std::filesystem;

// The products are made by several threads, and any of them may be the first to fail: the others are left
// where they are, without the tables being taken away beneath them.
[[noreturn]] void fail(const std::string& lines) {
    static std::mutex failing;
    failing.lock();
    fputs(lines.c_str(), stderr);
    fflush(nullptr);
    _Exit(1);
}

void copySource(const char* source, const char* partner, const char* path) {
    const fs::path folder = PRODUCTION_DIR;
    const std::string from = folder / source;
    const bool isVertex = from.ends_with(".vs");
    std::error_code error;
    if (fs::exists(from, error) && fs::exists(folder / partner, error)) {
        const std::string other = folder / partner;
        const std::string faults = isVertex ? shaderFaults(from, other) : shaderFaults(other, from);
        if (!faults.empty()) fail(faults);
    }
    if (fs::copy_file(from, path, fs::copy_options::overwrite_existing, error)) return;
    fail(std::string(path) + ": can't copy " + from + ": " + error.message() + "\n");
}

// `partner`: the other shader of the program.
Product copied(const char* file, const char* source, const char* partner) {
    return {file, [=](const char* path) { copySource(source, partner, path); }, source, nullptr};
}

}  // namespace

const std::vector<Product> shaderProducts = {
    copied("shaders/smoke.vs", "shaders/smoke.vs", "shaders/smoke.fs"),
    copied("shaders/smoke.fs", "shaders/smoke.fs", "shaders/smoke.vs"),
    copied("shaders/smoke2.vs", "shaders/smoke2.vs", "shaders/smoke2.fs"),
    copied("shaders/smoke2.fs", "shaders/smoke2.fs", "shaders/smoke2.vs"),
    copied("shaders/distort.vs", "shaders/distort.vs", "shaders/distort.fs"),
    copied("shaders/distort.fs", "shaders/distort.fs", "shaders/distort.vs"),
    copied("shaders/boom.vs", "shaders/picture.vs", "shaders/boom.fs"),
    copied("shaders/boom.fs", "shaders/boom.fs", "shaders/picture.vs"),
    copied("shaders/antiariel.vs", "shaders/picture.vs", "shaders/antiariel.fs"),
    copied("shaders/antiariel.fs", "shaders/antiariel.fs", "shaders/picture.vs"),
};
