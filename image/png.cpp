// libpng reports errors by a jump back into the function that set the jump point. The jump skips destructors
// and may lose changed locals. So the functions with a jump point own nothing, and what changes is in a
// record of their caller's.
#include <png.h>

#include <cstdio>
#include <cstring>
#include <iterator>
#include <memory>
#include <new>

#include "image/image.h"
#include "image/whole_file.h"

namespace {

// A corrupt header must not claim more memory than any picture of ours could need.
constexpr png_uint_32 largestSide = 65535;

// What libpng has of a picture, and has to say of it.
struct PngWork {
    png_structp png = nullptr;
    png_infop info = nullptr;
    std::string said;     // lines, as libpng would have printed them
    std::string problem;  // the reason why it failed
};

// A file in memory, and what becomes of it.
struct PngReading : PngWork {
    std::string_view bytes;
    bool flip = false;
    size_t used = 0;  // of the bytes
    Image image = {};
    std::unique_ptr<png_bytep[]> rows;  // in the image's pixels, in the order that was asked for
};

struct PngWriting : PngWork {
    Image image;
    bool tagged;  // that its colours are sRGB
    FILE* file;
};

void keepError(png_structp png, png_const_charp message) {
    auto* work = static_cast<PngWork*>(png_get_error_ptr(png));
    work->problem = message;
    work->said.append("libpng error: ").append(message).append("\n");
    png_longjmp(png, 1);
}

void keepWarning(png_structp png, png_const_charp message) {
    auto* work = static_cast<PngWork*>(png_get_error_ptr(png));
    work->said.append("libpng warning: ").append(message).append("\n");
}

void takeBytes(png_structp png, png_bytep target, size_t count) {
    auto* reading = static_cast<PngReading*>(png_get_io_ptr(png));
    if (count > reading->bytes.size() - reading->used) png_error(png, "Read Error");
    memcpy(target, reading->bytes.data() + reading->used, count);
    reading->used += count;
}

// Room for all rows is made before one is read: a header must not claim more than deflate, at its tightest,
// can have packed into the file.
bool canHoldItsRows(std::string_view bytes) {
    constexpr uint64_t tightest = 1032;
    constexpr int channelsOfType[] = {1, 0, 3, 1, 2, 0, 4};
    // Signature, the first chunk's length and name, width, height, depth, colour type.
    const auto* head = reinterpret_cast<const uint8_t*>(bytes.data());
    if (bytes.size() < 26 || head[25] >= std::size(channelsOfType)) return true;  // for libpng to turn down
    const uint64_t rowBits = uint64_t{png_get_uint_32(head + 16)} * head[24] * channelsOfType[head[25]];
    return (rowBits / 8 + 1) * png_get_uint_32(head + 20) / tightest <= bytes.size();
}

bool makeRoom(PngReading& reading) {
    Image& image = reading.image;
    image.width = int32_t(png_get_image_width(reading.png, reading.info));
    image.height = int32_t(png_get_image_height(reading.png, reading.info));
    image.channels = image.bytesPerPixel = png_get_channels(reading.png, reading.info);
    image.stride = uint32_t(png_get_rowbytes(reading.png, reading.info));
    image.pixels = new (std::nothrow) uint8_t[size_t(image.height) * image.stride];
    reading.rows.reset(new (std::nothrow) png_bytep[image.height]);
    if (!image.pixels || !reading.rows) return false;
    for (int y = 0; y < image.height; y++) {
        const int row = reading.flip ? image.height - 1 - y : y;
        reading.rows[y] = image.pixels + size_t(row) * image.stride;
    }
    return true;
}

// The steps of png_read_png without transforms, but for its own copy of the rows.
bool readPicture(PngReading& reading) {
    if (setjmp(png_jmpbuf(reading.png))) return false;
    png_set_user_limits(reading.png, largestSide, largestSide);
    png_set_read_fn(reading.png, &reading, takeBytes);
    png_read_info(reading.png, reading.info);
    png_set_interlace_handling(reading.png);
    png_read_update_info(reading.png, reading.info);
    if (!makeRoom(reading)) return false;
    png_read_image(reading.png, reading.rows.get());
    png_read_end(reading.png, reading.info);
    return true;
}

bool read(PngReading& reading) {
    if (!canHoldItsRows(reading.bytes)) {
        const bool isPng = png_sig_cmp(reinterpret_cast<png_const_bytep>(reading.bytes.data()), 0, 8) == 0;
        reading.problem = isPng ? "its header claims more than the file can hold" : "Not a PNG file";
        return false;
    }
    reading.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, static_cast<PngWork*>(&reading), keepError,
                                         keepWarning);
    if (reading.png) reading.info = png_create_info_struct(reading.png);
    const bool done = reading.info && readPicture(reading);
    png_destroy_read_struct(&reading.png, &reading.info, nullptr);
    if (done) return true;
    delete[] reading.image.pixels;
    if (reading.problem.empty()) reading.problem = "not enough memory";
    return false;
}

