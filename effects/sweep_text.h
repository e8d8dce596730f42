// `SweepText`: a picture of lettering that a soft edge reveals and hides as it sweeps up and down, with faint
// rays from the edge towards the viewer. The picture covers -100 to 100 in x and y of the plane z = 0.
#pragma once

#include <cstdint>

#include "effects/effect_base.h"

struct SweepText : EffectBase {
    const char* textureKey;  // not owned

    SweepText(Demo* demo, const char* textureKey);
    // Kept: the same key as a number the size of a pointer. Only a table of numbers would notice if it went.
    SweepText(Demo* demo, std::uintptr_t textureKey);

    // Leaves the depth test and blending off.
    void draw() override;
    // A hard edge instead: the picture down to `row` + `offset` (0 the top, 1 the bottom) at opacity `alpha`,
    // and the rays of that one row at half of it.
    void drawRow(float row, float offset, float alpha);
};
