#include "effects/tunnel_segments.h"

#include <cmath>

#include "effects/surface.h"

namespace {

constexpr float beatsPerSecond = 2.1000001f;  // the clock's 126 bpm
constexpr int firstSegment = -4;
constexpr int lastSegment = 5;
constexpr int twistPerSegment = 4;

}  // namespace

TunnelMotion tunnelMotion(float time) {
    const float beats = time * beatsPerSecond;
    return {std::fmod(beats, 1.0f), static_cast<int>(beats)};
}

float segmentTwist(float time, int segment) {
    return time + twistPerSegment * segment;
}

void drawTunnelSegments(Demo& demo, float time) {
    setMaterial(GL_FRONT, hullMaterial);
    beginHull(demo, "cubetex");
    const auto [phase, beat] = tunnelMotion(time);
    for (int i = firstSegment; i <= lastSegment; ++i) {
        glPushMatrix();
        glTranslatef(0, 0, -segmentLength * i - segmentLength / 2 + segmentLength * phase);
        glRotatef(segmentTwist(time, beat + i) * twistDegrees, 0, 0, 1);
        demo.drawMesh("tunnel");
        glPopMatrix();
    }
    endHull();
}
