// The robot under a sphere of stars: light sinks down it, it wakes, and greetings scroll by. 93.3 to 139 s.
#include <algorithm>
#include <cmath>
#include <numbers>

#include "effects/effect_base.h"
#include "script/scene_kit.h"
#include "script/scenes.h"
#include "script/timeline.h"

namespace {

constexpr double pi = std::numbers::pi;

// Seconds of the music.
constexpr float sceneBegin = 93.281f;
constexpr float awake = 108.5f;         // the robot from sinking light to its active mode
constexpr float lowView = 109;          // the camera's second phase
constexpr float highView = 116.204f;    // and its third
constexpr float greetings = 120.81f;    // the picture blurs and the greetings come in
constexpr float shocksBegin = 123.81f;  // on the greetings, with the beat

void placeCamera() {
    const double t = frame.time;

    if (frame.time > highView) {
        demo->setCameraEye(80 * std::sin(0.82 * t + pi), 15 * std::sin(0.5 * t) + 70,
                           60 * std::cos(0.51 * t + pi));
        demo->setCameraTarget(10 * std::sin(0.67 * t), 20 * std::cos(0.55 * t) + 120, 0);
    } else if (frame.time > lowView) {
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
    glScalef(1, 1, 1);
    demo->drawMesh("sphere");
    glPopMatrix();
    glEnable(GL_LIGHTING);
}

// Asleep, the light sinks from 0.85 to a touch below 0 within 15 s; awake, it swings between 0 and 0.8.
void drawRobot() {
    const double t = frame.time;
    EffectBase* robo = demo->effects["robo"];
    if (frame.time < awake) {
        robo->drawAt(0.85 - (frame.time - sceneBegin) * 0.056666666666666664, 0);
    } else {
        robo->drawAt(0.4 * std::sin(t - 108.5 - pi / 2) + 0.4, 1);
    }
}

// Enters at the right edge and moves left by half a unit a second; the scene ends before it has crossed.
void drawGreetings() {
    glColor3f(1, 1, 1);
    drawPicture("greetsit", 5.33334f - (frame.time - greetings) * 0.5f, 0, -1, 4, GL_ONE, GL_ONE);
    demo->copyScreen("rtt1");
    if (frame.time > shocksBegin) useBoom(13, 0.3f * frame.pulse);
    glDisable(GL_BLEND);
    demo->drawScreenQuad("rtt1", 1);
    demo->useShader();
}

}  // namespace

void sceneRobo() {
    glEnable(GL_NORMALIZE);
    lightFrom(200, -150, 150);
    demo->endFrame();  // the light counts in this frame already; the frame's own housekeeping still follows
    placeCamera();
    drawSky();
    drawRobot();

    demo->copyScreen("rtt1");
    demo->glow("rtt1", "rtt2", 2, 1.05f);
    if (frame.time > greetings) {
        const float width = std::min(frame.time - greetings, 3.0f) * 0.6f;
        demo->blur("rtt2", "rtt2", 4, width, width, 1.05f, 0);
    }
    demo->drawScreenQuad("rtt2", 1);
    if (frame.time > greetings) drawGreetings();
    demo->useShader();
}
