// The title, swept by light, in a glow that shimmers.
#include <cmath>

#include "effects/effect_base.h"
#include "script/scene_kit.h"
#include "script/scenes.h"
#include "script/timeline.h"

void sceneSweepText() {
    const float t = frame.time;

    demo->lights[0].enabled = false;
    demo->setCameraEye(20, 20, 80);
    demo->setCameraTarget(0, 0, 0);
    demo->applyCamera(false);
    effectOf("sweep").draw();

    const float wobble = std::sin(std::sin(t) * 4 + t * 10);
    const float strength = (wobble * 0.1f - 0.1f) + 0.95f;
    glowScreen("rtt2", strength);
    demo->drawScreenQuad("rtt2", 1);

    // Kept: left behind for the overlay, which sets its own. Only a trace of the calls would notice.
    glColor4f(1, 1, 1, 0.5f);
}
