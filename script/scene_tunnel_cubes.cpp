// The heap of boxes, sharp before the upright tunnel's blur, under a light that circles.
#include <cmath>

#include "effects/effect_base.h"
#include "script/scene_kit.h"
#include "script/scenes.h"
#include "script/show_times.h"
#include "script/timeline.h"

namespace {

void placeCamera() {
    const float sway = 34 * std::sin(0.7f * frame.time);
    if (frame.time > showtime::heapSecondView) {
        demo->setCameraEye(50, 40, sway + 200);
    } else {
        demo->setCameraEye(sway, 100, 280);
    }
    demo->setCameraTarget(0, 150, 0);
    demo->applyCamera(false);
}

void drawUprightTunnel() {
    glPushMatrix();
    glRotatef(90, 1, 0, 0);
    effectOf("tunnel").draw();
    glPopMatrix();
}

}  // namespace

void advanceTunnelCubes() {
    effectOf("tunnel").advance();
    effectOf("cubes1").advance();
}

void sceneTunnelCubes() {
    const float t = frame.time;

    glEnable(GL_NORMALIZE);
    lightFrom(200 * std::sin(t), -150, 150 * std::cos(t));
    placeCamera();
    glEnable(GL_LIGHTING);
    glEnable(GL_TEXTURE_2D);
    glColor4f(1, 1, 1, 0.5f);

    drawUprightTunnel();
    glDisable(GL_DEPTH_TEST);
    demo->copyScreen("rtt1");
    demo->blur("rtt1", "rtt2", {.iterations = 3, .xOffset = 0.75f, .yOffset = 0.75f});
    demo->drawScreenQuad("rtt2", 1);

    glClear(GL_DEPTH_BUFFER_BIT);
    glEnable(GL_DEPTH_TEST);
    effectOf("cubes1").draw();

    glowScreen("rtt2", 1.1f);
    demo->drawScreenQuad("rtt2", 1);
}
