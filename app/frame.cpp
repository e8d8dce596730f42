#include "app/frame.h"

#include <GL/glew.h>
#include <SDL/SDL.h>

#include "app/app.h"
#include "app/screenshot.h"
#include "render/demo.h"
#include "script/timeline.h"

void drawFrame() {
    demo->clock.update();
    const float time = demo->clock.time();
    const float delta = time - app.previousFrameTime;
    app.previousFrameTime = time;
    runTimeline(time, delta);

    glDisable(GL_BLEND);
    glColor3f(1, 1, 1);
    // For the second time in this frame: the timeline ends with it too, and the frame count takes that for
    // granted.
    demo->endFrame();
    glFlush();
}

void renderFrame() {
    drawFrame();
    if (app.screenshotRequested) saveScreenshot();
    SDL_GL_SwapBuffers();
}
