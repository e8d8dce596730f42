#include <cstdio>
// libjpeg's header needs FILE and size_t before it.
#include <jerror.h>
#include <jpeglib.h>

#include <csetjmp>
#include <new>

#include "image/image.h"
#include "image/whole_file.h"

namespace {

// No GL takes a larger texture. libjpeg fills in what a broken file lacks, and the size in a broken header
// must not have it fill gigabytes.
constexpr JDIMENSION largestSide = 16384;

// `image->pixels` may have been made also where this ends by an error.
void decode(jpeg_decompress_struct& decoder, std::string_view bytes, Image* image) {
    jpeg_create_decompress(&decoder);
    jpeg_mem_src(&decoder, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
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
}

// Errors and warnings as text, by a jump back to whoever has set the jump point.
struct Refusal : jpeg_error_mgr {
    jmp_buf jump;
    char text[JMSG_LENGTH_MAX];
};

[[noreturn]] void refuse(j_common_ptr codec) {
    auto* refusal = static_cast<Refusal*>(codec->err);
    refusal->format_message(codec, refusal->text);
    jpeg_destroy(codec);
    longjmp(refusal->jump, 1);
}

// The jump may lose changed locals, so it has none.
bool decodeOrRefuse(jpeg_decompress_struct& decoder, Refusal& refusal, std::string_view bytes, Image* image) {
    if (setjmp(refusal.jump)) return false;
    decode(decoder, bytes, image);
    return true;
}

}  // namespace

std::optional<Image> readJpeg(std::string_view bytes, std::string* problem) {
    jpeg_decompress_struct decoder = {};
    Refusal refusal;
    decoder.err = jpeg_std_error(&refusal);
    refusal.error_exit = refuse;
    refusal.emit_message = [](j_common_ptr codec, int level) {
        if (level < 0) refuse(codec);
    };
    Image image = {};
    if (decodeOrRefuse(decoder, refusal, bytes, &image)) return image;
    delete[] image.pixels;
    *problem = refusal.text;
    return std::nullopt;
}

int loadJpeg(const char* path, Image* image, bool flip) {
    const auto bytes = readWholeFile(path);
    if (!bytes) {
        fprintf(stderr, "can't open %s\n", path);
        return -1;
    }
    jpeg_decompress_struct decoder;
    jpeg_error_mgr errors;
    decoder.err = jpeg_std_error(&errors);
    decode(decoder, *bytes, image);
    if (flip) flipImage(*image, true, false);
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
