#include "tests/show.h"

#include "app/app.h"
#include "app/frame.h"
#include "app/startup.h"
#include "script/resources.h"

namespace {

// Loaded once, and of the state that start-up leaves what the window's own set-up has not.
struct LoadedShow {
    Demo* demo = nullptr;
    float lineWidth = 0, clearColour[4] = {};
} show;

void loadOnce() {
    if (show.demo) return;
    Demo* const bare = demo;
    initialiseDemo();
    glGetFloatv(GL_LINE_WIDTH, &show.lineWidth);
    glGetFloatv(GL_COLOR_CLEAR_VALUE, show.clearColour);
    show.demo = demo;
    demo = bare;
}

}  // namespace

void Show::SetUp() {
    GlWindow::SetUp();
    loadOnce();
    bare = demo;
    demo = show.demo;
    glLineWidth(show.lineWidth);
    glClearColor(0, 0, 0, show.clearColour[3]);
    demo->clock.source = &music;
    rewind();
}

void Show::TearDown() {
    demo->clock.source = nullptr;
    demo = bare;
    GlWindow::TearDown();
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

void Show::advanceMoment(int ms) {
    music.ms = ms;
    advanceFrame();
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
