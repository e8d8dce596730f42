// The endless tunnel: ten copies of the mesh "tunnel" in a row along z, each turned a little further than the
// one before, that come towards the viewer by one copy a beat.
#pragma once

#include <numbers>

#include "effects/fitting.h"
#include "render/demo.h"

using fitting::segmentLength, fitting::twistRadians;

// A segment's twist is counted in fifths of a radian.
constexpr double twistDegrees = twistRadians * 180 / std::numbers::pi;

struct TunnelMotion {
    float phase;  // of the beat, 0 to 1: how far the row has moved towards the place of its next copy
    int beat;     // whole beats since time 0
};

TunnelMotion tunnelMotion(float time);

// What a copy is turned by about z. `segment` counts copies since time 0: the beat plus the copy's place in
// the row, so that a copy keeps its angle where the phase wraps.
float segmentTwist(float time, int segment);

// The row from four copies behind the origin to five ahead, env-mapped. Lighting and culling are the
// caller's.
void drawTunnelSegments(Demo& demo, float time);
