#include "production/pictures/sun.h"

#include "production/kit/picture/shapes.h"
#include "production/sun_layout.h"

using namespace picture;

namespace {

// A line beside a shape's edge, soft enough for the size it is shown at.
float line(float distance, float width) {
    return smoothstep(width / 2 + 0.7f, width / 2 - 0.4f, std::fabs(distance));
}

}  // namespace

Rgba sunSkin(float x, float y) {
    constexpr float ink = 0.05f, skin = 0.60f, bright = 1.0f;
    const Point p = {std::fabs(x), y};
    const float almond = float(sun::toAlmond(x, y)), mouth = float(sun::toMouth(x, y));
    const float rim = float(sun::radius) - length(p);
    float tone = skin;
    // Cheeks, discs within rings; the nose, the lit flank of a wedge with its wing; the brows.
    const float cheek = length(p - Point{38, -13});
    tone = mix(tone, 0.9f, smoothstep(6.5f, 5.0f, cheek));
    tone = mix(tone, ink, line(cheek - 8, 1.8f));
    tone = mix(tone, bright, smoothstep(2.6f, 1.4f, segment(p, {1, 22}, {7, -6})));
    tone = mix(tone, ink, smoothstep(2.8f, 1.6f, segment(p, {0, -10}, {8, -9})));
    const float brow = std::fabs(length(p - Point{20, -2}) - 33);
    if (p.x < 42 && y > 20) tone = mix(tone, ink, smoothstep(2.8f, 1.6f, brow));
    // Lids and lips, with ink beyond them.
    for (const float edge : {almond, mouth}) {
        tone = mix(tone, ink, line(edge - 5.4f, 2.0f));
        tone = mix(tone, bright, smoothstep(4.4f, 3.2f, edge));
    }
    if (sun::toPupil(x, y) < 0 && almond < 0) tone = ink;
    tone = mix(tone, ink, line(rim - 6.0f, 2.0f));
    return opaque(tone, tone * 0.6f, tone * 0.3f);
}
