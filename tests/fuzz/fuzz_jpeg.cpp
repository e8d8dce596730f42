// JPEG pictures.
#include "image/image.h"
#include "tests/fuzz/target.h"

namespace {

struct Picture : Image {
    Picture() : Image{} {}
    ~Picture() { delete[] pixels; }
};

// Whether a frame header claims more pixels than are worth waiting for: time goes with them, findings don't.
bool isLarge(std::string_view input) {
    constexpr unsigned mostPixels = 1 << 20;
    for (size_t at = 0; at + 9 <= input.size(); at++) {
        const auto byte = [&](size_t i) { return unsigned{uint8_t(input[at + i])}; };
        if (byte(0) != 0xff || byte(1) < 0xc0 || byte(1) > 0xcf) continue;
        if ((byte(5) << 8 | byte(6)) * (byte(7) << 8 | byte(8)) > mostPixels) return true;
    }
    return false;
}

}  // namespace

void tryInput(std::string_view input) {
    if (isLarge(input)) return;
    std::string problem;
    const std::optional<Image> read = readJpeg(input, &problem);
    demand(read.has_value() == problem.empty());
    if (read) delete[] read->pixels;
    const MemoryFile file(input), written;
    Picture picture, again;
    const bool flip = input.size() % 2 != 0;
    if (loadJpeg(file.path(), &picture, flip) != 0) return;
    readAll(picture.pixels, size_t{picture.stride} * size_t(picture.height));
    if (picture.channels != 3) return;  // others aren't written
    demand(writeJpeg(written.path(), picture.width, picture.height, picture.channels, picture.bytesPerPixel,
                     picture.stride, picture.pixels) == 0);
    demand(loadJpeg(written.path(), &again, false) == 0);
    demand(again.width == picture.width && again.height == picture.height);
}
