#include "script/composites.h"

#include "effects/effect_base.h"
#include "script/scenes.h"
#include "script/show_times.h"
#include "script/timeline.h"

void laserBoomTornApart() {
    sceneLaserBoom();

    demo->copyScreen("rtt3");
    demo->blur("rtt3", "rtt4",
               {.iterations = 6, .xOffset = 0.5f, .yOffset = 0.5f, .strength = 1.1f, .size = 256});
    demo->drawScreenQuad("rtt4", 1);

    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    // Kept: "scale" stays what the last shock left, so that the bend between two shocks stands still. A
    // viewer would notice if it went.
    demo->useShader("boom");
    demo->setUniform1f("boom", "distort", 10);
    demo->drawScreenQuad("rtt3", 1);
    demo->useShader();
    glDisable(GL_BLEND);
}

void advanceCrossFade() {
    advanceRobo();
    effectOf("huone").advance();
}

void crossFadeFromRoboToRoom() {
    sceneRobo();
    demo->copyScreen("rtt6");
    sceneRoom();
    demo->copyScreen("rtt7");

    demo->drawScreenQuad("rtt6", 1);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColor4f(1, 1, 1, (frame.time - showtime::crossFade) / (showtime::room - showtime::crossFade));
    demo->drawScreenQuad("rtt7", 1);
    glDisable(GL_BLEND);
}

void roomWithCredits() {
    sceneRoom();
    sceneCredits();
}
