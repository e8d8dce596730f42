// The striped model: near and blurred before the tunnel, far and glowing, and once more on top, zoomed on
// beats.
#include "effects/effect_base.h"
#include "script/scene_kit.h"
#include "script/scenes.h"
#include "script/timeline.h"

namespace {

void drawNearStripes() {
    demo->setCameraEye(0, 0, 5);
    demo->setCameraTarget(0, 0, 0);
    demo->applyCamera(true);
    effectOf("stripes").drawAt(0.4f * frame.time, 40);
}

void drawFarStripes() {
    demo->setCameraEye(0, 0, 200);
    demo->setCameraTarget(0, 0, 0);
    demo->applyCamera(true);
    glShadeModel(GL_FLAT);
    effectOf("stripes").drawAt(frame.time, 100);
    glShadeModel(GL_SMOOTH);
}

// Up to 30 % on even beats and 60 % on odd ones, negative odd numbers among them.
float beatZoom() {
    const int odd = beatNumber(frame.time) & 1;
    return (0.3f * float(odd) + 0.3f) * frame.pulse + 1;
}

}  // namespace

void sceneStripesTunnel() {
    glDisable(GL_BLEND);
    glEnable(GL_TEXTURE_2D);
    glColor4f(1, 1, 1, 0.5f);

    drawNearStripes();
    effectOf("tunnel").draw();
    // Over itself once, so that the picture that is blurred is modulated by the colour the effects left.
    demo->copyScreen("rtt2");
    demo->drawScreenQuad("rtt2", 1);
    demo->useShader();
    demo->copyScreen("rtt2");
    demo->blur("rtt2", "rtt4",
               {.iterations = 3, .xOffset = 0.75f, .yOffset = 0.75f, .strength = 1.1f, .size = 256});
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);

    drawFarStripes();
    demo->copyScreen("rtt2");
    demo->glow("rtt2", "rtt3", 2, 0.1f * frame.pulse + 0.95f);
    demo->glow("rtt3", "rtt5", 1, 2);

    // The three layers, by the alpha of the models.
    glDisable(GL_DEPTH_TEST);
    demo->drawScreenQuad("rtt4", 1);
    demo->useShader();
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    demo->drawScreenQuad("rtt5", 1);
    demo->drawScreenQuad("rtt2", beatZoom());
    demo->useShader();
    glEnable(GL_DEPTH_TEST);
    glDisable(GL_BLEND);
}

void sceneStripesOnly() {
    drawNearStripes();
}
