// `SampleLaser`: a test bench for the beam tracer: one beam from the origin inside one mesh, drawn as a
// textured line. `Demo::controls` 0 and 1 aim it, in turns: around z, and from the z = 0 plane.
#pragma once

#include "effects/effect_base.h"
#include "geometry/trace.h"

struct SampleLaser : EffectBase {
    const char* meshKey;  // not owned: drawn, and what the beam bounces off
    int32_t unused;       // never read
    TraceScene scene;
    BeamPath path;  // of the last draw

    SampleLaser(Demo* demo, const char* meshKey, int32_t unused);

    // Leaves culling on, lighting off and the beam's texture bound.
    void draw() override;
};
