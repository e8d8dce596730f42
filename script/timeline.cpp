#include "script/timeline.h"

#include "render/demo.h"
#include "render/quit.h"
#include "script/composites.h"
#include "script/scenes.h"

FrameState frame;

namespace {

constexpr ProgrammeEntry sheet[] = {
    {0.0f, sceneSweepText},             // the title
    {9.538f, sceneLaserIntro},          // the ship in its tunnel
    {32.347f, sceneStripesTunnel},      // three layers of stripes
    {47.633f, laserBoomTornApart},      // the ship again, torn
    {62.761f, sceneTunnelCubes},        // the heap of boxes
    {78.03f, sceneProbes},              // probes in smoke
    {93.281f, sceneRobo},               // the robot, from 120.8 s on with greetings
    {137.0f, crossFadeFromRoboToRoom},  //
    {139.0f, sceneRoom},                // the mirror ball
    {169.453f, roomWithCredits},        //
    {184.156f, sceneRoom},              // its fade to black, and a last glimpse
    {195.28f, quit},
};

// A screen-like layer at half strength. Against one minus the source colour, dark parts leave the picture and
// bright parts darken it towards the layer; the usual alpha pair would dim all of it.
void drawOverlay() {
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_COLOR);
    glColor4f(1, 1, 1, 0.5f);
    demo->drawScreenQuad("overlay", 1);
    glDisable(GL_BLEND);
}

}  // namespace

std::span<const ProgrammeEntry> programme() {
    return sheet;
}

const ProgrammeEntry& programmeAt(float time) {
    const ProgrammeEntry* current = sheet;
    for (const ProgrammeEntry& entry : sheet) {
        if (time >= entry.begin) current = &entry;
    }
    return *current;
}

bool preview(float time, float delta) {
    static FrameState previewFrame;
    previewFrame = {time, delta, demo->clock.beatPulse()};
    return false;
}

void runTimeline(float time, float delta) {
    frame = {time, delta, demo->clock.beatPulse()};

    glEnable(GL_NORMALIZE);
    glColor3f(1, 1, 1);
    glClearColor(0, 0, 0, 0);
    demo->lights[0].enabled = false;
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glLoadIdentity();
    glEnable(GL_DEPTH_TEST);

    if (!preview(time, delta)) {
        programmeAt(time).draw();
        drawOverlay();
    }
    demo->endFrame();
}
