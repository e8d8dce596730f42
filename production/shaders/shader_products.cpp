// The shader programs, copied as they stand; three share one vertex shader.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "production/forge.h"

namespace {

// A text that a template can be made for, so that each row has a maker of its own.
template <size_t size>
struct Text {
    char chars[size];

    constexpr Text(const char (&text)[size]) { std::copy_n(text, size, chars); }
};

template <Text source>
void copySource(const char* path) {
    const std::filesystem::path from = std::filesystem::path(PRODUCTION_DIR) / source.chars;
    std::error_code error;
    if (std::filesystem::copy_file(from, path, std::filesystem::copy_options::overwrite_existing, error))
        return;
    fprintf(stderr, "%s: can't copy %s: %s\n", path, from.c_str(), error.message().c_str());
    exit(1);
}

template <Text file, Text source = file>
constexpr Product copied() {
    return {file.chars, copySource<source>, source.chars, nullptr};
}

}  // namespace

const std::vector<Product> shaderProducts = {
    copied<"shaders/smoke.vs">(),
    copied<"shaders/smoke.fs">(),
    copied<"shaders/smoke2.vs">(),
    copied<"shaders/smoke2.fs">(),
    copied<"shaders/distort.vs", "shaders/picture.vs">(),
    copied<"shaders/distort.fs">(),
    copied<"shaders/boom.vs", "shaders/picture.vs">(),
    copied<"shaders/boom.fs">(),
    copied<"shaders/antiariel.vs", "shaders/picture.vs">(),
    copied<"shaders/antiariel.fs">(),
};
