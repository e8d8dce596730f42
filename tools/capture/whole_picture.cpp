#include "tools/capture/whole_picture.h"

#include <GL/glew.h>

#include <cerrno>

#include "render/screen.h"
#include "tools/whole_file.h"

bool writeWholePng(const char* path, const Image& image) {
    std::string problem;
    errno = 0;
    const bool written = writeTaggedPng(unfinishedPath(path).c_str(), image, &problem);
    return putInPlace(path, written, problem.c_str());
}

bool writeScreen(const std::string& path) {
    const Image image = createImage(screenWidth, screenHeight, 3);
    glReadPixels(0, 0, screenWidth, screenHeight, GL_RGB, GL_UNSIGNED_BYTE, image.pixels);
    flipImage(image, 1, 0);
    const bool written = writeWholePng(path.c_str(), image);
    delete[] image.pixels;
    return written;
}
