#include "app/frame.h"

#include <GL/glew.h>
#include <SDL/SDL.h>

#include "app/app.h"
#include "app/screenshot.h"
#include "render/demo.h"
#include "script/run_up.h"
#include "script/timeline.h"

namespace {

// Samples the music; returns the seconds since the frame before.
float stepClock() {
    demo->clock.update();
    const float delta = demo->clock.time() - app.previousFrameTime;
    app.previousFrameTime = demo->clock.time();
    return delta;
}

}  // namespace

void drawFrame() {
    const float delta = stepClock();
    runTimeline(demo->clock.time(), delta);

    glDisable(GL_BLEND);
    glColor3f(1, 1, 1);
    // Kept: housekeeping for the second time, as the timeline ends with it too. Whoever reads the frame rate
    // would notice: it counts housekeepings.
    demo->endFrame();
    glFlush();
}

void advanceFrame() {
    const float delta = stepClock();
    advanceTimeline(demo->clock.time(), delta);
}

void renderFrame() {
    drawFrame();
    if (app.screenshotRequested) saveScreenshot();
    SDL_GL_SwapBuffers();
}
