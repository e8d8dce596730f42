// `Robo`: a robot with a glowing screen, a ring, and a smoky disc of light with rays that rides up and down
// it; a pedestal sinks with the disc. Meshes "block", "robo body", "robo arms", "robo screen", "ring"; shader
// "smoke".
#pragma once

#include "effects/effect_base.h"

struct Robo : EffectBase {
    explicit Robo(Demo* demo) : EffectBase(demo) {}

    // `rise`: height of the disc, 0 to 1 (180 model units). `mode`: exactly 0 is rising (the pedestal, red
    // light), anything else active (no pedestal, green light). Leaves lighting and blending on.
    void drawAt(float rise, float mode) override;
};
