// Glass that lines of light are drawn on, as the sea and the firebird wear it.
#pragma once

#include "production/kit/picture/canvas.h"

namespace picture {

// Light over dark glass. Of the halo that the glow makes of all that isn't black, so much shines through as
// alpha lacks of 1: the middles of lines, whatever falls on them.
struct Leaded {
    Rgba colour;
    float core = 0;

    // A line, by its distance: its middle, and what it throws on the glass about it.
    void line(float distance, float width, Rgba own, float strength = 1, float reach = 0.045f) {
        const float d = std::fabs(distance), middle = smoothstep(1.25f * width, width * 0.3f, d);
        colour = colour + own * (strength * (middle + 0.34f * std::exp(-d / (0.7f * reach))));
        core = std::fmax(core, middle * strength);
    }
    Rgba shown() const {
        Rgba c = {unit(colour.r), unit(colour.g), unit(colour.b), mix(1.0f, 0.62f, unit(core))};
        return c;
    }
};

}  // namespace picture
