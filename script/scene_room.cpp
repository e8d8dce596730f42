// The hall around the mirror ball: a word flashes, shocks and white flashes on the beat, and the fade to
// black.
#include <algorithm>

#include "effects/effect_base.h"
#include "script/room_view.h"
#include "script/scene_kit.h"
#include "script/scenes.h"
#include "script/show_times.h"
#include "script/timeline.h"

namespace {

constexpr double fadeTime = 6.5;  // seconds
constexpr double fadePerSecond = 1 / fadeTime;

void placeCamera() {
    const auto [eye, target] = roomView(frame.time, frame.pulse);
    demo->setCameraEye(eye[0], eye[1], eye[2]);
    demo->setCameraTarget(target[0], target[1], target[2]);
    demo->applyCamera(false);
}

// At full strength for half a second, then fading, cut off at an alpha of 0.2. Depth test and blending stay
// as the picture leaves them.
void flashWord() {
    if (!(frame.time > showtime::word && frame.time < showtime::wordEnd)) return;
    glColor4f(1, 1, 1, 1.5f - (frame.time - showtime::word));
    drawPicture("mix", {.targetFactor = GL_ONE});
}

// 1 until the fade, then down to 0, and for the last glimpse the beat pulse. Sets the colour where it fades.
float fade() {
    const float t = frame.time;
    float level = 1;
    if (t > showtime::afterCredits) {
        level = std::max(0.0, 1 - (t - showtime::afterCredits) * fadePerSecond);
        glColor3f(level, level, level);
    }
    if (t > showtime::glimpse && t < showtime::glimpseEnd) {
        level = frame.pulse;
        glColor3f(level, level, level);
    }
    return level;
}

void flashWhite(float level) {
    glEnable(GL_BLEND);
    glDisable(GL_DEPTH_TEST);
    glColor4f(level, level, level, 0.76f * frame.pulse);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    demo->drawScreenQuad("white", 1);
    glDisable(GL_BLEND);
    glEnable(GL_DEPTH_TEST);
}

}  // namespace

void sceneRoom() {
    const bool shocks = frame.time > showtime::roomShocks;

    placeCamera();
    effectOf("huone").draw();
    flashWord();

    demo->copyScreen("rtt1");
    // Counted from a second before the shocks begin, so that the first one is bent already.
    if (shocks) useBoom(frame.time - (showtime::roomShocks - 1), 0.3f * frame.pulse);
    glDisable(GL_BLEND);
    demo->drawScreenQuad("rtt1", 1);
    demo->useShader();

    glowScreen("rtt3", 1);
    const float level = fade();
    demo->drawScreenQuad("rtt3", 1);
    if (shocks) flashWhite(level);
}
