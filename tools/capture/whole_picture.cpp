#include "tools/capture/whole_picture.h"

#include <GL/glew.h>
#include <png.h>

#include <cerrno>

#include "render/screen.h"
#include "tools/whole_file.h"

bool writeWholePng(const char* path, const Image& image) {
    // Not the show's own writer, which would print libpng's words for a full disk, or nothing.
    png_image png = {};
    png.version = PNG_IMAGE_VERSION;
    png.width = image.width;
    png.height = image.height;
    png.format = PNG_FORMAT_RGB;
    errno = 0;
    const bool written =
        png_image_write_to_file(&png, unfinishedPath(path).c_str(), 0, image.pixels, image.stride, nullptr);
    return putInPlace(path, written, png.message);
}

bool writeScreen(const std::string& path) {
    const Image image = createImage(screenWidth, screenHeight, 3);
    glReadPixels(0, 0, screenWidth, screenHeight, GL_RGB, GL_UNSIGNED_BYTE, image.pixels);
    flipImage(image, 1, 0);
    const bool written = writeWholePng(path.c_str(), image);
    delete[] image.pixels;
    return written;
}
