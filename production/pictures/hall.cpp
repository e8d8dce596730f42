// The hall's lights have next to no red and double what they find within a narrow cone, so that these
// pictures are deep, and warm ones are all but red. Each is one half of what is seen, from its middle to the
// right.
#include "production/pictures/hall.h"

#include "production/kit/picture/noise.h"
#include "production/kit/picture/shapes.h"
#include "production/shared/atlas.h"
#include "production/shared/hall_plan.h"

using namespace picture;

namespace {

constexpr float breadth = 393, height = float(hall::wallHeight);  // of a quarter's half

Rgba lines(float distance, float width, Rgba colour) {
    return colour * smoothstep(width * 0.5f + 0.9f, width * 0.5f - 0.9f, std::fabs(distance));
}
Rgba field(float distance, float softness, Rgba colour) {
    return colour * smoothstep(softness, -softness, distance);
}

// Behind the colossus: a halo at its head.
Rgba halo(float x, float y) {
    constexpr float haloHeight = 288, size = 0.98f;
    const float r = std::hypot(x, y - haloHeight) / size;
    const float angle = arcTan(y - haloHeight, x);
    Rgba c = opaque(0.030f, 0.042f, 0.060f) + light(0.04f, 0.06f, 0.08f) * bell(y - haloHeight, 150);
    c = c + field(r - 150, 2, light(0.05f, 0.065f, 0.08f)) + light(0.16f, 0.20f, 0.24f) * std::exp(-r / 60);
    c = c + lines(r - 152, 12, light(0.75f, 0.72f, 0.72f)) + lines(r - 176, 3, light(0.40f, 0.44f, 0.48f));
    c = c + lines(r - 120, 1.5f, light(0.20f, 0.24f, 0.28f));
    const float ray = std::pow(0.5f + 0.5f * std::cos(angle * 36), 6.0f);
    c = c + light(0.16f, 0.21f, 0.25f) * (ray * smoothstep(184, 190, r) * smoothstep(300, 190, r));
    return c;
}

// Behind the ship, round the sun that hangs there: its glow and a red evening. The sun is painted too, behind
// the one that hangs: while the hall fades in, its walls and floor are all that is seen of it.
Rgba evening(float x, float y) {
    const float r = std::hypot(x, y - 308);
    Rgba c =
        mix(opaque(0.50f, 0.07f, 0.02f), opaque(0.09f, 0.012f, 0.07f), smoothstep(0.1f, 0.9f, y / height));
    c = c + light(0.50f, 0.10f, 0.02f) * std::exp(-std::fmax(r - 225, 0.0f) / 60);
    c = mix(c, mix(opaque(0.50f, 0.030f, 0.001f), opaque(0.53f, 0.058f, 0.004f), smoothstep(90, 520, y)),
            smoothstep(226, 222, r));
    c = c + lines(r - 276, 2.5f, light(0.55f, 0.16f, 0.04f)) +
        lines(r - 312, 1.8f, light(0.40f, 0.10f, 0.03f));
    return c;
}

// Behind the pillar: tall windows.
Rgba windows(float x, float y) {
    Rgba c = opaque(0.018f, 0.030f, 0.034f);
    for (int i = 0; i < 4; i++) {
        const float middle = 44 + 84.0f * i, half = 24, top = 440 - 60.0f * i;
        const float arch =
            y > top ? std::hypot(x - middle, (y - top) * 0.7f) - half : std::fabs(x - middle) - half;
        const float foot = 40 - y;
        const float d = std::fmax(arch, foot);
        const Rgba glow = mix(light(0.08f, 0.26f, 0.26f), light(0.46f, 0.56f, 0.60f), smoothstep(60, top, y));
        c = c + field(d, 1.5f, glow * (1 - 0.17f * i));
        c = c + lines(d - 6, 2.2f, light(0.10f, 0.18f, 0.18f));
    }
    return c;
}

// Behind the probes: a planet's ring in violet night.
Rgba planet(float x, float y) {
    const float k = y / height;
    Rgba c = mix(opaque(0.16f, 0.045f, 0.11f), opaque(0.02f, 0.014f, 0.05f), smoothstep(0.0f, 0.8f, k));
    const float r = std::hypot(x, y + 60);
    c = c + field(r - 290, 2,
                  mix(light(0.60f, 0.14f, 0.26f), light(0.07f, 0.02f, 0.08f), smoothstep(295, 180, r)));
    c = c + lines(r - 292, 4, light(0.62f, 0.30f, 0.34f));
    c = c + light(0.24f, 0.08f, 0.13f) * std::exp(-std::fmax(r - 292, 0.0f) / 34) * smoothstep(288, 294, r);
    const int cell = 9;
    const int column = int(x / cell), row = int(y / cell);
    if (r > 310 && randomAt(column, row, 77) > 0.86f) {
        const Point star = {(column + 0.2f + 0.6f * randomAt(column, row, 78)) * cell,
                            (row + 0.2f + 0.6f * randomAt(column, row, 79)) * cell};
        const float size = 0.7f + 1.1f * std::pow(randomAt(column, row, 80), 4.0f);
        c = c +
            light(0.7f, 0.6f, 0.7f) * (bell(length(Point{x, y} - star), size) * randomAt(column, row, 81));
    }
    return c;
}

// On every quarter's wall: lamps at its foot, whose light climbs it, and over all of it the ball's faint
// spots.
Rgba lightOnWall(float x, float y, int quarter) {
    constexpr float pitch = breadth / 3, cell = 30;
    const float aside = std::remainder(x - pitch / 2, pitch), above = std::fmax(y - 30, 0.0f);
    const float fan = bell(aside, 16 + 0.35f * above);
    // Fading towards the next quarter, where light falls otherwise. The evening is bright enough while the
    // hall fades in.
    const float strength = (quarter == 1 ? 0.3f : 1) * smoothstep(breadth, 0.74f * breadth, x);
    Rgba c = light(0.62f, 0.70f, 0.68f) * (std::exp(-above / 70) * (0.20f + 0.60f * fan));
    const int column = int(x / cell), row = int(y / cell);
    if (randomAt(column, row, 90 + quarter) > 0.5f) {
        const Point spot = {(column + 0.25f + 0.5f * randomAt(column, row, 100 + quarter)) * cell,
                            (row + 0.25f + 0.5f * randomAt(column, row, 110 + quarter)) * cell};
        c = c + light(0.62f, 0.70f, 0.74f) * (bell(length(Point{x, y} - spot), 4.0f) *
                                              mix(0.35f, 1.3f, randomAt(column, row, 120 + quarter)));
    }
    return c * strength;
}

// Over the radius (0..1) and half a bay (0..1): rings and spokes.
Rgba floorPlan(float radius, float side) {
    Rgba c = opaque(0.10f, 0.13f, 0.16f) * mix(0.5f, 1.9f, smoothstep(0.2f, 0.9f, radius));
    const float ring = std::fabs(radius * 9 - std::round(radius * 9));
    c = c * smoothstep(0.01f, 0.03f, ring);
    c = c + light(0.42f, 0.20f, 0.05f) * smoothstep(0.93f, 0.96f, side) * smoothstep(0.5f, 0.52f, radius);
    // Where the stage stands, its plan: the risers' edges, and plates between them that pale outwards.
    for (const hall::Terrace& terrace : hall::terraces) {
        const float inwards = float(terrace.radius) / float(hall::wallRadius) - radius;
        if (inwards > 0) c = grey(0.04f) * smoothstep(0.075f, 0.0f, inwards);
        c = c + light(0.08f, 0.09f, 0.10f) * smoothstep(0.006f, 0.003f, std::fabs(inwards));
    }
    c = c + light(0.30f, 0.36f, 0.40f) * smoothstep(0.010f, 0.005f, std::fabs(radius - 0.93f));
    return c;
}

Rgba domePlan(float radius, float side) {
    Rgba c = mix(opaque(0.03f, 0.045f, 0.055f), opaque(0.10f, 0.13f, 0.16f), std::pow(radius, 3.0f));
    const float ring = std::fabs(radius * 7 - std::round(radius * 7));
    c = c * smoothstep(0.015f, 0.04f, ring);
    c = c + light(0.26f, 0.32f, 0.36f) * (smoothstep(0.02f, 0.01f, side) * smoothstep(0.2f, 0.9f, radius));
    return c;
}

// Below the tiles, one to a cell.
Rgba swatchPaint(int number) {
    const Rgba swatches[] = {opaque(0.9f, 0.9f, 0.9f), opaque(0.08f, 0.36f, 1.0f),
                             opaque(1.0f, 0.165f, 0.01f), opaque(0.30f, 0.42f, 0.62f),
                             opaque(0.02f, 0.035f, 0.06f)};
    return number < int(std::size(swatches)) ? swatches[number] : grey(0);
}

}  // namespace

Rgba hallPictures(float x, float y) {
    using namespace atlas::walls;
    constexpr float cell = 64, part = float(tile) * cell;
    const float along = x - float(firstTile) * cell;
    const int column = int(along / part), row = int(y / part);
    const float u = along / part - column, v = 1 - (y / part - row);  // v runs up
    const int which = row * 2 + column;
    if (which > dome) return swatchPaint(int(along / cell));
    const bool onWall = which < atlas::walls::floor;
    const float gain = 1.9f * (onWall ? mix(0.25f, 1, smoothstep(1.0f, 0.72f, u)) : 1);
    if (which == atlas::walls::floor) return floorPlan(u, v) * gain;
    if (which == dome) return domePlan(u, v) * gain;
    constexpr Rgba (*pictures[])(float x, float y) = {windows, evening, planet, halo};
    return pictures[which](u * breadth, v * height) * gain + lightOnWall(u * breadth, v * height, which);
}
