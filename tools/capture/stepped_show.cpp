#include "tools/capture/stepped_show.h"

#include <vector>

#include "app/frame.h"
#include "app/startup.h"
#include "render/demo.h"
#include "script/run_up.h"
#include "tools/capture/window.h"

OnePixel::OnePixel() {
    glScissor(0, 0, 1, 1);
    glEnable(GL_SCISSOR_TEST);
}

OnePixel::~OnePixel() {
    glDisable(GL_SCISSOR_TEST);
}

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
    const OnePixel unseen;
    for (const int first = next; next < frame; next++) {
        music.ms = milliseconds(next);
        drawn[next - first] ? drawFrame() : advanceFrame();
    }
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
        advanceFrame();
    }
}
