#include "tools/capture/window.h"

#include <GL/glew.h>
#include <SDL/SDL.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "app/window.h"
#include "render/screen.h"
#include "tools/display.h"

namespace {

constexpr int samplesOfCards = 4;

// There, four samples take more than a third of the speed: up to 60 per cent in the heap of boxes.
bool drawsInSoftware() {
    for (const char* name : {"llvmpipe", "softpipe", "Software Rasterizer"}) {
        if (strstr(rendererName(), name)) return true;
    }
    return false;
}

std::string textOf(GLenum name) {
    const GLubyte* text = glGetString(name);
    return text ? reinterpret_cast<const char*>(text) : "";
}

}  // namespace

const char* rendererName() {
    static std::string name;
    name = textOf(GL_VENDOR) + ", " + textOf(GL_RENDERER) + ", " + textOf(GL_VERSION);
    return name.c_str();
}

int windowSamples() {
    GLint samples = 0;
    glGetIntegerv(GL_SAMPLES, &samples);
    return samples;
}

void openCaptureWindow(int samples) {
    needDisplay();
    keepFramesUnscaled();
    if (samples == samplesOfRenderer) {
        openWindow(false);
        if (drawsInSoftware()) return;
        SDL_QuitSubSystem(SDL_INIT_VIDEO);  // a window's samples are chosen when it opens
        openWindow(false, samplesOfCards);
        return;
    }
    // The virtual display of Debian 13 has such windows for EGL alone, which only SDL 2 knows.
    if (samples > 0) setenv("SDL_VIDEO_X11_FORCE_EGL", "1", 1);
    openWindow(false, samples);
    if (windowSamples() >= samples) return;
    GLint most = 0;
    glGetIntegerv(GL_MAX_SAMPLES, &most);
    fprintf(stderr, "capture: --samples: the driver has no window with %d; its most is %d\n", samples, most);
    exit(1);
}
