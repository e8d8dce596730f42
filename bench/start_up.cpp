// Start-up to the first picture and to the first frame, against the bare calls that it can't do without.
#include <GL/glew.h>
#include <GL/glu.h>

#include <filesystem>
#include <string>

#include "app/startup.h"
#include "bench/bare.h"
#include "bench/bench.h"
#include "image/image.h"
#include "render/demo.h"

namespace fs = std::filesystem;

namespace {

constexpr int loadingScreens = 56;
constexpr double goal = 1.2;

// Decoding is not all that a texture needs: its mipmaps are the library's work too.
void bareTexture(const std::string& path) {
    Image image;
    if (loadImage(path.c_str(), &image, 0) != 0) return;
    const GLenum format = image.channels == 4 ? GL_RGBA : GL_RGB;
    GLuint texture;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    gluBuild2DMipmaps(GL_TEXTURE_2D, format, image.width, image.height, format, GL_UNSIGNED_BYTE,
                      image.pixels);
    glDeleteTextures(1, &texture);
    delete[] image.pixels;
}

double bareLoadSeconds() {
    const double start = wallSeconds();
    for (const fs::directory_entry& entry : fs::directory_iterator("data")) {
        const std::string ending = entry.path().extension();
        if (ending == ".AML") bareFile(entry.path().c_str());
        if ((ending == ".png" || ending == ".jpg") && entry.path().stem() != "icon")
            bareTexture(entry.path());
    }
    glFinish();
    return wallSeconds() - start;
}

double loadingScreenSeconds() {
    const double start = wallSeconds();
    for (int i = 0; i < loadingScreens; i++) demo->drawLoadingScreen();
    glFinish();
    return wallSeconds() - start;
}

}  // namespace

Figures benchStartUp() {
    const double start = wallSeconds();
    openWindow(false);
    startDemo();
    demo->drawLoadingScreen();
    glFinish();
    const double firstPicture = wallSeconds() - start;

    const double opened = wallSeconds();
    initialiseDemo();
    glFinish();
    const double loaded = wallSeconds() - opened;
    const double bare = bareLoadSeconds() + loadingScreenSeconds();
    return {{"start to the first picture", firstPicture * 1000, "ms", 0, 0, false},
            {"loading to the first frame", loaded * 1000, "ms", bare * 1000, goal, false}};
}
