// `FakeStripes`: a tumbling model, lit from both sides, cut into horizontal stripes by the alpha of a texture
// that is projected along the eye's vertical axis.
#pragma once

#include "effects/effect_base.h"

struct FakeStripes : EffectBase {
    const char* meshKey;        // not owned
    const char* stripeTexture;  // key, not owned; what its alpha leaves out of the model is a hole

    FakeStripes(Demo* demo, const char* meshKey, const char* stripeTexture);

    // The model's place on a circle around the origin: `angle` in radians, `radius` in model units. Leaves
    // two-sided lighting on, lighting, blending and the alpha test off.
    void drawAt(float angle, float radius) override;
};
