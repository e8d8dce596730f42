// The window that tests draw in: opened once per process, 800 x 600 with 8 bits of alpha, like the show's.
// A fixture derives from `GlWindow`: each test gets a fresh `demo` (no resources besides the targets), music
// that stands where `music.ms` says, a cleared screen and GL's state as the program starts with; a test that
// leaves a GL error or an unbalanced stack behind fails. Death tests need `GTEST_FLAG_SET(death_test_style,
// "threadsafe")`, which the fixture sets: GL's threads do not survive a fork.
#pragma once

#include <GL/glew.h>
#include <SDL/SDL.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "image/image.h"
#include "render/demo.h"
#include "render/screen.h"
#include "tests/grab_window.h"

struct Pixel {
    uint8_t r, g, b, a;

    bool operator==(const Pixel&) const = default;
};

inline void PrintTo(const Pixel& p, std::ostream* out) {
    *out << "rgba(" << +p.r << ", " << +p.g << ", " << +p.b << ", " << +p.a << ")";
}

// A picture, bottom row first.
struct Screen {
    int width, height;
    std::vector<Pixel> pixels;

    const Pixel& at(int x, int y) const { return pixels[size_t(y) * width + x]; }
    // Pixels with any colour in them, whatever their alpha.
    int litCount() const {
        int count = 0;
        for (const Pixel& p : pixels) count += p.r || p.g || p.b;
        return count;
    }
};

// The most by which two pixels differ in a colour.
inline int apart(const Pixel& a, const Pixel& b) {
    return std::max({std::abs(a.r - b.r), std::abs(a.g - b.g), std::abs(a.b - b.b)});
}

// How many pixels of two pictures of one size are further apart than `tolerance`.
inline int differing(const Screen& a, const Screen& b, int tolerance = 0) {
    int count = 0;
    for (size_t i = 0; i < a.pixels.size(); i++) count += apart(a.pixels[i], b.pixels[i]) > tolerance;
    return count;
}

inline Screen readScreen() {
    Screen screen{screenWidth, screenHeight, std::vector<Pixel>(screenWidth * screenHeight)};
    glReadPixels(0, 0, screenWidth, screenHeight, GL_RGBA, GL_UNSIGNED_BYTE, screen.pixels.data());
    return screen;
}

inline Pixel readPixel(int x, int y) {
    Pixel pixel{};
    glReadPixels(x, y, 1, 1, GL_RGBA, GL_UNSIGNED_BYTE, &pixel);
    return pixel;
}

// What the GL texture of that name holds, whatever its record says.
inline Screen readTexture(const char* name) {
    glBindTexture(GL_TEXTURE_2D, demo->texture(name));
    Screen content{};
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &content.width);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &content.height);
    content.pixels.resize(size_t(content.width) * content.height);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_UNSIGNED_BYTE, content.pixels.data());
    return content;
}

// What the window shows, which is what the last swap brought there; the display keeps no alpha.
inline Screen readWindow() {
    Screen screen{screenWidth, screenHeight, std::vector<Pixel>(screenWidth * screenHeight)};
    glFinish();
    grabWindow(screenWidth, screenHeight, &screen.pixels.data()->r);
    return screen;
}

// A picture that F11, `look` or a capture has written of one; black if it can't be read.
inline Screen screenIn(const std::string& path) {
    Screen screen{screenWidth, screenHeight, std::vector<Pixel>(screenWidth * screenHeight)};
    Image image{};
    EXPECT_EQ(loadImage(path.c_str(), &image, 1), 0);
    for (size_t i = 0; i < screen.pixels.size() && image.pixels; i++)
        screen.pixels[i] = {image.pixels[3 * i], image.pixels[3 * i + 1], image.pixels[3 * i + 2], 255};
    delete[] image.pixels;
    return screen;
}

