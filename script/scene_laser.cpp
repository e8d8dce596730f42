// The ship in its tunnel, beams on, seen from a camera that jumps each bar.
#include <cmath>

#include "effects/laser_tunnel.h"
#include "script/scene_kit.h"
#include "script/scenes.h"
#include "script/show_times.h"
#include "script/timeline.h"

namespace {

constexpr float stopsPerSecond = showtime::beatsPerMinute / 60.0f / showtime::beatsPerBar;

// 0..1 across 400 units of x (from the right), 200 of y and 1000 of z around the ship.
constexpr struct {
    float x, y, z;
} laserCameraStops[] = {
    {0.78f, 0.95f, 0.4f},   // -112, 90, -100
    {0, 0, 0},              // 200, -100, -500
    {0.22f, 1.25f, 0.69f},  // 112, 150, 190
    {1, 0, 0.85f},          // -200, -100, 350; also until beat 0
    {0.46f, 1.11f, 0.64f},  // 16, 122, 140
};

void placeCameraEye() {
    int stop = 3;
    if (frame.time >= showtime::beatZero) stop = int((frame.time - showtime::beatZero) * stopsPerSecond) % 5;
    const auto [x, y, z] = laserCameraStops[stop];
    demo->setCameraEye(200 - 400 * x, 200 * y - 100, 1000 * z - 500);
}

void drawShipInTunnel() {
    EffectBase& laser = effectOf("laser");
    if (auto* ship = dynamic_cast<LaserTunnel*>(&laser)) ship->beamsOn = true;
    laser.draw();
}

// A bright burst when the tunnel opens, settled after a second; from then on a breath with the beat.
float glowStrength() {
    const float t = frame.time;
    return t < showtime::tunnelSettled ? (showtime::tunnelSettled - t) * 1.79f + 0.95f
                                       : 0.25f * frame.pulse + 0.95f;
}

// While the picture is torn.
bool inDistortion() {
    const float t = frame.time;
    return (t > showtime::firstTear && t < showtime::firstTearEnd) ||
           (t > showtime::secondTear && t < showtime::secondTearEnd);
}

float tornDistortion() {
    return 1 + 0.1f * std::sin(3 * frame.time);
}

void useDistort(float time) {
    demo->useShader("distort");
    demo->setUniform1f("distort", "time", time);
}

// A shock on every odd beat, tight on the last of four. Before beat 0 numbers are negative, so none is the
// last of four.
void boomOnOddBeats() {
    if (!hasTunnelShock(frame.time)) return;
    const float strong = beatNumber(frame.time) % 4 == 3 ? 1.0f : 0.0f;
    demo->copyScreen("rtt1");
    useBoom(40 * strong + 13, 0.3f * frame.pulse);
    demo->drawScreenQuad("rtt1", 1);
    demo->useShader();
}

}  // namespace

// Odd before beat 0 as well: -15 is.
bool hasTunnelShock(float time) {
    return beatNumber(time) % 2 != 0;
}

void sceneLaserIntro() {
    lightFrom(200, -150, 350);
    placeCameraEye();
    demo->setCameraTarget(0, 0, 0);
    demo->applyCamera(false);
    if (frame.time < showtime::beatZero) glColor3f(1, 1, 1);
    drawShipInTunnel();

    glowScreen("rtt2", glowStrength());
    if (inDistortion())
        useDistort(tornDistortion());
    else
        demo->useShader();
    demo->drawScreenQuad("rtt2", 1);
    demo->useShader();
    boomOnOddBeats();
}

void sceneLaserBoom() {
    const double t = frame.time;

    lightFrom(200, -150, 350);
    placeCameraEye();
    demo->setCameraTarget(std::sin(2.8 * t) * 65, std::cos(1.5 * t) * 60, std::cos(3.65 * t) * 52);
    demo->applyCamera(false);
    drawShipInTunnel();

    glowScreen("rtt2", glowStrength());
    // Outside the intervals the warp swings around 0, not around 1: a shimmer, not a tear.
    useDistort(inDistortion() ? tornDistortion() : 0.05f * std::sin(2 * frame.time));
    demo->drawScreenQuad("rtt2", 1);
    demo->useShader();
    boomOnOddBeats();
}
