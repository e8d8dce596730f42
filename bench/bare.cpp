#include "bench/bare.h"

// libjpeg's header needs FILE to be known.
#include <cstdio>

#include <jpeglib.h>
#include <png.h>
#include <vorbis/vorbisfile.h>

#include <vector>

void barePng(const char* path) {
    FILE* file = fopen(path, "rb");
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file);
    png_read_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
    png_destroy_read_struct(&png, &info, nullptr);
    fclose(file);
}

void bareJpeg(const char* path) {
    FILE* file = fopen(path, "rb");
    jpeg_error_mgr errors;
    jpeg_decompress_struct jpeg;
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&jpeg);
    jpeg_stdio_src(&jpeg, file);
    jpeg_read_header(&jpeg, TRUE);
    jpeg_start_decompress(&jpeg);
    const size_t stride = size_t(jpeg.output_width) * jpeg.output_components;
    std::vector<JSAMPLE> pixels(stride * jpeg.output_height);
    while (jpeg.output_scanline < jpeg.output_height) {
        JSAMPROW row = &pixels[jpeg.output_scanline * stride];
        jpeg_read_scanlines(&jpeg, &row, 1);
    }
    jpeg_finish_decompress(&jpeg);
    jpeg_destroy_decompress(&jpeg);
    fclose(file);
}

void bareFile(const char* path) {
    FILE* file = fopen(path, "rb");
    fseek(file, 0, SEEK_END);
    std::vector<char> content(ftell(file));
    rewind(file);
    if (fread(content.data(), 1, content.size(), file) != content.size())
        fprintf(stderr, "bench: %s is short\n", path);
    fclose(file);
}

long bareVorbis(const char* path) {
    OggVorbis_File file;
    if (ov_fopen(path, &file) != 0) return 0;
    long frames = 0;
    float** channels;
    int link;
    while (const long count = ov_read_float(&file, &channels, 4096, &link)) frames += count > 0 ? count : 0;
    ov_clear(&file);
    return frames;
}
