// `SampleLaser`: a test bench for the beam tracer: one beam from the origin inside one mesh, drawn as a
// textured line. Not in the show.
#pragma once

#include "effects/effect_base.h"
#include "geometry/trace.h"

struct SampleLaser : EffectBase {
    const char* meshKey;  // not owned: drawn, and what the beam bounces off
    int32_t unused;       // kept for the order of the arguments; never read
    TraceScene scene;     // empty until the first draw puts the mesh in
    BeamPath path;        // of the last draw

    SampleLaser(Demo* demo, const char* meshKey, int32_t unused);

    // Of the beam, a unit vector: `Demo::controls` 0 turns it about z, 1 raises it out of the plane z = 0,
    // both from 0 to 1.
    Vec3 direction() const;
    // Leaves culling on, lighting off and the beam's texture bound.
    void draw() override;
};
