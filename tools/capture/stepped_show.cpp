#include "tools/capture/stepped_show.h"

#include <vector>

#include "app/frame.h"
#include "app/startup.h"
#include "render/demo.h"
#include "script/run_up.h"
#include "tools/capture/window.h"

SteppedShow::SteppedShow(int fps, int samples) : fps(fps) {
    openCaptureWindow(samples);
    initialiseDemo();
    demo->clock.source = &music;
}

SteppedShow::SteppedShow(int fps, Loaded) : fps(fps) {
    demo->clock.source = &music;
}

void SteppedShow::drawRunUp(int frame) {
    std::vector<int> times;
    for (int i = next; i <= frame; i++) times.push_back(milliseconds(i));
    const std::vector<bool> drawn = framesToDraw(times);
    // Only what these frames leave behind counts, and none of that is in their pixels: one of them will do.
    glScissor(0, 0, 1, 1);
    glEnable(GL_SCISSOR_TEST);
    for (const int first = next; next < frame; next++) {
        music.ms = milliseconds(next);
        drawn[next - first] ? drawFrame() : passFrame();
    }
    glDisable(GL_SCISSOR_TEST);
}

void SteppedShow::draw(int frame) {
    drawRunUp(frame);
    music.ms = milliseconds(frame);
    drawFrame();
    next = frame + 1;
}

void SteppedShow::skipTo(int frame) {
    for (; next < frame; next++) {
        music.ms = milliseconds(next);
        passFrame();
    }
}
