#include "production/pictures/firebird.h"

#include "production/kit/picture/shapes.h"
#include "production/pictures/leaded.h"
#include "production/shared/atlas.h"

using namespace picture;
using atlas::Cells;

namespace {

const Rgba gold = light(1, 0.50f, 0.03f), ember = light(1, 0.22f, 0.02f), cream = light(1, 0.80f, 0.36f),
           turquoise = light(0.12f, 1.0f, 0.92f), night = opaque(0.020f, 0.006f, 0.040f);

// A feather: the flame along its shaft, the tone of its back, its edge, its barbs, and how wide half of it is
// against its length; whether an eye lies before its tip. Backs lie in the dark, where orange and gold would
// be brown: only scarlet, crimson and blue keep their hue there, and blue is next to no light of a flash.
struct Feather {
    Rgba flame, back, edge, barb;
    float breadth;
    int barbs;
    bool eye;
};
const Feather feathers[atlas::hull::feathersCount] = {
    {opaque(1.00f, 0.07f, 0.09f), opaque(1.00f, 0.02f, 0.10f), gold, ember, 0.10f, 12, false},
    {opaque(0.75f, 0.03f, 0.11f), opaque(0.85f, 0.01f, 0.16f), gold, ember, 0.13f, 10, true},
    {opaque(1.00f, 0.42f, 0.01f), opaque(0.13f, 0.12f, 1.00f), gold, gold, 0.22f, 5, false},
    {opaque(0.02f, 0.62f, 0.70f), opaque(0.02f, 0.30f, 0.90f), turquoise, turquoise, 0.30f, 4, false},
    {opaque(0.80f, 0.05f, 0.08f), opaque(1.40f, 0.02f, 0.14f), gold, ember, 0.09f, 14, true},
    {opaque(1.00f, 0.12f, 0.04f), opaque(1.00f, 0.02f, 0.10f), gold, gold, 0.12f, 8, true},
};

// Opaque night between lines of light, which the corridor's gleam on its backs makes brighter there.
Rgba featherAt(const Feather& feather, float along, float across, bool back) {
    Leaded c{night};
    const float flame = smoothstep(0.06f, -0.06f, across - 0.74f * smoothstep(0.85f, 0.35f, along)) *
                        smoothstep(0.85f, 0.35f, along);
    // A back is one full tone up to a dark seam, and next to no light within: what is pale there would veil
    // it.
    if (back)
        c.colour = c.colour + feather.back * (0.66f * smoothstep(0.78f, 0.60f, across) *
                                              mix(0.55f, 1.0f, smoothstep(0.05f, 0.5f, across)));
    else
        c.colour = c.colour + feather.flame * (flame * 0.60f);
    const Point eye = {(along - 0.82f) / feather.breadth, across};
    const float open = feather.eye ? smoothstep(0.68f, 0.76f, length(eye)) : 1;
    const float barb = std::remainder(along * feather.barbs - across * 0.9f, 1.0f) / feather.barbs;
    c.line(barb / feather.breadth, 0.028f, feather.barb,
           (back ? 0.0f : 0.35f) * open * smoothstep(0.05f, 0.3f, across), 0.004f);
    if (feather.eye) {
        const float r = length(eye);
        c.colour = mix(c.colour, opaque(0.0f, 0.03f, 0.07f), smoothstep(0.70f, 0.64f, r));
        c.line(r - 0.64f, 0.06f, gold, 1, 0.01f);
        c.line(r - 0.36f, 0.13f, turquoise, 1, 0.02f);
        c.line(r, 0.16f, cream, 1, 0.02f);
    }
    // Where it is thin as a stalk, its lines are one, and a sheaf of them would be a blaze.
    const float broad =
        feather.breadth < 0.13f && feather.eye ? smoothstep(0.0f, 0.5f, along) * 0.8f + 0.2f : 1;
    c.line(across, mix(0.13f, 0.06f, along) * (back ? 0.6f : 1.0f),
           mix(cream, feather.edge, smoothstep(0.2f, 0.7f, along)), open * broad * (back ? 0.35f : 1.0f),
           0.01f);
    // Its rim is the bird's outline, in front white-hot towards its tip.
    c.line(across - 0.89f, mix(0.08f, 0.13f, along),
           mix(feather.edge, cream, back ? 0 : smoothstep(0.5f, 1.0f, along)),
           broad * mix(0.6f, 1.0f, along) * (back ? 1.15f : 1.0f), 0.01f);
    c.colour = c.colour * (back ? 0.56f : 0.86f);
    return c.shown();
}

// Scales, each lit at its edge, in rows from the beak on; the brow runs by the eye, and the belly glows.
Rgba bodyAt(float around, float along) {
    const float rows = 26, columns = 5;
    const float row = along * rows, k = std::floor(row);
    Leaded c{mix(opaque(0.0f, 0.05f, 0.10f), opaque(0.55f, 0.03f, 0.06f), smoothstep(0.25f, 0.75f, around))};
    c.colour = c.colour * mix(0.5f, 1.0f, 0.5f + 0.5f * std::cos(along * 9));
    float nearest = 9;
    for (int i = 0; i < 2; i++) {
        const float at = k - float(i), shift = 0.5f * std::fabs(std::remainder(at, 2.0f));
        const float x = std::remainder(around * columns - shift, 1.0f), y = row - at - 0.35f;
        const float r = std::sqrt(x * x * 2.6f + y * y * 0.8f);
        if (y > -0.35f) nearest = std::fmin(nearest, std::fabs(r - 0.8f));
    }
    c.line(nearest, 0.10f, mix(turquoise, gold, smoothstep(0.2f, 0.6f, around)), 1, 0.02f);
    // Its back lies in the corridor's light.
    c.colour = c.colour * mix(1.0f, 0.75f, smoothstep(0.45f, 0.60f, along));
    return c.shown();
}

Rgba eyeAt(float out) {
    Leaded c{opaque(0.005f, 0.02f, 0.05f)};
    c.line(out - 0.88f, 0.12f, gold, 1, 0.1f);
    c.line(out - 0.50f, 0.14f, ember, 0.9f, 0.1f);
    c.line(out, 0.26f, cream, 1, 0.1f);
    return c.shown();
}

Rgba beakAt(float across, float along) {
    Leaded c{mix(opaque(0.80f, 0.36f, 0.05f), opaque(0.30f, 0.07f, 0.01f), smoothstep(0.0f, 0.9f, across))};
    c.line(across, 0.12f, cream, 0.9f * smoothstep(1.0f, 0.6f, along), 0.10f);
    // The skin at its root, a seam, and a dark tip.
    c.colour = mix(c.colour, opaque(0.45f, 0.30f, 0.02f), smoothstep(0.20f, 0.16f, along));
    c.colour =
        c.colour * (smoothstep(0.0f, 0.03f, std::fabs(along - 0.20f)) * smoothstep(1.0f, 0.55f, along));
    return c.shown();
}

}  // namespace

