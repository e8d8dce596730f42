#include "production/pictures/lanterns.h"

#include "production/kit/picture/noise.h"
#include "production/kit/picture/shapes.h"
#include "production/pictures/leaded.h"
#include "production/shared/atlas.h"

using namespace picture;
using atlas::Cells;

namespace {

// A lantern's glass, from its rim inwards, the lines of light that it is leaded with, and its lamp.
struct Glass {
    Rgba rim, pane, line, accent, lamp, dusk;
};
const Glass glasses[atlas::hull::lanterns] = {
    {opaque(0.06f, 0.02f, 0.20f), opaque(0.42f, 0.04f, 0.42f), light(1, 0.62f, 0.10f), light(0.20f, 0.75f, 1),
     light(1, 0.55f, 0.12f), light(0.26f, 0.01f, 0.52f)},
    {opaque(0.10f, 0.01f, 0.22f), opaque(0.45f, 0.03f, 0.40f), light(0.85f, 0.30f, 1), light(1, 0.5f, 0.2f),
     light(1, 0.40f, 0.55f), light(0.05f, 0.12f, 0.45f)},
    {opaque(0.00f, 0.06f, 0.20f), opaque(0.02f, 0.25f, 0.50f), light(0.15f, 0.85f, 1), light(0.75f, 0.4f, 1),
     light(0.6f, 0.9f, 1), light(0.20f, 0.05f, 0.50f)},
    {opaque(0.20f, 0.03f, 0.03f), opaque(0.55f, 0.12f, 0.02f), light(1, 0.50f, 0.08f), light(1, 0.8f, 0.3f),
     light(1, 0.7f, 0.25f), light(0.40f, 0.02f, 0.20f)},
};

// Half of a lobe of a bell, seen as a disc: `turn` is 0 on a rib and 1 in the middle between two, `r` 0 in
// the middle and 1 at the rim.
constexpr float lobe = pi / 8;
Point placeOf(float turn, float r, float from) {
    const float angle = std::fabs(turn - from) * lobe;
    return {r * std::cos(angle), r * std::sin(angle)};
}
// The distance to the outline of a pointed leaf along x.
float leaf(Point p, float from, float to, float half) {
    const float y = std::fabs(p.y);
    if (p.x <= from || p.x >= to) return length(Point{p.x - (p.x <= from ? from : to), y});
    const auto breadth = [&](float x) {
        return half * std::sin(pi * std::pow(unit((x - from) / (to - from)), 0.8f));
    };
    const float slope = (breadth(p.x + 0.002f) - breadth(p.x - 0.002f)) / 0.004f;
    return (y - breadth(p.x)) / std::sqrt(1 + slope * slope);
}

// From below: a rose window about its lamp.
Rgba insideAt(const Glass& glass, float turn, float r) {
    const Point rib = placeOf(turn, r, 0), gap = placeOf(turn, r, 1), between = placeOf(turn, r, 0.5f);
    Leaded c{mix(glass.pane * 0.7f, glass.rim, smoothstep(0.2f, 0.7f, r))};
    // Violet about the eyes, and behind the arches along the rim.
    c.colour = c.colour + glass.dusk * (0.40f * bell(length(rib - Point{0.70f, 0}), 0.07f) +
                                        0.22f * bell(r - 0.90f, 0.03f));
    // Panes are lit from their inner ends; the nearer row lies over the other.
    const float inner = leaf(rib, 0.17f, 0.56f, 0.075f), outer = leaf(gap, 0.33f, 0.84f, 0.112f),
                heart = leaf(gap, 0.42f, 0.72f, 0.045f);
    const float before = coverage(inner * 200), behind = 1 - before;
    c.colour = mix(c.colour, mix(glass.accent * 0.50f, glass.rim * 0.8f, smoothstep(0.33f, 0.76f, gap.x)),
                   coverage(outer * 200));
    c.line(outer, 0.008f, mix(glass.line, glass.accent, 0.7f), 0.9f * behind);
    c.line(heart, 0.005f, glass.accent, 0.55f * behind, 0.02f);
    c.colour =
        mix(c.colour, mix(glass.lamp * 0.9f, glass.pane * 0.6f, smoothstep(0.17f, 0.50f, rib.x)), before);
    c.line(inner, 0.009f, glass.line);
    c.line(leaf(rib, 0.24f, 0.46f, 0.030f), 0.005f, glass.line, 0.6f, 0.02f);
    // Tracery: an eye before each petal, canals out to the rim, and a row of arches along it.
    const float open = smoothstep(0.0f, 0.02f, outer);
    c.line(length(rib - Point{0.70f, 0}) - 0.050f, 0.007f, glass.line, 0.9f);
    c.line(length(rib - Point{0.70f, 0}), 0.022f, glass.lamp, 0.9f, 0.02f);
    c.line(std::fmax(std::fabs(rib.y), 0.765f - r), 0.005f, glass.line,
           0.7f * open * smoothstep(0.93f, 0.88f, r), 0.02f);
    c.line(std::fmax(std::fabs(between.y), 0.86f - r), 0.0045f, glass.accent,
           0.5f * open * smoothstep(0.93f, 0.88f, r), 0.02f);
    const float lancet = leaf(between, 0.62f, 0.86f, 0.040f);
    c.colour = mix(c.colour, mix(glass.lamp * 0.7f, glass.dusk * 0.5f, smoothstep(0.64f, 0.80f, between.x)),
                   open * coverage(lancet * 200));
    c.line(lancet, 0.005f, mix(glass.line, glass.accent, 0.35f), 0.7f * open, 0.02f);
    const float arch = std::fabs(std::remainder(turn * 2, 1.0f));  // 1/2 on a foot
    c.line(r - 0.90f + 0.16f * arch * arch, 0.006f, glass.line, 0.85f, 0.025f);
    c.line(length(placeOf(turn, r, std::round(turn * 2) / 2) - Point{0.935f, 0}), 0.012f, glass.accent, 0.9f,
           0.02f);
    c.line(r - 0.965f, 0.005f, glass.line, 0.7f, 0.02f);
    c.line(r - 0.99f, 0.010f, glass.line);
    c.line(r - 0.155f, 0.008f, glass.line, 0.9f, 0.03f);
    c.line(r - 0.05f, 0.05f, glass.lamp, 1, 0.08f);
    return c.shown();
}

// The great one from above: petals about its lamp, whose light fills the glass, and canals out to a lit rim.
Rgba greatAt(const Glass& glass, float turn, float r) {
    const Point rib = placeOf(turn, r, 0), gap = placeOf(turn, r, 1);
    Leaded c{glass.rim * mix(0.7f, 0.3f, smoothstep(0.5f, 0.75f, r))};
    c.colour = c.colour + glass.pane * (0.8f * bell(r, 0.36f)) + glass.lamp * (0.35f * bell(r, 0.16f)) +
               glass.dusk * (0.12f * bell(r - 0.62f, 0.08f) + 0.6f * smoothstep(0.86f, 0.97f, r));
    const float petal = leaf(rib, 0.09f, 0.46f, 0.066f), side = leaf(gap, 0.20f, 0.58f, 0.060f);
    const float before = coverage(petal * 200), open = smoothstep(0.0f, 0.03f, std::fmin(petal, side));
    c.colour = mix(c.colour, mix(glass.accent * 0.4f, glass.rim * 0.8f, smoothstep(0.2f, 0.55f, r)),
                   coverage(side * 200));
    c.line(side, 0.007f, mix(glass.line, glass.accent, 0.7f), 0.9f * (1 - before));
    c.colour = mix(c.colour, mix(glass.lamp * 0.9f, glass.pane * 0.5f, smoothstep(0.09f, 0.42f, r)), before);
    c.line(petal, 0.009f, glass.line);
    c.line(leaf(rib, 0.17f, 0.38f, 0.026f), 0.005f, glass.line, 0.6f, 0.02f);
    // Canals fork towards the rim; an eye lies in each fork, and arches join them.
    const float fork = 0.5f * smoothstep(0.60f, 0.80f, r);
    const float apart = std::fmin(std::fabs(turn - fork), std::fabs(1 - turn - fork)) * lobe * r;
    c.line(std::fmax(apart, 0.44f - r), 0.005f, mix(glass.line, glass.dusk, smoothstep(0.6f, 0.9f, r)),
           0.8f * open, 0.02f);
    for (const Point& eye : {rib - Point{0.77f, 0}, gap - Point{0.77f, 0}}) {
        c.line(length(eye) - 0.040f, 0.006f, glass.accent, 0.8f, 0.02f);
        c.line(length(eye), 0.018f, glass.lamp, 0.9f, 0.03f);
    }
    const float arch = std::fabs(std::remainder(turn * 2, 1.0f));
    c.line(r - 0.875f + 0.16f * arch * arch, 0.006f, mix(glass.accent, glass.dusk, 0.3f), 0.9f, 0.03f);
    c.line(length(placeOf(turn, r, std::round(turn * 2) / 2) - Point{0.915f, 0}), 0.012f, glass.accent, 0.9f,
           0.03f);
    c.line(r - 0.98f, 0.010f, glass.line, 1, 0.05f);
    c.line(r - 0.02f, 0.04f, glass.lamp, 1, 0.05f);
    return c.shown();
}

// Those that follow, from above: dark glass that their lamp and the crescents about it shine through, fine
// canals, and a lit rim.
Rgba followerAt(const Glass& glass, float turn, float r) {
    const Point rib = placeOf(turn, r, 0);
    Leaded c{glass.rim * mix(1.0f, 0.25f, smoothstep(0.3f, 0.65f, r))};
    c.colour = c.colour + glass.pane * (0.8f * bell(r, 0.34f)) + glass.lamp * (0.5f * bell(r, 0.13f)) +
               glass.dusk * (0.8f * smoothstep(0.70f, 0.97f, r));
    const float crescent = length(rib - Point{0.34f, 0});
    c.colour = c.colour + glass.lamp * (0.35f * smoothstep(0.12f, 0.08f, crescent) * (crescent / 0.12f));
    c.line(std::fmax(std::fabs(crescent - 0.11f), 0.27f - rib.x), 0.014f, glass.line, 1, 0.06f);
    const auto canal = [&](float from, float at, float strength) {
        const float aside = placeOf(turn, r, at).y;
        c.line(std::fmax(aside, from - r), 0.007f, mix(glass.line, glass.accent, 0.5f),
               strength * smoothstep(0.98f, 0.6f, r), 0.025f);
    };
    canal(0.46f, 0, 0.7f);
    canal(0.22f, 1, 0.8f);
    canal(0.58f, 0.5f, 0.4f);
    c.line(r - 0.90f + 0.025f * std::cos(2 * pi * turn), 0.008f, glass.accent, 0.5f, 0.04f);
    c.line(r - 0.975f, 0.020f, glass.line, 1, 0.09f);
    return c.shown();
}

// An arm: from its middle to its edge, and down.
Rgba armAt(const Glass& glass, float across, float down) {
    const float fading = mix(1.0f, 0.5f, down);
    Leaded c{mix(glass.pane * 0.9f, glass.rim, smoothstep(0.1f, 0.8f, down))};
    c.colour = c.colour + mix(glass.lamp, glass.accent * 0.5f, smoothstep(0.0f, 0.7f, down)) *
                              (0.8f * fading * std::exp(-across / 0.30f));
    c.line(0.5f * (0.90f - across), 0.045f, mix(glass.line, glass.accent, smoothstep(0.2f, 0.9f, down)), 1,
           0.09f);
    c.line(0.5f * across, 0.025f, glass.lamp, fading, 0.05f);
    return c.shown();
}

// A thread, from its root to its tip.
Rgba threadAt(const Glass& glass, float along) {
    Rgba c = mix(mix(glass.line, glass.accent, smoothstep(0.35f, 0.7f, along)), glass.rim,
                 smoothstep(0.7f, 1.0f, along));
    c.a = mix(0.62f, 1.0f, smoothstep(0.5f, 0.95f, along));
    return c;
}

// Round half of the sea and back, and down: the surface, which is a bright round window however the sea lies,
// its ripples, the moon over it and what comes down in shafts.
Rgba waterAt(float round, float down, Point place) {
    const float angle = pi * std::pow(down, float(atlas::hull::waterDown)), up = std::cos(angle);
    const float steep = angle / degree;  // from the zenith
    const float shafts =
        bell(round - 0.22f, 0.045f) + 0.7f * bell(round - 0.58f, 0.080f) + 1.2f * bell(round - 1, 0.050f);
    const float reaching = smoothstep(-0.5f, 0.7f, up), clear = smoothstep(0.98f, 0.80f, up);
    Rgba c = mix(opaque(0.010f, 0.008f, 0.038f), opaque(0.017f, 0.030f, 0.118f), smoothstep(-0.8f, 0.8f, up));
    c = c + light(0.045f, 0.125f, 0.265f) * (shafts * reaching * clear) +
        light(0.060f, 0.010f, 0.105f) * (bell(up + 0.55f, 0.3f) * (0.5f + 0.5f * std::cos(4 * pi * round)));
    // About the giant in the deep.
    c = c + light(0.028f, 0.095f, 0.170f) * (bell(round - 0.70f, 0.17f) * bell(steep - 102, 30));
    // The window's edge, and its ripples as they lie on the surface.
    const float edge = 50, inside = smoothstep(edge + 1.5f, edge - 1.5f, steep);
    const float on = std::fmin(angle, 1.2f), away = 2.2f * std::sin(on) / std::cos(on);
    const float ripple =
        ridgedNoise(away * std::cos(pi * round) + 8, away * std::sin(pi * round) + 8, 16, 3, 91);
    const float moon = float(atlas::hull::moonDown) * degree;
    const float near = up * std::cos(moon) + std::sin(angle) * std::sin(moon) * std::cos(pi * (1 - round));
    const float toMoon = 90 - arcSin(std::fmin(near, 1.0f)) / degree;
    c = c + light(0.03f, 0.10f, 0.22f) * (inside + 0.5f * bell(steep - edge, 9)) +
        light(0.25f, 0.50f, 0.70f) * (inside * smoothstep(0.45f, 0.95f, ripple) * smoothstep(12, 30, steep) *
                                      smoothstep(4, 10, toMoon)) +
        light(0.20f, 0.45f, 0.70f) * (0.6f * bell(steep - edge, 1.2f)) +
        light(0.50f, 0.55f, 0.60f) *
            (1.2f * smoothstep(4.2f, 2.0f, toMoon) + 0.5f * bell(toMoon, 6) + 0.3f * bell(toMoon, 11));
    const float grain = (randomAt(int(place.x * 128), int(place.y * 128), 8) - 0.5f) / 200;
    return {unit(c.r + grain), unit(c.g + grain), unit(c.b + grain), 1};
}

}  // namespace

