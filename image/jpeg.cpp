#include <cstdio>
// libjpeg's header needs FILE and size_t before it.
#include <jerror.h>
#include <jpeglib.h>

#include <memory>
#include <new>

#include "image/image.h"

namespace {

// No GL takes a larger texture. libjpeg fills in what a broken file lacks, and the size in a broken header
// must not have it fill gigabytes.
constexpr JDIMENSION largestSide = 16384;

}  // namespace

int loadJpeg(const char* path, Image* image, uint8_t flip) {
    jpeg_decompress_struct decoder;
    jpeg_error_mgr errors;
    decoder.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&decoder);
    const std::unique_ptr<FILE, int (*)(FILE*)> file(fopen(path, "rb"), fclose);
    if (!file) {
        fprintf(stderr, "can't open %s\n", path);
        jpeg_destroy_decompress(&decoder);
        return -1;
    }
    jpeg_stdio_src(&decoder, file.get());
    jpeg_read_header(&decoder, TRUE);
    if (decoder.image_width > largestSide || decoder.image_height > largestSide)
        ERREXIT1(&decoder, JERR_IMAGE_TOO_BIG, largestSide);
    jpeg_start_decompress(&decoder);

    image->width = int32_t(decoder.output_width);
    image->height = int32_t(decoder.output_height);
    image->channels = image->bytesPerPixel = decoder.output_components;
    image->stride = decoder.output_width * decoder.output_components;
    image->pixels = new (std::nothrow) uint8_t[size_t(image->height) * image->stride];
    if (!image->pixels) ERREXIT1(&decoder, JERR_OUT_OF_MEMORY, 0);
    while (decoder.output_scanline < decoder.output_height) {
        JSAMPROW row = image->pixels + size_t(decoder.output_scanline) * image->stride;
        jpeg_read_scanlines(&decoder, &row, 1);
    }
    jpeg_finish_decompress(&decoder);
    jpeg_destroy_decompress(&decoder);
    if (flip) flipImage(*image, 1, 0);
    return 0;
}

int writeJpeg(const char* path, int width, int height, int channels, [[maybe_unused]] int bytesPerPixel,
              uint32_t stride, const uint8_t* pixels) {
    FILE* file = fopen(path, "wb");
    if (!file) return fprintf(stderr, "can't open %s\n", path);
    jpeg_compress_struct encoder;
    jpeg_error_mgr errors;
    encoder.err = jpeg_std_error(&errors);
    jpeg_create_compress(&encoder);
    jpeg_stdio_dest(&encoder, file);
    encoder.image_width = width;
    encoder.image_height = height;
    encoder.input_components = channels;
    encoder.in_color_space = JCS_RGB;  // whatever the channels: libjpeg turns down all but three
    jpeg_set_defaults(&encoder);
    jpeg_start_compress(&encoder, TRUE);
    while (encoder.next_scanline < encoder.image_height) {
        // libjpeg reads the row only, but its type is not const.
        JSAMPROW row = const_cast<uint8_t*>(pixels) + size_t(encoder.next_scanline) * stride;
        jpeg_write_scanlines(&encoder, &row, 1);
    }
    jpeg_finish_compress(&encoder);
    jpeg_destroy_compress(&encoder);
    return fclose(file);
}
