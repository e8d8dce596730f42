#include "image/whole_file.h"

#include <cstdio>

std::optional<std::string> readWholeFile(const char* path) {
    FILE* file = fopen(path, "rb");
    if (!file) return std::nullopt;
    std::string content;
    char block[1 << 16];
    while (const size_t count = fread(block, 1, sizeof block, file)) content.append(block, count);
    fclose(file);
    return content;
}
