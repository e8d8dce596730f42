// The robot under a sphere of stars: light sinks down it, it wakes, and greetings scroll by.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "effects/effect_base.h"
#include "script/greetings_scroll.h"
#include "script/scene_kit.h"
#include "script/scenes.h"
#include "script/show_times.h"
#include "script/timeline.h"

namespace {

constexpr double pi = std::numbers::pi;
constexpr double lightHeight = 0.85;  // at the cut, of its full rise
constexpr double sinkPerSecond = lightHeight / ((showtime::lightSunk.ms - showtime::robot.ms) / 1000.0);

void placeCamera() {
    const double t = frame.time;

    if (frame.time > showtime::robotHighView) {
        demo->setCameraEye(80 * std::sin(0.82 * t + pi), 15 * std::sin(0.5 * t) + 70,
                           60 * std::cos(0.51 * t + pi));
        demo->setCameraTarget(10 * std::sin(0.67 * t), 20 * std::cos(0.55 * t) + 120, 0);
    } else if (frame.time > showtime::robotLowView) {
        demo->setCameraEye(70 * std::sin(0.82 * t), 10 * std::sin(0.5 * t) + 15, 60 * std::cos(0.88 * t));
        demo->setCameraTarget(10 * std::sin(0.67 * t), 20 * std::cos(0.55 * t) + 100, 0);
    } else {
        demo->setCameraEye(130 * std::sin(0.8 * t), 10 * std::sin(0.5 * t) + 70, 150 * std::cos(0.8 * t));
        demo->setCameraTarget(10 * std::sin(0.67 * t), 70, 0);
    }
    demo->applyCamera(false);
}

void drawSky() {
    glBindTexture(GL_TEXTURE_2D, demo->texture("star"));
    glColor3f(1, 1, 1);
    glDisable(GL_LIGHTING);
    glPushMatrix();
    glScalef(1, 1, 1);  // kept for the order of the calls
    demo->drawMesh("sphere");
    glPopMatrix();
    glEnable(GL_LIGHTING);
}

// Asleep, the light sinks from there to a touch below 0; awake, it swings between 0 and 0.8.
void drawRobot() {
    const double t = frame.time;
    EffectBase& robo = effectOf("robo");
    if (frame.time < showtime::awake) {
        robo.drawAt(lightHeight - (frame.time - showtime::robot) * sinkPerSecond, 0);
    } else {
        robo.drawAt(0.4 * std::sin(t - showtime::awake - pi / 2) + 0.4, 1);
    }
}

// Enters at the right edge and moves left by half a unit a second; the scene ends before it has crossed.
void drawGreetings() {
    glColor3f(1, 1, 1);
    drawPicture("greetsit", {.x = greetingsAt(frame.time - showtime::greetings),
                             .halfWidth = 4,
                             .sourceFactor = GL_ONE,
                             .targetFactor = GL_ONE});
    demo->copyScreen("rtt1");
    if (frame.time > showtime::greetingShocks) useBoom(13, 0.3f * frame.pulse);
    glDisable(GL_BLEND);
    demo->drawScreenQuad("rtt1", 1);
    demo->useShader();
}

}  // namespace

void advanceRobo() {
    demo->clock.runAutoBeat();  // in the scene's own housekeeping
    effectOf("robo").advance();
}

void sceneRobo() {
    glEnable(GL_NORMALIZE);
    lightFrom(200, -150, 150);
    demo->endFrame();  // the light counts in this frame already; the frame's own housekeeping still follows
    placeCamera();
    drawSky();
    drawRobot();

    glowScreen("rtt2", 1.05f);
    if (frame.time > showtime::greetings) {
        const float width = std::min(frame.time - showtime::greetings, 3.0f) * 0.6f;
        demo->blur("rtt2", "rtt2", {.iterations = 4, .xOffset = width, .yOffset = width, .strength = 1.05f});
    }
    demo->drawScreenQuad("rtt2", 1);
    if (frame.time > showtime::greetings) drawGreetings();
    demo->useShader();
}
