// `Laser`: twelve laser beams that stand still, six in all directions around either of two points, bouncing
// off the meshes that its user adds.
#pragma once

#include "effects/effect_base.h"
#include "geometry/trace.h"

struct Laser : EffectBase {
    const char* spotTexture;  // key, not owned: the spot where a beam touches a surface
    TraceScene scene;         // empty until meshes are added
    BeamPath path;            // of the beam drawn last; its storage is reused

    Laser(Demo* demo, const char* spotTexture);

    // Makes a loaded mesh something that beams bounce off; it isn't drawn. `matrix` (16 floats, columns as
    // in GL) takes the mesh to the world; nullptr leaves it where it is. Indices count from 0.
    void addMesh(const char* meshKey, const float* matrix);
    void setMeshMatrix(int index, const float* matrix);

    // Leaves culling and lighting off.
    void draw() override;
    // One beam from `origin`, a point of the world, along the unit vector `direction`.
    void drawBeam(const Vec3& origin, const Vec3& direction);
};
