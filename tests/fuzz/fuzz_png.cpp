// PNG pictures, as textures and as any other caller of the loader would read them.
#include <zlib.h>

#include "image/image.h"
#include "tests/fuzz/checksums.h"
#include "tests/fuzz/target.h"

void tryInput(std::string_view input) {
    const MemoryFile file(input);
    Image image;
    const bool flip = input.size() % 2 != 0;
    if (loadPng(file.path(), &image, flip) != 0) return;
    readAll(image.pixels, size_t{image.stride} * size_t(image.height));
    delete[] image.pixels;
}

// Chunks: length, type, content, checksum of type and content.
void mendChecksums(uint8_t* bytes, size_t size) {
    constexpr size_t signature = 8, frame = 12;
    const auto wordAt = [bytes](size_t at) {
        return size_t{bytes[at]} << 24 | bytes[at + 1] << 16 | bytes[at + 2] << 8 | bytes[at + 3];
    };
    for (size_t at = signature; at + frame <= size;) {
        const size_t length = wordAt(at);
        if (length > size - at - frame) return;
        const uint32_t sum = uint32_t(crc32(0, bytes + at + 4, uInt(length + 4)));
        for (int i = 0; i < 4; i++) bytes[at + 8 + length + i] = uint8_t(sum >> (24 - 8 * i));
        at += frame + length;
    }
}
