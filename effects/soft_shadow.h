// `SoftShadow`: a spinning yellow box, and the whole picture blurred into "rtt6" by way of "rtt5": what a
// soft shadow would be laid on the scene from. Mesh "laatikko". Not in the show.
#pragma once

#include "effects/effect_base.h"

struct SoftShadow : EffectBase {
    explicit SoftShadow(Demo* demo) : EffectBase(demo) {}

    // Clears the screen, as the blur pass does.
    void draw() override;
    // The box, under the model-view matrix in force; changes that matrix.
    void drawBox();
};
