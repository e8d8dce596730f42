// The glow that the picture of reflections "envmap" has beyond a thing: cold on its left and warm on its
// right, in pools that pale up and down, and between them a cold one above and a warm one below. The picture
// paints it; what stands in the hall is shaded so that it throws it back. Directions are of length 1, in the
// viewer's own axes: x to his right, y up, z from what he looks at to him.
#pragma once

#include "production/kit/maths.h"

namespace glow {

constexpr double begins = -0.56, full = -0.84;  // along z

// Strengths of 0..1.
template <class Number>
struct Glow {
    Number beyond;                 // of all of it
    Number cold, warm;             // pools
    Number above, below, between;  // two of them, and how far they reach to the sides
};

template <class Number>
Glow<Number> in(kit::Vector3<Number> direction) {
    const auto [x, y, z] = direction;
    const auto ramp = [](double from, double to, Number at) {
        return kit::smoothstep(Number(from), Number(to), at);
    };
    const auto fading = [](double to, Number k) { return kit::mix(Number(1), Number(to), k); };
    const Number aside = x / (std::hypot(x, y) + Number(1e-4));
    const Number between = 1 - ramp(0.35, 0.9, std::fabs(aside));
    const Number pool = y > 0 ? fading(0.46, ramp(0, 0.38, y)) : fading(0.40, ramp(0, -0.15, y));
    return {ramp(begins, full, z),         pool * ramp(-0.35, -0.9, aside),
            pool * ramp(0.35, 0.9, aside), ramp(0, 0.06, y) * fading(0.15, ramp(0.03, 0.5, y)),
            ramp(0.06, -0.40, y),          between};
}

// Two lamps over the viewer, halves of one disc: a cold one on his side and a warm one beyond. What leans so
// that it throws one back is lit wherever he walks round it, as he turns about the same axis.
template <class Number>
struct Overhead {
    Number cold, warm;  // 0..1
};
template <class Number>
Overhead<Number> overhead(kit::Vector3<Number> direction) {
    const Number strength = kit::smoothstep(Number(0.906), Number(0.951), direction.y),  // 65 to 72 degrees
        beyond = kit::smoothstep(Number(0.04), Number(-0.04), direction.z);
    return {strength * (1 - beyond), strength * beyond};
}

}  // namespace glow
