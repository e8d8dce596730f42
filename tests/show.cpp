#include "tests/show.h"

#include <dlfcn.h>

#include "app/app.h"
#include "app/frame.h"
#include "app/startup.h"
#include "script/resources.h"

namespace {

struct LoadedShow {
    Demo* demo = nullptr;
    std::vector<LoadingStep> steps;
    StartUpState state;
};

bool loading = false;
LoadedShow show;

void countLoadingScreen() {
    const auto count = [](const auto& table) { return int(table.size()); };
    show.steps.push_back({count(demo->meshes), demo->nextTexture, count(demo->effects), count(demo->shaders),
                          readScreen().litCount()});
}

void loadOnce() {
    if (show.demo) return;
    Demo* const bare = demo;
    // None of it is what start-up leaves.
    glDepthFunc(GL_ALWAYS);
    glDisable(GL_DEPTH_TEST);
    glShadeModel(GL_FLAT);
    glLineWidth(1);
    loading = true;
    initialiseDemo();
    loading = false;
    show.state = {
        stateOf(GL_DEPTH_FUNC), stateOf(GL_SHADE_MODEL), 0, 0, glGetHandleARB(GL_PROGRAM_OBJECT_ARB),
        demo->clock.bpm};
    glGetFloatv(GL_LINE_WIDTH, &show.state.lineWidth);
    float clearColour[4];
    glGetFloatv(GL_COLOR_CLEAR_VALUE, clearColour);
    show.state.clearAlpha = clearColour[3];
    show.demo = demo;
    demo = bare;
}

}  // namespace

// In front of the library's own, which it goes on to: loading screens can be read before they are shown.
extern "C" void SDL_GL_SwapBuffers() {
    static const auto swap = reinterpret_cast<void (*)()>(dlsym(RTLD_NEXT, "SDL_GL_SwapBuffers"));
    if (loading) countLoadingScreen();
    swap();
}

void Show::SetUp() {
    GlWindow::SetUp();
    loadOnce();
    bare = demo;
    demo = show.demo;
    // Of what start-up leaves, what the window's own set-up has not.
    glLineWidth(show.state.lineWidth);
    glClearColor(0, 0, 0, show.state.clearAlpha);
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
    return show.steps;
}

const StartUpState& Show::startUpState() {
    return show.state;
}

Screen Show::drawMoment(int ms) {
    music.ms = ms;
    drawFrame();
    return readScreen();
}

Screen Show::drawMoment(int ms, int beatMs) {
    demo->clock.lastBeatTime = float(beatMs * 0.001);
    demo->clock.autoBeatLatch = true;
    return drawMoment(ms);
}

void Show::passMoment(int ms) {
    music.ms = ms;
    passFrame();
}

void Show::rewind() {
    // Lights 1 to 7 stay as the last scene left them otherwise, and light the title too.
    for (Light& light : demo->lights) light.enabled = false;
    demo->endFrame();
    demo->clock = MusicClock{};
    demo->clock.source = &music;
    app.previousFrameTime = 0;
    restartEffects();
    demo->useShader("boom");
    demo->setUniform1f("boom", "distort", 0);
    demo->setUniform1f("boom", "scale", 0);
    demo->useShader();
}

void Show::withoutOverlay() {
    addSolidTexture("black", {0, 0, 0, 255});
    demo->textureNames["overlay"] = demo->textureIndex("black");
}
