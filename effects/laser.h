// `Laser`: twelve laser beams that stand still, six in all directions around either of two points, bouncing
// off the meshes that its user adds. Not in the show.
#pragma once

#include "effects/beams.h"
#include "effects/effect_base.h"

struct Laser : EffectBase {
    BeamCaster caster;  // its scene is empty until meshes are added

    Laser(Demo* demo, const char* spotTexture);

    // Makes a loaded mesh something that beams bounce off; it isn't drawn. `matrix` (16 floats, columns as
    // in GL) takes the mesh to the world; nullptr leaves it where it is. Indices count from 0.
    void addMesh(const char* meshKey, const float* matrix);
    void setMeshMatrix(int index, const float* matrix);

    // Leaves culling and lighting off.
    void draw() override;
};
