#include "tools/capture/whole_file.h"

#include <png.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

bool writeWholePng(const char* path, const Image& image) {
    const std::filesystem::path place(path);
    const std::string unfinished =
        (place.parent_path() / ("unfinished-" + place.filename().string())).string();
    // Not the show's own writer, which would print libpng's words for a full disk, or nothing.
    png_image png = {};
    png.version = PNG_IMAGE_VERSION;
    png.width = image.width;
    png.height = image.height;
    png.format = PNG_FORMAT_RGB;
    errno = 0;
    if (png_image_write_to_file(&png, unfinished.c_str(), 0, image.pixels, image.stride, nullptr) &&
        rename(unfinished.c_str(), path) == 0)
        return true;
    fprintf(stderr, "capture: %s was not written: %s\n", path, errno ? strerror(errno) : png.message);
    unlink(unfinished.c_str());
    return false;
}
