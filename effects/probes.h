// `Probes`: fourteen small machines adrift, each joined by a glowing line to a near neighbour chosen afresh
// every frame. Sets its own camera and lights. Mesh "palikka".
#pragma once

#include "effects/effect_base.h"
#include "effects/glowing_lines.h"
#include "geometry/vec3.h"

constexpr int probeCount = 14;

struct Probes : EffectBase {
    Vec3 positions[probeCount];  // model units
    int32_t links[probeCount];   // the probe that the line of each goes to

    explicit Probes(Demo* demo) : EffectBase(demo) {}

    // Runs the housekeeping twice. Leaves lights 0 and 1 off and the line width at 6.
    void draw() override;

    // Positions at the music's time, then links from the positions.
    void placeProbes();
    void linkProbes();
    void drawProbes();
    void drawLinks(const GlowStroke& stroke);
};
