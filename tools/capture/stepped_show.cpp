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

constexpr double beatLength = 1 / 2.1;  // seconds

const ProgrammeEntry& entryAt(int ms) {
    return programmeAt(static_cast<float>(ms * 0.001));
}

}  // namespace

SteppedShow::SteppedShow(int fps) : fps(fps) {
    openWindow(false);
    initialiseDemo();
    demo->clock.source = &music;
}

int SteppedShow::milliseconds(int frame) const {
    return static_cast<int>(std::lround(frame * 1000.0 / fps));
}

int SteppedShow::framesBefore(double seconds) const {
    const double ms = seconds * 1000;
    int count = static_cast<int>(seconds * fps);
    while (milliseconds(count) < ms) count++;
    while (count > 0 && milliseconds(count - 1) >= ms) count--;
    return count;
}

// A frame finds the lights and the GL state as the frame before left them, and what earlier scenes alone have
// set as their last frames left it. Where the torn corridor has no shock of its own, it bends with the
// strength that the last one left, which is less than two beats old.
bool SteppedShow::leavesTraces(int earlier, int frame) const {
    const ProgrammeEntry& entry = entryAt(milliseconds(earlier));
    if (earlier == frame - 1 || &entry != &entryAt(milliseconds(earlier + 1))) return true;
    return entry.draw == laserBoomTornApart && &entry == &entryAt(milliseconds(frame)) &&
           (frame - earlier) < 2 * beatLength * fps + 2;
}

void SteppedShow::skip(int frame) {
    music.ms = milliseconds(frame);
    demo->clock.update();
    app.previousFrameTime = demo->clock.time();
    if (entryAt(music.ms).draw == sceneTunnelCubes)
        static_cast<CubeHeap*>(demo->effects["cubes1"])->advance();
    demo->clock.runAutoBeat();
}

void SteppedShow::draw(int frame) {
    for (; next < frame; next++) {
        if (!leavesTraces(next, frame)) {
            skip(next);
            continue;
        }
        music.ms = milliseconds(next);
        drawFrame();
    }
    music.ms = milliseconds(frame);
    drawFrame();
    next = frame + 1;
}
