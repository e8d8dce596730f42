// The shader programs, copied as they stand; three share one vertex shader.
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "production/forge.h"

namespace {

void copySource(const char* source, const char* path) {
    const std::filesystem::path from = std::filesystem::path(PRODUCTION_DIR) / source;
    std::error_code error;
    if (std::filesystem::copy_file(from, path, std::filesystem::copy_options::overwrite_existing, error))
        return;
    fprintf(stderr, "%s: can't copy %s: %s\n", path, from.c_str(), error.message().c_str());
    exit(1);
}

Product copied(const char* file, const char* source) {
    return {file, [source](const char* path) { copySource(source, path); }, source, nullptr};
}

Product copied(const char* file) {
    return copied(file, file);
}

}  // namespace

const std::vector<Product> shaderProducts = {
    copied("shaders/smoke.vs"),
    copied("shaders/smoke.fs"),
    copied("shaders/smoke2.vs"),
    copied("shaders/smoke2.fs"),
    copied("shaders/distort.vs", "shaders/picture.vs"),
    copied("shaders/distort.fs"),
    copied("shaders/boom.vs", "shaders/picture.vs"),
    copied("shaders/boom.fs"),
    copied("shaders/antiariel.vs", "shaders/picture.vs"),
    copied("shaders/antiariel.fs"),
};
