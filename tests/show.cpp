#include "tests/show.h"

#include <dlfcn.h>

#include <cstdlib>

#include "app/app.h"
#include "app/frame.h"
#include "app/startup.h"
#include "script/resources.h"

std::function<void()> beforeSwap;

// In front of the library's own, which it goes on to.
extern "C" void SDL_GL_SwapBuffers() {
    static const auto swap = reinterpret_cast<void (*)()>(dlsym(RTLD_NEXT, "SDL_GL_SwapBuffers"));
    if (beforeSwap) beforeSwap();
    swap();
}

namespace {

struct LoadedShow {
    Demo* demo;
    std::vector<LoadingStep> steps;
};

LoadedShow& loadedShow() {
    static LoadedShow show = [] {
        LoadedShow loaded;
        Demo* const bare = demo;
        beforeSwap = [&loaded] {
            const auto count = [](const auto& table) { return static_cast<int>(table.size()); };
            loaded.steps.push_back({count(demo->meshes), demo->nextTexture, count(demo->effects),
                                    count(demo->shaders), readScreen().litCount()});
        };
        initialiseDemo();
        beforeSwap = nullptr;
        loaded.demo = demo;
        demo = bare;
        return loaded;
    }();
    return show;
}

}  // namespace

void Show::SetUp() {
    GlWindow::SetUp();
    bare = demo;
    demo = loadedShow().demo;
    demo->clock.source = &music;
    overlayRecord = demo->textureIndex("overlay");
    rewind();
}

void Show::TearDown() {
    demo->textureNames["overlay"] = overlayRecord;
    demo->clock.source = nullptr;
    demo = bare;
    GlWindow::TearDown();
}

const std::vector<LoadingStep>& Show::loadingSteps() {
    return loadedShow().steps;
}

Screen Show::drawMoment(int ms) {
    Screen picture{};
    beforeSwap = [&picture] { picture = readScreen(); };
    music.ms = ms;
    renderFrame();
    beforeSwap = nullptr;
    return picture;
}

Screen Show::drawMoment(int ms, int beatMs) {
    demo->clock.lastBeatTime = static_cast<float>(beatMs * 0.001);
    demo->clock.autoBeatLatch = true;
    return drawMoment(ms);
}

void Show::rewind() {
    // Lights 1 to 7 stay as the last scene left them otherwise, and light the title too.
    for (Light& light : demo->lights) light.enabled = false;
    demo->endFrame();
    demo->clock = MusicClock{};
    demo->clock.source = &music;
    app.previousFrameTime = 0;
    createEffects();
    srand(1);
    demo->useShader("boom");
    demo->setUniform1f("boom", "distort", 0);
    demo->setUniform1f("boom", "scale", 0);
    demo->useShader();
}

void Show::withoutOverlay() {
    addSolidTexture("black", {0, 0, 0, 255});
    demo->textureNames["overlay"] = demo->textureIndex("black");
}
