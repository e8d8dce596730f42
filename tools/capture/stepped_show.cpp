#include "tools/capture/stepped_show.h"

#include <cmath>
#include <vector>

#include "app/frame.h"
#include "app/startup.h"
#include "app/window.h"
#include "render/demo.h"
#include "render/screen.h"
#include "script/run_up.h"

SteppedShow::SteppedShow(int fps) : fps(fps) {
    keepFramesUnscaled();
    openWindow(false);
    initialiseDemo();
    demo->clock.source = &music;
}

SteppedShow::SteppedShow(int fps, Loaded) : fps(fps) {
    demo->clock.source = &music;
}

int SteppedShow::milliseconds(int frame) const {
    return static_cast<int>(std::lround(frame * 1000.0 / fps));
}

int SteppedShow::framesBefore(double seconds) const {
    const double ms = std::round(seconds * 1e6) / 1000;  // a decimal as it was meant: 65.4 is 65400 ms
    int count = static_cast<int>(seconds * fps);
    while (milliseconds(count) < ms) count++;
    while (count > 0 && milliseconds(count - 1) >= ms) count--;
    return count;
}

void SteppedShow::drawRunUp(int frame) {
    std::vector<int> times;
    for (int i = next; i <= frame; i++) times.push_back(milliseconds(i));
    const std::vector<bool> drawn = framesToDraw(times);
    for (const int first = next; next < frame; next++) {
        music.ms = milliseconds(next);
        drawn[next - first] ? drawFrame() : passFrame();
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
        passFrame();
    }
}