Rgba lanternsAt(Point place) {
    // Where a place lies in a cell, within its bleed; what it draws if it is there.
    const auto drawn = [&](Rgba& seen, const Cells& whole, auto paint) {
        if (place.x < float(whole.left) || place.x > float(whole.right()) || place.y < float(whole.top) ||
            place.y > float(whole.bottom()))
            return false;
        const Cells inner = whole.within(atlas::hull::bleed);
        seen = paint(unit((place.x - float(inner.left)) / float(inner.width)),
                     unit((place.y - float(inner.top)) / float(inner.height)));
        return true;
    };
    Rgba c = opaque(0, 0, 0);
    for (int kind = 0; kind < atlas::hull::lanterns; kind++) {
        const Glass& glass = glasses[kind];
        if (drawn(c, atlas::hull::outside(kind),
                  [&](float x, float y) {
                      return kind == 0 ? greatAt(glass, x, y) : followerAt(glass, x, y);
                  }) ||
            drawn(c, atlas::hull::inside(kind), [&](float x, float y) { return insideAt(glass, x, y); }) ||
            drawn(c, atlas::hull::arm(kind), [&](float x, float y) { return armAt(glass, x, y); }) ||
            drawn(c, atlas::hull::thread(kind), [&](float x, float) { return threadAt(glass, x); }))
            return c;
    }
    drawn(c, atlas::hull::water, [&](float x, float y) { return waterAt(x, y, place); });
    return c;
}
