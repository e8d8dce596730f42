// PNG files of the kinds that our own writer does not make, for tests and fuzz inputs.
#pragma once

#include <png.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

using PngRows = std::vector<std::vector<uint8_t>>;

struct PngKind {
    const char* name;
    int bitDepth, colorType, interlace;
    int channels;     // that a load reports
    uint32_t stride;  // of 8 pixels
};

inline constexpr PngKind pngKinds[] = {
    {"grey", 8, PNG_COLOR_TYPE_GRAY, PNG_INTERLACE_NONE, 1, 8},
    {"grey of one bit", 1, PNG_COLOR_TYPE_GRAY, PNG_INTERLACE_NONE, 1, 1},
    {"grey with alpha", 8, PNG_COLOR_TYPE_GRAY_ALPHA, PNG_INTERLACE_NONE, 2, 16},
    {"palette", 8, PNG_COLOR_TYPE_PALETTE, PNG_INTERLACE_NONE, 1, 8},
    {"colour", 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, 3, 24},
    {"colour of 16 bits", 16, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, 3, 48},
    {"colour with alpha", 8, PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE, 4, 32},
    {"interlaced", 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_ADAM7, 3, 24},
};
inline constexpr int pngWidth = 8;

// Through libpng's whole-picture writer; a broken call would end the test by libpng's abort.
inline void makePng(const std::string& path, const PngKind& kind, PngRows rows) {
    FILE* file = fopen(path.c_str(), "wb");
    if (!file) abort();
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file);
    png_set_IHDR(png, info, pngWidth, png_uint_32(rows.size()), kind.bitDepth, kind.colorType, kind.interlace,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    const std::vector<png_color> palette(256, png_color{1, 2, 3});
    if (kind.colorType == PNG_COLOR_TYPE_PALETTE) png_set_PLTE(png, info, palette.data(), 256);
    std::vector<png_bytep> pointers;
    for (auto& row : rows) pointers.push_back(row.data());
    png_set_rows(png, info, pointers.data());
    png_write_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
    png_destroy_write_struct(&png, &info);
    fclose(file);
}

inline PngRows testRows(uint32_t stride, int height) {
    PngRows rows(height, std::vector<uint8_t>(stride));
    uint8_t value = 0;
    for (auto& row : rows)
        for (uint8_t& byte : row) byte = value += 37;
    return rows;
}
