// What the image tests share: pictures with a different value in every sample, and their rows read back.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "image/image.h"

using Bytes = std::vector<uint8_t>;

struct Picture : Image {
    Picture() : Image{} {}
    Picture(int width, int height, int channels) : Image(createImage(width, height, channels)) {
        for (size_t i = 0; i < size_t{stride} * height; i++) pixels[i] = uint8_t(i * 7 + 1);
    }
    Picture& operator=(Picture&&) = delete;
    ~Picture() { delete[] pixels; }

    Bytes row(int y) const { return Bytes(pixels + size_t{stride} * y, pixels + size_t{stride} * (y + 1)); }
    Bytes pixel(int x, int y) const {
        const uint8_t* first = pixels + size_t{stride} * y + x * bytesPerPixel;
        return Bytes(first, first + bytesPerPixel);
    }
    std::vector<Bytes> rows() const {
        std::vector<Bytes> all;
        for (int y = 0; y < height; y++) all.push_back(row(y));
        return all;
    }
};

// What `action` wrote to standard error.
template <typename Action>
std::string errorsOf(Action action) {
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}