int colorType(int channels) {
    constexpr int types[] = {PNG_COLOR_TYPE_GRAY, PNG_COLOR_TYPE_GRAY_ALPHA, PNG_COLOR_TYPE_RGB,
                             PNG_COLOR_TYPE_RGB_ALPHA};
    return channels >= 1 && channels <= 4 ? types[channels - 1] : -1;  // libpng turns others down
}

bool writePicture(PngWriting& to) {
    const Image& image = to.image;
    if (setjmp(png_jmpbuf(to.png))) return false;
    png_init_io(to.png, to.file);
    png_set_IHDR(to.png, to.info, image.width, image.height, 8, colorType(image.channels), PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (to.tagged) png_set_sRGB(to.png, to.info, PNG_sRGB_INTENT_PERCEPTUAL);
    png_write_info(to.png, to.info);
    for (int y = 0; y < image.height; y++) png_write_row(to.png, image.pixels + size_t(y) * image.stride);
    png_write_end(to.png, nullptr);
    // The last rows may still wait for room on the disk.
    return fflush(to.file) == 0;
}

bool write(PngWriting& to) {
    to.png =
        png_create_write_struct(PNG_LIBPNG_VER_STRING, static_cast<PngWork*>(&to), keepError, keepWarning);
    if (to.png) to.info = png_create_info_struct(to.png);
    const bool written = to.info && writePicture(to);
    const char* what = !to.png   ? "Error creating write struct"
                       : to.info ? "Error 3"
                                 : "Error creating info struct";
    png_destroy_write_struct(&to.png, &to.info);
    if (!written) to.said.append("write_png: ").append(what).append("\n");
    return written;
}

}  // namespace

std::optional<Image> readPng(std::string_view bytes, std::string* problem) {
    PngReading reading;
    reading.bytes = bytes;
    if (read(reading)) return reading.image;
    *problem = reading.problem;
    return std::nullopt;
}

int loadPng(const char* path, Image* image, bool flip) {
    const auto bytes = readWholeFile(path);
    if (!bytes) {
        fprintf(stderr, "can't open %s\n", path);
        return -1;
    }
    PngReading reading;
    reading.bytes = *bytes;
    reading.flip = flip;
    const bool loaded = read(reading);
    fputs(reading.said.c_str(), stderr);
    if (!loaded) return -1;
    *image = reading.image;
    return 0;
}

int writePng(const char* path, int width, int height, int channels, int bytesPerPixel, uint32_t stride,
             const uint8_t* pixels) {
    const Image image = {width, height, channels, bytesPerPixel, stride, const_cast<uint8_t*>(pixels)};
    PngWriting to{{}, image, false, fopen(path, "wb")};
    if (!to.file) return fprintf(stderr, "can't open %s\n", path);
    const bool written = write(to);
    const int closed = fclose(to.file);
    const int printed = fprintf(stderr, "%s", to.said.c_str());
    return written ? closed : printed;
}

bool writeTaggedPng(const char* path, const Image& image, std::string* problem) {
    PngWriting to{{}, image, true, fopen(path, "wb")};
    if (!to.file) return false;
    const bool written = write(to);
    *problem = to.problem;
    return fclose(to.file) == 0 && written;
}
