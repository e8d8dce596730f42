// Probes and the links between them, over blue smoke and through a fixed lens.
#include <cmath>

#include "effects/effect_base.h"
#include "script/scene_kit.h"
#include "script/scenes.h"
#include "script/timeline.h"

namespace {

// Without the depth buffer, so that no probe is hidden by it.
void drawSmoke() {
    const double t = frame.time;

    glDisable(GL_DEPTH_TEST);
    demo->useShader("smoke2");
    demo->setUniform4f("smoke2", "color", 0.1f, 0.3f, 1, 1);
    demo->setUniform1f("smoke2", "time", std::sin(0.3 * t));
    demo->setUniform1f("smoke2", "time2", std::cos(0.2 * t));
    demo->drawScreenQuad("noise1", 1);
    demo->useShader();
    glEnable(GL_DEPTH_TEST);
}

}  // namespace

void advanceProbes() {
    effectOf("probes").advance();
    demo->clock.runAutoBeat();  // in the housekeeping of their lights
}

void sceneProbes() {
    drawSmoke();
    effectOf("probes").draw();  // places the camera too

    glowScreen("rtt3", 1);
    useBoom(8, 0.2f);
    demo->drawScreenQuad("rtt3", 1);
    demo->useShader();
}
