#include "tools/capture/stepped_show.h"

#include <cmath>

#include "app/app.h"
#include "app/frame.h"
#include "app/startup.h"
#include "effects/cube_heap.h"
#include "render/demo.h"
#include "script/composites.h"
#include "script/scenes.h"
#include "script/timeline.h"

namespace {

const ProgrammeEntry& entryAt(int ms) {
    return programmeAt(static_cast<float>(ms * 0.001));
}

// In the torn corridor the beats of odd number have a shock.
bool hasShock(int ms) {
    MusicClock clock;
    clock.currentTime = static_cast<float>(ms * 0.001);
    return entryAt(ms).draw == laserBoomTornApart && static_cast<int>(clock.beatPosition()) % 2 != 0;
}

}  // namespace

SteppedShow::SteppedShow(int fps) : fps(fps) {
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

// A frame finds the lights and the GL state as the frame before left them, and what earlier scenes alone have
// set as their last frames left it. Where the torn corridor has no shock, it bends with the strength that the
// last frame with one left.
bool SteppedShow::leavesTraces(int earlier, int frame) const {
    const ProgrammeEntry& entry = entryAt(milliseconds(earlier));
    if (earlier == frame - 1 || &entry != &entryAt(milliseconds(earlier + 1))) return true;
    if (!hasShock(milliseconds(earlier)) || &entry != &entryAt(milliseconds(frame))) return false;
    for (int later = earlier + 1; later <= frame; later++) {
        if (hasShock(milliseconds(later))) return false;
    }
    return true;
}

void SteppedShow::skip(int frame) {
    music.ms = milliseconds(frame);
    demo->clock.update();
    app.previousFrameTime = demo->clock.time();
    if (entryAt(music.ms).draw == sceneTunnelCubes)
        static_cast<CubeHeap*>(demo->effects["cubes1"])->advance();
    demo->clock.runAutoBeat();
}

void SteppedShow::drawTracesBefore(int frame) {
    for (; next < frame; next++) {
        if (!leavesTraces(next, frame)) {
            skip(next);
            continue;
        }
        music.ms = milliseconds(next);
        drawFrame();
    }
}

void SteppedShow::draw(int frame) {
    drawTracesBefore(frame);
    music.ms = milliseconds(frame);
    drawFrame();
    next = frame + 1;
}

void SteppedShow::skipTo(int frame) {
    for (; next < frame; next++) skip(next);
}
