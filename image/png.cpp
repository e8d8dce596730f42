// libpng reports errors by a jump back into the function that set the jump point. The jump skips destructors
// and may lose changed locals, so the functions with a jump point own nothing and keep what changes in a
// record of their caller's.
#include <png.h>

#include <cstdio>
#include <iterator>
#include <memory>
#include <new>

#include "image/image.h"

namespace {

// A corrupt header must not claim more memory than any picture of ours could need.
constexpr png_uint_32 largestSide = 65535;

struct PngFile {
    FILE* file;
    png_structp png;
    png_infop info;
};

// Room for all rows is made before one is read: a header must not claim more than deflate, at its tightest,
// can have packed into the file.
bool canHoldItsRows(FILE* file) {
    constexpr uint64_t tightest = 1032;
    constexpr int channelsOfType[] = {1, 0, 3, 1, 2, 0, 4};
    uint8_t head[26] = {};  // signature, the first chunk's length and name, width, height, depth, colour type
    const size_t got = fread(head, 1, sizeof head, file);
    fseek(file, 0, SEEK_END);
    const long size = ftell(file);
    rewind(file);
    if (got < sizeof head || head[25] >= std::size(channelsOfType)) return true;  // for libpng to turn down
    const uint64_t rowBits = uint64_t{png_get_uint_32(head + 16)} * head[24] * channelsOfType[head[25]];
    return (rowBits / 8 + 1) * png_get_uint_32(head + 20) / tightest <= uint64_t(size);
}

// Where the rows of a picture go: straight into the image's pixels, in the order that was asked for.
struct PngDestination {
    Image* image;
    bool flip;
    std::unique_ptr<png_bytep[]> rows;
};

bool makeRoom(const PngFile& source, PngDestination& destination) {
    Image& image = *destination.image;
    image.width = int32_t(png_get_image_width(source.png, source.info));
    image.height = int32_t(png_get_image_height(source.png, source.info));
    image.channels = image.bytesPerPixel = png_get_channels(source.png, source.info);
    image.stride = uint32_t(png_get_rowbytes(source.png, source.info));
    image.pixels = new (std::nothrow) uint8_t[size_t(image.height) * image.stride];
    destination.rows.reset(new (std::nothrow) png_bytep[image.height]);
    if (!image.pixels || !destination.rows) return false;
    for (int y = 0; y < image.height; y++) {
        const int row = destination.flip ? image.height - 1 - y : y;
        destination.rows[y] = image.pixels + size_t(row) * image.stride;
    }
    return true;
}

// The steps of png_read_png without transforms, but for its own copy of the rows.
bool readPicture(PngFile& source, PngDestination& destination) {
    if (setjmp(png_jmpbuf(source.png))) return false;
    png_set_user_limits(source.png, largestSide, largestSide);
    png_init_io(source.png, source.file);
    png_read_info(source.png, source.info);
    png_set_interlace_handling(source.png);
    png_read_update_info(source.png, source.info);
    if (!makeRoom(source, destination)) return false;
    png_read_image(source.png, destination.rows.get());
    png_read_end(source.png, source.info);
    return true;
}

struct PngRows {
    int width, height, channels;
    uint32_t stride;
    const uint8_t* pixels;
};

int colorType(int channels) {
    switch (channels) {
        case 1:
            return PNG_COLOR_TYPE_GRAY;
        case 2:
            return PNG_COLOR_TYPE_GRAY_ALPHA;
        case 3:
            return PNG_COLOR_TYPE_RGB;
        case 4:
            return PNG_COLOR_TYPE_RGB_ALPHA;
        default:
            return -1;  // libpng turns it down
    }
}

bool writePicture(PngFile& target, const PngRows& rows) {
    if (setjmp(png_jmpbuf(target.png))) return false;
    png_init_io(target.png, target.file);
    png_set_IHDR(target.png, target.info, rows.width, rows.height, 8, colorType(rows.channels),
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(target.png, target.info);
    for (int y = 0; y < rows.height; y++) png_write_row(target.png, rows.pixels + size_t(y) * rows.stride);
    png_write_end(target.png, nullptr);
    // The last rows may still wait for room on the disk.
    return fflush(target.file) == 0;
}

}  // namespace

int loadPng(const char* path, Image* image, uint8_t flip) {
    PngFile source = {fopen(path, "rb"), nullptr, nullptr};
    if (!source.file) {
        fprintf(stderr, "can't open %s\n", path);
        return -1;
    }
    source.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    if (source.png) source.info = png_create_info_struct(source.png);
    Image read = {};
    PngDestination destination = {&read, flip != 0, nullptr};
    const bool loaded = source.info && canHoldItsRows(source.file) && readPicture(source, destination);
    png_destroy_read_struct(&source.png, &source.info, nullptr);
    fclose(source.file);
    if (!loaded) {
        delete[] read.pixels;
        return -1;
    }
    *image = read;
    return 0;
}

int writePng(const char* path, int width, int height, int channels, [[maybe_unused]] int bytesPerPixel,
             uint32_t stride, const uint8_t* pixels) {
    PngFile target = {fopen(path, "wb"), nullptr, nullptr};
    if (!target.file) return fprintf(stderr, "can't open %s\n", path);
    target.png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    if (!target.png) {
        fprintf(stderr, "write_png: Error creating write struct\n");
        return fclose(target.file);
    }
    target.info = png_create_info_struct(target.png);
    const bool written = target.info && writePicture(target, {width, height, channels, stride, pixels});
    const bool hadInfo = target.info != nullptr;
    const int closed = fclose(target.file);
    png_destroy_write_struct(&target.png, &target.info);
    if (!hadInfo) return fprintf(stderr, "write_png: Error creating info struct\n");
    if (!written) return fprintf(stderr, "write_png: Error 3\n");
    return closed;
}