// Enters a texture made here in the place of a loaded one; unfiltered, first pixel row at the bottom.
inline void addTexture(const char* name, int width, int height, const std::vector<Pixel>& pixels) {
    const int index = demo->nextTexture++;
    Texture& record = demo->textures[index];
    glGenTextures(1, &record.texture);
    glBindTexture(GL_TEXTURE_2D, record.texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    record.width = record.textureWidth = width;
    record.height = record.textureHeight = height;
    demo->textureNames[name] = index;
}

inline void addSolidTexture(const char* name, Pixel colour) {
    addTexture(name, 1, 1, {colour});
}

// Fills a rectangle of the screen, counted from the lower left.
inline void fillRect(int x, int y, int width, int height, Pixel colour) {
    glPushAttrib(GL_SCISSOR_BIT | GL_COLOR_BUFFER_BIT);
    glEnable(GL_SCISSOR_TEST);
    glScissor(x, y, width, height);
    glColorMask(1, 1, 1, 1);
    glClearColor(colour.r / 255.f, colour.g / 255.f, colour.b / 255.f, colour.a / 255.f);
    glClear(GL_COLOR_BUFFER_BIT);
    glPopAttrib();
}

inline GLint stateOf(GLenum name) {
    GLint value = 0;
    glGetIntegerv(name, &value);
    return value;
}

class GlWindow : public testing::Test {
public:
    SteppedMusic music;

    void SetUp() override {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        static const bool opened = openWindow();
        if (!opened) {
            fprintf(stderr, "No window to test in: %s\n", SDL_GetError());
            exit(1);
        }
        glPushAttrib(GL_ALL_ATTRIB_BITS);
        glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
        resetMatrices();
        attribDepth = stateOf(GL_ATTRIB_STACK_DEPTH);
        clientAttribDepth = stateOf(GL_CLIENT_ATTRIB_STACK_DEPTH);

        demo = new Demo;
        demo->clock.source = &music;
        glBindTexture(GL_TEXTURE_2D, 0);
        glDepthFunc(GL_LEQUAL);
        glEnable(GL_DEPTH_TEST);
        demo->setViewportAspect(4, 3);
        glClearColor(0, 0, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    }

    void TearDown() override {
        EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
        EXPECT_EQ(stateOf(GL_MODELVIEW_STACK_DEPTH), 1);
        EXPECT_EQ(stateOf(GL_PROJECTION_STACK_DEPTH), 1);
        EXPECT_EQ(stateOf(GL_ATTRIB_STACK_DEPTH), attribDepth);
        EXPECT_EQ(stateOf(GL_CLIENT_ATTRIB_STACK_DEPTH), clientAttribDepth);

        for (const Texture& record : demo->textures) glDeleteTextures(1, &record.texture);
        glUseProgramObjectARB(0);
        for (const auto& [name, program] : demo->shaders) glDeleteObjectARB(program);
        delete demo;
        demo = nullptr;
        while (stateOf(GL_ATTRIB_STACK_DEPTH) > 0) glPopAttrib();
        while (stateOf(GL_CLIENT_ATTRIB_STACK_DEPTH) > 0) glPopClientAttrib();
    }

    // The camera under which a screen quad of scale 1 fills the viewport, as scenes leave it.
    static void placeCamera() {
        demo->setCameraEye(0, 0, 2);
        demo->setCameraTarget(0, 0, 0);
        demo->setFov(90);
        demo->applyCamera(false);
    }

private:
    int attribDepth = 0;
    int clientAttribDepth = 0;

    static bool openWindow() {
        keepFramesUnscaled();
        if (SDL_Init(SDL_INIT_VIDEO) < 0) return false;
        SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
        SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, 24);
        SDL_GL_SetAttribute(SDL_GL_ALPHA_SIZE, 8);
        return SDL_SetVideoMode(screenWidth, screenHeight, 32, SDL_OPENGL) && glewInit() == GLEW_OK;
    }

    static void resetMatrices() {
        glMatrixMode(GL_PROJECTION);
        while (stateOf(GL_PROJECTION_STACK_DEPTH) > 1) glPopMatrix();
        glLoadIdentity();
        gluPerspective(90, 1.3333334, 0.1, 100);
        glMatrixMode(GL_MODELVIEW);
        while (stateOf(GL_MODELVIEW_STACK_DEPTH) > 1) glPopMatrix();
        glLoadIdentity();
    }
};
