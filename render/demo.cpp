#include "render/demo.h"

#include <SDL/SDL.h>

#include <cmath>

#include "render/quit.h"
#include "render/random.h"

Demo* demo = nullptr;

namespace {

constexpr int targetSize = 1024;           // pixels; the smallest power of two that holds the screen
constexpr int targetPictureHeight = 768;   // the 4:3 part of a target, until the screen is copied into it
constexpr float loadingTintScale = 1.02f;  // of the tinted copy over the picture

Texture createTarget() {
    Texture target;
    glGenTextures(1, &target.texture);
    target.width = targetSize;
    target.height = targetPictureHeight;
    target.textureWidth = targetSize;
    glBindTexture(GL_TEXTURE_2D, target.texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, targetSize, targetSize, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    return target;
}

void applyLight(GLenum name, const Light& light) {
    glLightfv(name, GL_AMBIENT, light.ambient);
    glLightfv(name, GL_DIFFUSE, light.diffuse);
    glLightfv(name, GL_POSITION, light.position);
    glLightfv(name, GL_SPECULAR, light.specular);
    glLightfv(name, GL_SPOT_DIRECTION, light.spotDirection);
    glLightf(name, GL_SPOT_EXPONENT, light.spotExponent);
    glLightf(name, GL_SPOT_CUTOFF, light.spotCutoff);
}

// Ends the program where the driver lacks what is called without asking again.
void needEntryPoints() {
    const struct {
        GLboolean present;
        const char* missing;
    } needs[] = {
        {GLEW_ARB_shading_language_100, "Seems that ARB_shading_language_100 is not supported."},
        {GLEW_ARB_shader_objects, "Seems that ARB_shader_objects is not supported."},
        {GLEW_ARB_vertex_buffer_object, "Seems that ARB_vertex_buffer_object is not supported."},
        {GLEW_EXT_draw_range_elements, "Seems that EXT_draw_range_elements is not supported."},
        {GLEW_EXT_blend_color, "Seems that EXT_blend_color is not supported."},
        {GLEW_VERSION_1_4, "Seems that OpenGL 1.4 is not supported."},
    };
    for (const auto& need : needs) {
        if (!need.present) fatalError(need.missing);
    }
}

}  // namespace

Demo::Demo() {
    for (int i = 0; i < 8; i++) {
        const float x = float(i);
        lights[i].position[0] = x;
        lights[i].position[1] = x;
        lights[i].position[2] = 4 - x;
    }
    for (int i = 0; i < targetCount; i++) {
        textures[firstTarget + i] = createTarget();
        textureNames["rtt" + std::to_string(i)] = firstTarget + i;
    }
}

void startDemo() {
    // A window without GLX, as under Wayland, has its entry points all the same.
    const GLenum error = glewInit();
    if (error != GLEW_OK && error != GLEW_ERROR_NO_GLX_DISPLAY) fatalError("Could not init GLEW: %s");
    needEntryPoints();

    demo = new Demo;
    demo->clock.setPulseLength(0.05f);
    demo->clock.setBpm(140);
    demo->setStereo(false);

    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(90, 1.3333334, 0.1, 100);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();

    glDepthFunc(GL_LEQUAL);
    glEnable(GL_DEPTH_TEST);
    glShadeModel(GL_SMOOTH);
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);
    glLineWidth(2);
    demo->setViewportAspect(4, 3);
}

void Demo::drawLoadingScreen() {
    // Never seeded: every start shows the same tints.
    const float r = float(randomNumber());

    glClearColor(0, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glColor3f(1, 1, 1);
    glDisable(GL_DEPTH_TEST);
    drawScreenQuad("loading", 1);

    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ONE);
    glColor3f((std::sin(3 * r) + 1) * 0.5f, (std::sin(4 * r) + 1) * 0.5f, (std::sin(5 * r) + 1) * 0.5f);
    drawScreenQuad("loading", loadingTintScale);

    glDisable(GL_BLEND);
    glFlush();
    glEnable(GL_DEPTH_TEST);
    SDL_GL_SwapBuffers();
}

void Demo::endFrame() {
    previousQuadCount = quadCount;
    quadCount = 0;
    clock.frameCount++;

    glColorMask(1, 1, 1, 1);
    glDisable(GL_LIGHTING);
    for (int i = 0; i < 8; i++) {
        const GLenum name = GL_LIGHT0 + i;
        if (lights[i].enabled) {
            applyLight(name, lights[i]);
            glEnable(name);
            glEnable(GL_LIGHTING);
        } else {
            glDisable(name);
        }
    }
    clock.runAutoBeat();
}
