#include "tools/capture/whole_file.h"

#include <GL/glew.h>
#include <png.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "render/screen.h"

std::string unfinishedPath(const std::string& path) {
    const std::filesystem::path place(path);
    return place.parent_path() / ("unfinished-" + place.filename().string());
}

bool writeWholePng(const char* path, const Image& image) {
    const std::string unfinished = unfinishedPath(path);
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
    fprintf(stderr, "%s: %s was not written: %s\n", program_invocation_short_name, path,
            errno ? strerror(errno) : png.message);
    unlink(unfinished.c_str());
    return false;
}

bool writeScreen(const std::string& path) {
    const Image image = createImage(screenWidth, screenHeight, 3);
    glReadPixels(0, 0, screenWidth, screenHeight, GL_RGB, GL_UNSIGNED_BYTE, image.pixels);
    flipImage(image, 1, 0);
    const bool written = writeWholePng(path.c_str(), image);
    delete[] image.pixels;
    return written;
}
