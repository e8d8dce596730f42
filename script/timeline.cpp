#include "script/timeline.h"

#include "render/demo.h"
#include "render/quit.h"
#include "script/composites.h"
#include "script/scenes.h"
#include "script/show_times.h"

FrameState frame;

namespace {

// Begin, scene, name, and for some what their frames carry on and leave.
constexpr ProgrammeEntry sheet[] = {
    {showtime::title, sceneSweepText, "title"},
    {showtime::tunnel, sceneLaserIntro, "tunnel", nullptr, hasTunnelShock},
    {showtime::stripes, sceneStripesTunnel, "stripes"},
    {showtime::tornTunnel, laserBoomTornApart, "torn tunnel", nullptr, hasTunnelShock},
    {showtime::heap, sceneTunnelCubes, "heap", advanceTunnelCubes},
    {showtime::probes, sceneProbes, "probes", advanceProbes},
    {showtime::robot, sceneRobo, "robot", advanceRobo},
    {showtime::crossFade, crossFadeFromRoboToRoom, "cross-fade", advanceCrossFade},
    {showtime::room, sceneRoom, "room"},
    {showtime::credits, roomWithCredits, "credits"},
    {showtime::afterCredits, sceneRoom, "after credits"},
    {showtime::end, quit, "end"},
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
