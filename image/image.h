// In-memory pictures: reading PNG and JPEG, writing PPM, JPEG and PNG, mirroring and copying.
// Rows lie in memory as the loader was asked for: as stored (top first) or flipped (bottom first).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Owns nothing by itself: `pixels` comes from new[] and whoever uses the record releases it with delete[].
struct Image {
    int32_t width;          // pixels per row
    int32_t height;         // rows
    int32_t channels;       // samples per pixel as the file gave them: 1 grey, 3 RGB, 4 RGBA
    int32_t bytesPerPixel;  // every producer here sets it equal to channels
    uint32_t stride;        // bytes from one row to the next
    uint8_t* pixels;        // height * stride bytes
};

// A record with an uninitialised buffer of height * width * channels bytes; a row must have less than 4 GiB.
Image createImage(int width, int height, int channels);

// Fills `image` from a file whose kind the last three letters of its path say (png, PNG; jpg, peg, JPG, PEG).
// With `flip` the bottom row comes first. Returns 0, or -1 after a line on standard error, and `image` is
// then not to be used.
int loadImage(const char* path, Image* image, bool flip);

// The same for PNG alone. No transforms: palette pictures stay indices, 16-bit samples stay two bytes,
// samples of fewer than 8 bits stay packed (the stride shows it). Sides go up to 65535. For a file that can't
// be opened there is a line on standard error, for a broken one at most libpng's own.
int loadPng(const char* path, Image* image, bool flip);

// For JPEG alone: -1 only if the file can't be opened. A broken file, or one with a side above 16384, ends
// the process as libjpeg does, except that what is missing at the end is filled in.
int loadJpeg(const char* path, Image* image, bool flip);

// The picture in the bytes of a whole file, top row first, or nothing and the reason in `problem`. Nothing is
// printed, the process goes on, and any thread may call. What loadJpeg would only warn of, or fill in, is a
// reason too.
std::optional<Image> readPng(std::string_view bytes, std::string* problem);
std::optional<Image> readJpeg(std::string_view bytes, std::string* problem);

// Rows are written in memory order: a picture that was grabbed from GL is flipped first. 0 once the whole
// file is written, anything else if it is not; of PNG and JPEG a line on standard error says why. What
// libjpeg can't write ends the process.
int writePpm(const char* path, int width, int height, int channels, int bytesPerPixel, uint32_t stride,
             const uint8_t* pixels);
int writeJpeg(const char* path, int width, int height, int channels, int bytesPerPixel, uint32_t stride,
              const uint8_t* pixels);
int writePng(const char* path, int width, int height, int channels, int bytesPerPixel, uint32_t stride,
             const uint8_t* pixels);
// A picture that says that its colours are sRGB. False if the file is not whole; errno or `problem` says why,
// and nothing is printed.
bool writeTaggedPng(const char* path, const Image& image, std::string* problem);

// Copies a rectangle of `width` x `height` pixels, counted in the destination's pixel size; neither clips nor
// converts. Returns the number of rows copied.
int copyImageRect(const Image& destination, int destinationX, int destinationY, const Image& source,
                  int sourceX, int sourceY, int width, int height);

// Mirrors in place, top to bottom (vertical) and left to right (horizontal, for 8-bit samples); both together
// turn by 180 degrees, except that the middle column of an odd width stays as it is.
void flipImage(const Image& image, bool vertical, bool horizontal);
