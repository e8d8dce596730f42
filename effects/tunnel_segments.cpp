#include "effects/tunnel_segments.h"

#include <cmath>

#include "effects/surface.h"

namespace {

// Kept one step of single precision above the clock's 2.1: at the end of the show the tunnel is 0.00005 beats
// ahead of the music, which only a comparison of frames would notice.
constexpr float beatsPerSecond = 2.1000001f;
constexpr int firstSegment = -4;
constexpr int lastSegment = 5;

}  // namespace

TunnelMotion tunnelMotion(float time) {
    const float beats = time * beatsPerSecond;
    float beat;
    const float phase = std::modf(beats, &beat);
    return {phase, int(beat)};
}

float segmentTwist(float time, int segment) {
    return time + fitting::twistPerSegment * segment;
}

void drawTunnelSegments(Demo& demo, float time) {
    setMaterial(GL_FRONT, hullMaterial);
    beginHull(demo, "cubetex");
    const auto [phase, beat] = tunnelMotion(time);
    for (int i = firstSegment; i <= lastSegment; i++) {
        glPushMatrix();
        glTranslatef(0, 0, -segmentLength * i - segmentLength / 2 + segmentLength * phase);
        glRotatef(segmentTwist(time, beat + i) * twistDegrees, 0, 0, 1);
        demo.drawMesh("tunnel");
        glPopMatrix();
    }
    endHull();
}
