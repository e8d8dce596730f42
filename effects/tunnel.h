// `Tunnel`: an endless tunnel that comes towards the viewer by one segment a beat. Mesh "tunnel".
#pragma once

#include "effects/effect_base.h"

struct Tunnel : EffectBase {
    explicit Tunnel(Demo* demo) : EffectBase(demo) {}

    // Leaves culling off.
    void draw() override;
};
