#include "image/image.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

Image createImage(int width, int height, int channels) {
    const uint32_t stride = uint32_t(width) * channels;
    return {width, height, channels, channels, stride, new uint8_t[size_t(height) * stride]};
}

int loadImage(const char* path, Image* image, bool flip) {
    const std::string_view name = path;
    const std::string_view kind = name.substr(name.size() - std::min<size_t>(name.size(), 3));
    if (kind == "png" || kind == "PNG") return loadPng(path, image, flip);
    if (kind == "jpg" || kind == "peg" || kind == "JPG" || kind == "PEG") return loadJpeg(path, image, flip);
    fprintf(stderr, "couldn't recognize format of %s\n", path);
    return -1;
}

int copyImageRect(const Image& destination, int destinationX, int destinationY, const Image& source,
                  int sourceX, int sourceY, int width, int height) {
    const auto pixel = [](const Image& image, int x, int y) {
        return image.pixels + ptrdiff_t(y) * image.stride + ptrdiff_t(x) * image.bytesPerPixel;
    };
    const size_t rowBytes = size_t(width) * destination.bytesPerPixel;
    int row = 0;
    for (; row < height; row++)
        std::memmove(pixel(destination, destinationX, destinationY + row),
                     pixel(source, sourceX, sourceY + row), rowBytes);
    return row;
}

namespace {

// Swaps the pixels of the left half of `row`, an odd row's middle left out, with those of `mirror` from its
// last pixel slot backwards. The slot ends where the stride does.
void swapMirrored(const Image& image, uint8_t* row, uint8_t* mirror) {
    uint8_t* left = row;
    uint8_t* right = mirror + image.stride - image.bytesPerPixel;
    for (int x = 0; x < image.width / 2; x++) {
        std::swap_ranges(left, left + image.bytesPerPixel, right);
        left += image.bytesPerPixel;
        right -= image.bytesPerPixel;
    }
}

}  // namespace

void flipImage(const Image& image, bool vertical, bool horizontal) {
    const auto row = [&image](int y) { return image.pixels + size_t(y) * image.stride; };
    if (horizontal) {
        for (int y = 0; y < image.height; y++)
            swapMirrored(image, row(y), row(vertical ? image.height - 1 - y : y));
    } else if (vertical) {
        for (int y = 0; y < image.height / 2; y++)
            std::swap_ranges(row(y), row(y) + image.stride, row(image.height - 1 - y));
    }
}