Rgba firebirdAt(Point place) {
    const auto placeIn = [&](const Cells& cells) {
        const Cells inner = cells.within(atlas::hull::bleed);
        return Point{unit((place.x - float(inner.left)) / float(inner.width)),
                     unit((place.y - float(inner.top)) / float(inner.height))};
    };
    const auto lies = [&](const Cells& cells) {
        return place.x >= float(cells.left) && place.x <= float(cells.right()) &&
               place.y >= float(cells.top) && place.y <= float(cells.bottom());
    };
    Rgba c = opaque(0, 0, 0);
    for (int i = 0; i < atlas::hull::feathersCount + atlas::hull::feathersWithBacks; i++) {
        const bool back = i >= atlas::hull::feathersCount;
        const int kind = back ? i - atlas::hull::feathersCount : i;
        const Cells cells = atlas::hull::feather(kind, back);
        if (!lies(cells)) continue;
        const Point p = placeIn(cells);
        c = featherAt(feathers[kind], p.x, p.y, back || kind == atlas::hull::plume);
    }
    if (lies(atlas::hull::body)) {
        const Point p = placeIn(atlas::hull::body);
        c = bodyAt(p.x, p.y);
    } else if (lies(atlas::hull::eye)) {
        c = eyeAt(placeIn(atlas::hull::eye).x);
    } else if (lies(atlas::hull::beak)) {
        const Point p = placeIn(atlas::hull::beak);
        c = beakAt(p.x, p.y);
    }
    c.a = 1;
    return c;
}
