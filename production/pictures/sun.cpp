#include "production/pictures/sun.h"

#include "production/kit/picture/shapes.h"
#include "production/sun_layout.h"

using namespace picture;

namespace {

// A line beside a shape's edge, soft enough for the size it is shown at.
float line(float distance, float width) {
    return smoothstep(width / 2 + 0.7f, width / 2 - 0.4f, std::fabs(distance));
}

// Lines that fan out from a point, `count` to a turn.
float fan(Point p, Point from, int count, float width) {
    const Point away = p - from;
    const float turn = 2 * float(M_PI) / float(count);
    return line(std::remainder(std::atan2(away.y, away.x), turn) * length(away), width);
}

}  // namespace

Rgba sunSkin(float x, float y) {
    const Point p = {std::fabs(x), y};
    const float almond = float(sun::toAlmond(x, y)), mouth = float(sun::toMouth(x, y));
    const float rim = float(sun::radius) - length(p);
    float tone = 0.20f;
    // Forehead: a fan from between the brows.
    if (y > 26) tone += 0.22f * fan(p, {0, 12}, 24, 2.0f) * smoothstep(8, 11, rim);
    // Cheek, a disc within a ring.
    const float cheek = length(p - Point{37, -14});
    tone = mix(tone, 0.55f, smoothstep(7, 5.5f, cheek));
    tone = mix(tone, 0.45f, line(cheek - 10, 1.6f));
    // Nose: the lit flank of a wedge, its wing and the brow that it runs up into.
    const float wedge = segment(p, {2, 20}, {7, -7});
    tone = mix(tone, 0.75f, smoothstep(2.6f, 1.4f, wedge));
    tone = mix(tone, 0.60f, smoothstep(3.2f, 2.0f, segment(p, {0, -9}, {8, -7})));
    const float brow = std::fabs(length(p - Point{20, -2}) - 32);
    if (p.x < 40 && y > 20) tone = mix(tone, 0.70f, smoothstep(2.8f, 1.6f, brow));
    // Lids and lips, with ink beyond them.
    for (const float edge : {almond, mouth}) {
        tone = mix(tone, 0.05f, line(edge - 5.2f, 1.8f));
        tone = mix(tone, 0.95f, smoothstep(4.2f, 3.0f, edge));
    }
    if (sun::toPupil(x, y) < 0 && almond < 0) tone = 0.30f;
    // Chin, and a beaded rim.
    tone = mix(tone, 0.55f, smoothstep(3.2f, 2.0f, segment(p, {0, -46}, {6, -45})));
    tone = mix(tone, 0.04f, line(rim - 6.5f, 1.6f));
    tone = mix(tone, 0.75f, smoothstep(5.2f, 4.2f, rim));
    tone = mix(tone, 0.15f, smoothstep(5.2f, 4.2f, rim) * fan(p, {}, 56, 2.4f));
    return opaque(tone, tone * 0.6f, tone * 0.3f);
}
