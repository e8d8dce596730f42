// PNG pictures, as textures and as any other caller of the loader would read them.
#include <zlib.h>

#include <algorithm>

#include "image/image.h"
#include "tests/fuzz/checksums.h"
#include "tests/fuzz/target.h"

void tryInput(std::string_view input) {
    std::string problem;
    const std::optional<Image> read = readPng(input, &problem);
    demand(read.has_value() == problem.empty());
    if (read) delete[] read->pixels;
    const MemoryFile file(input), written;
    Image image, again;
    const bool flip = input.size() % 2 != 0;
    const bool loaded = loadPng(file.path(), &image, flip) == 0;
    demand(loaded || !read);
    if (!loaded) return;
    const size_t size = size_t{image.stride} * size_t(image.height);
    readAll(image.pixels, size);
    // Those of 8 bits can be written; packing a large one takes its time, and finds no more.
    if (image.stride == uint32_t(image.width) * uint32_t(image.channels) && size < 1 << 16) {
        demand(writePng(written.path(), image.width, image.height, image.channels, image.bytesPerPixel,
                        image.stride, image.pixels) == 0);
        demand(loadPng(written.path(), &again, false) == 0 && again.stride == image.stride);
        demand(std::equal(image.pixels, image.pixels + size, again.pixels));
        delete[] again.pixels;
    }
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
