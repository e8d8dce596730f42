// The pictures that models wear, on a grid of 16 by 16 cells. "shiptex", for all that moves: plates, each
// stamped by a table of parts, and among them the heap's houses and the sea. "cubetex": the tunnel's panels,
// walls, frame and rings, and the hall's dome.
#include <functional>
#include <vector>

#include "production/kit/picture/noise.h"
#include "production/kit/picture/relief.h"
#include "production/pictures/firebird.h"
#include "production/pictures/houses.h"
#include "production/pictures/lanterns.h"
#include "production/pictures/pictures.h"
#include "production/shared/atlas.h"

using namespace picture;
using atlas::Cells;

namespace {

constexpr int size = 1024;
constexpr float cell = size / 16.0f;

// Where a part lies, in pixels.
struct Field {
    Point middle, half;

    explicit Field(const Cells& cells) : half{float(cells.width) * cell / 2, float(cells.height) * cell / 2} {
        middle = Point{float(cells.left) * cell, float(cells.top) * cell} + half;
    }
    Extent with(float margin) const { return {middle, half + Point{margin, margin}}; }
    bool lying() const { return half.x > half.y; }
    float thinner() const { return std::fmin(half.x, half.y); }
};

// The picture's own metal, of a brightness.
using Metal = Rgba (*)(float tone);

// A part is stamped into what lies below it.
using Stamp = std::function<void(Relief& relief, Metal metal, const Field& field)>;
struct Row {
    Cells at;
    Stamp stamp;
};

const Rgba warm = opaque(0.86f, 0.46f, 0.13f);
const Rgba warmLight = light(1.0f, 0.58f, 0.20f), coolLight = light(0.50f, 0.70f, 1.0f);
// Enamel, a little warm.
Rgba enamel(float tone) {
    return opaque(tone * 1.06f, tone * 0.98f, tone * 0.88f);
}
// Of the satellites' wings.
Rgba cells(float tone) {
    return opaque(tone * 0.10f, tone * 0.46f, tone);
}

// Of a lamp's channel. The hall's lights have next to no red, so that what is teal here shines there, and is
// only steel under the tunnel's white ones.
const Rgba steel = opaque(0.076f, 0.134f, 0.152f);

float cutBox(Point p, Point half, float cut) {
    const float slant = (std::fabs(p.x) - half.x + std::fabs(p.y) - half.y + cut) * 0.70710678f;
    return std::fmax(box(p, {}, half), slant);
}

// Raised, its corners cut by so many cells; of a metal of its own, or the picture's.
Stamp plate(float tone, float cut, Metal own = nullptr) {
    return [=](Relief& relief, Metal metal, const Field& field) {
        const auto shape = [&](Point p) { return cutBox(p, field.half - Point{2, 2}, cut * cell); };
        tint(relief, field.with(3), (own ? own : metal)(tone), 1, shape);
        raise(relief, field.with(3), 5, 5, shape);
    };
}

// Sunk into what lies below.
Stamp inset(float tone) {
    return [=](Relief& relief, Metal metal, const Field& field) {
        const auto shape = [&](Point p) { return box(p, {}, field.half, 7); };
        tint(relief, field.with(3), metal(tone), 1, shape);
        raise(relief, field.with(3), -4, 4, shape);
    };
}

// Sunk, with slats.
Stamp vent(float tone, int slats) {
    return [=](Relief& relief, Metal metal, const Field& field) {
        const Point half = field.half;
        const Extent extent = field.with(0);
        tint(relief, extent, metal(tone), 1, [&](Point p) { return box(p, {}, half, 6); });
        raise(relief, extent, -9, 3, [&](Point p) { return box(p, {}, half, 6); });
        const float pitch = half.y * 2 / slats;
        raise(relief, extent, 8, pitch * 0.5f, [&](Point p) {
            const float slat = std::remainder(p.y + half.y + 4 * size - pitch / 2, pitch);
            return std::fmax(std::fabs(slat) - pitch * 0.22f, box(p, {}, half - Point{7, 3}, 4));
        });
    };
}

// A row along the longer side.
Stamp bolts(int count) {
    return [=](Relief& relief, Metal, const Field& field) {
        constexpr float radius = 5;
        for (int i = 0; i < count; i++) {
            const float k = 2.0f * i / (count - 1) - 1;
            const Point along = field.lying() ? Point{k * field.half.x, 0} : Point{0, k * field.half.y};
            const Extent extent = {field.middle + along, {radius + 4, radius + 4}};
            raise(relief, extent, -1.2f, 2, [&](Point p) { return circle(p, {}, radius + 1.5f); });
            raise(relief, extent, 3.0f, 3, [&](Point p) { return circle(p, {}, radius - 0.5f); });
        }
    };
}

Stamp groove() {
    return [](Relief& relief, Metal, const Field& field) {
        raise(relief, field.with(3), -4, 4, [&](Point p) { return box(p, {}, field.half, field.thinner()); });
    };
}

// A raised tube.
Stamp rail(float tone) {
    return [=](Relief& relief, Metal metal, const Field& field) {
        const float thick = field.thinner();
        tint(relief, field.with(3), metal(tone), 1, [&](Point p) { return box(p, {}, field.half); });
        raise(relief, field.with(3), thick * 0.9f, thick * 1.6f,
              [&](Point p) { return box(p, {}, field.half) + thick * 0.5f; });
    };
}

// A strip of light in a channel.
Stamp lamp(Rgba glow, float strength) {
    return [=](Relief& relief, Metal, const Field& field) {
        const Point half = field.half, channel = half + Point{9, 9};
        const Extent extent = field.with(9 + 26);
        tint(relief, extent, steel, 1, [&](Point p) { return box(p, {}, channel, 9); });
        raise(relief, extent, -7, 4, [&](Point p) { return box(p, {}, channel, 9); });
        // Thin bars across it, so that a broad lamp is no blank.
        shine(relief, extent, glow * strength, 26, [&](Point p) {
            const float along = field.lying() ? p.x : p.y;
            const float bar = 2.5f - std::fabs(std::remainder(along + 8 * cell - cell * 0.85f, cell * 1.7f));
            return std::fmax(box(p, {}, half, std::fmin(field.thinner(), 14.0f)), bar);
        });
    };
}

// A flat field of the one warm paint.
Stamp paintwork() {
    return [](Relief& relief, Metal, const Field& field) {
        tint(relief, field.with(3), warm, 0.85f, [&](Point p) { return box(p, {}, field.half, 3); });
    };
}

// A ramp of a colour, from a shade on the left to its full tone.
Stamp ramp(Rgba colour) {
    return [=](Relief& relief, Metal, const Field& field) {
        visitWrapped(relief, field.with(3), [&](size_t i, Point p) {
            relief.colours[i] = colour * mix(0.12f, 1.0f, unit(0.5f + 0.5f * p.x / field.half.x));
        });
    };
}

// Later rows lie on earlier ones.
const std::vector<Row> hullRows = {
    {atlas::hull::pale, plate(0.34f, 0.7f)},
    {atlas::hull::dark, plate(0.18f, 0.3f)},
    {atlas::hull::striped, plate(0.24f, 0.3f, enamel)},
    {{13, 3, 3, 6}, plate(0.14f, 0.3f)},
    {{0, 5, 3, 6}, plate(0.16f, 0.3f)},
    {atlas::hull::wing, plate(1, 0, cells)},
    {{0, 11, 3, 5}, plate(0.41f, 0.4f)},
    {{6.4, 1.3, 3.2, 0.28}, rail(0.23f)},
    {{6.4, 2, 3.2, 0.28}, rail(0.23f)},
    {{0.6, 2.9, 3.4, 1.4}, inset(0.07f)},
    {{0.6, 8, 1.8, 2.2}, inset(0.06f)},
    {{0.5, 12, 2, 3.2}, inset(0.28f)},
    {{0.8, 3.1, 3, 1}, vent(0.06f, 5)},
    {{0.5, 6, 2, 0.12}, groove()},
    {{0.5, 6.4, 2, 0.12}, groove()},
    {{0.5, 6.8, 2, 0.12}, groove()},
    {atlas::hull::stripe, paintwork()},
    {{10.04, 1.55, 5.92, 0.16}, paintwork()},
    {atlas::hull::warmLamp, lamp(warmLight, 0.85f)},
    {atlas::hull::coolLamp, lamp(coolLight, 0.8f)},
    {{0.7, 0.6, 4.2, 0.01}, bolts(6)},
    {{10.5, 2.6, 5, 0.01}, bolts(7)},
    {{10.1, 13.2, 5.8, 0.1}, groove()},
    {{12.6, 9.1, 0.1, 6.8}, groove()},
    // The hall's: its lamp has less than half as much red as green and blue.
    {atlas::hull::lacquer(atlas::hull::ivory), ramp(opaque(1, 0.42f, 0.44f))},
    {atlas::hull::lacquer(atlas::hull::orange), ramp(opaque(1, 0.13f, 0.01f))},
    {atlas::hull::lacquer(atlas::hull::petrol), ramp(opaque(0.10f, 0.34f, 0.44f))},
    {atlas::hull::lacquer(atlas::hull::violet), ramp(opaque(1, 0.07f, 0.50f))},
    {atlas::hull::lacquer(atlas::hull::blue), ramp(opaque(0.06f, 0.13f, 0.85f))},
};
// Light over dark ground, in model units: a line by its distance.
Rgba thinLine(float distance, float width, Rgba own) {
    return own * smoothstep(0.7f * width, 0.3f * width, std::fabs(distance));
}
const Rgba wallBlue = light(0.02f, 0.30f, 1.0f), wallCyan = light(0.10f, 0.75f, 1.0f),
           lampGold = light(1.0f, 0.52f, 0.12f);

Canvas plated(Metal metal, const std::vector<Row>& rows, const Weather& weather) {
    Relief relief(size, metal(0.10f));
    for (const Row& row : rows) row.stamp(relief, metal, Field(row.at));
    return lit(relief, weather);
}

// A bay, `x` across and `z` along it from its middle, in model units: a rose window between two pointed
// arches.
constexpr float bayHalf = 79, bayLong = 116;
Rgba bayAt(float x, float z) {
    constexpr float petals = 8, sector = 2 * pi / petals;
    const float r = std::hypot(x, z), turn = arcTan(x, z);
    const Point petal = turned({z, x}, -sector * std::round(turn / sector)),
                gap = turned({z, x}, -sector * (std::floor(turn / sector) + 0.5f));
    // The arches, with stone in the shade of their edges.
    const float arch = std::hypot(std::fabs(x) + 40, z) - 117;
    Rgba seen = light(0, 0.01f, 0.07f) * (smoothstep(0.0f, -1.0f, arch) * smoothstep(-30.0f, 0.0f, arch));
    seen = seen + thinLine(arch, 3.5f, wallBlue * 0.5f);
    seen = seen +
           lampGold * (0.8f * smoothstep(1.0f, -1.0f, circle({std::fabs(x), std::fabs(z)}, {64, 100}, 4.5f)));
    // The window, of deep blue glass.
    seen = seen * smoothstep(58.0f, 59.0f, r);
    const float leaf = std::hypot(petal.x - 36, petal.y * 1.9f) - 17;
    seen = seen + light(0, 0.02f, 0.12f) * (smoothstep(58.0f, 57.0f, r) * smoothstep(10.0f, 58.0f, r));
    seen = seen +
           mix(light(0.42f, 0.13f, 0.01f), light(0.01f, 0.08f, 0.32f), smoothstep(26.0f, 46.0f, petal.x)) *
               (smoothstep(0.5f, -0.5f, leaf) * smoothstep(10.0f, 30.0f, petal.x));
    seen = seen + thinLine(leaf, 3, wallCyan * 0.5f) + thinLine(r - 59, 4.5f, wallCyan * 0.6f);
    seen = seen + lampGold * (0.7f * smoothstep(1.0f, -1.0f, circle(gap, {48, 0}, 3.5f)));
    seen = seen + thinLine(r - 11, 4, lampGold * 0.8f);
    return seen + thinLine(bayHalf - std::fabs(x), 4, wallBlue * 0.4f);
}

// A dark bay: galleries with lamps in their windows, in rows across.
Rgba galleryAt(float x, float z) {
    Rgba seen = opaque(0, 0, 0);
    const float pitch = 29, row = std::floor(z / pitch), within = z - (row + 0.5f) * pitch;
    const float column = std::floor(x / 14), aside = x - (column + 0.5f) * 14;
    const float kind = randomAt(int(row) + 40, int(column) + 40, 5);
    const float window = box({aside, within}, {}, {3.2f, 7.5f}, 3.2f);
    if (std::fabs(x) < 56)
        seen = seen + mix(light(0, 0.02f, 0.10f), kind > 0.9f ? wallCyan : lampGold, kind > 0.75f ? 1 : 0) *
                          smoothstep(1.0f, -1.0f, window);
    seen = seen + thinLine(bayHalf - std::fabs(x), 4, wallBlue * 0.4f);
    return seen;
}

// A rib, over a column's breadth and its own: lamps between two lines, on a lattice.
constexpr float ribHalf = 24.5f, columnAtRib = 149;
Rgba ribAt(float x, float z) {
    const float third = columnAtRib / 3, aside = x - third * std::round(x / third);
    Rgba seen = light(0, 0.003f, 0.02f) * smoothstep(ribHalf, 0.0f, std::fabs(z)) + opaque(0, 0, 0);
    seen = seen + thinLine(ribHalf - 2.5f - std::fabs(z), 4, wallCyan * 0.5f);
    seen = seen + lampGold * (0.8f * smoothstep(1.0f, -1.0f, box({aside, z}, {}, {10, 3.2f}, 3.2f)));
    return seen;
}

// The hall's dome: over the radius (0..1), and half a bay (0..1).
Rgba domeAt(float radius, float side) {
    const float ring = std::fabs(radius * 7 - std::round(radius * 7));
    const Rgba c = mix(opaque(0.03f, 0.045f, 0.055f), opaque(0.10f, 0.13f, 0.16f), std::pow(radius, 3.0f)) *
                   smoothstep(0.015f, 0.04f, ring);
    return (c +
            light(0.26f, 0.32f, 0.36f) * (smoothstep(0.02f, 0.01f, side) * smoothstep(0.2f, 0.9f, radius))) *
           1.9f;
}

}  // namespace

// Twice as fine as the walls, for the sake of houses and sea, which are painted anew at each place.
void makeHull(const char* path) {
    constexpr int fine = 2;
    constexpr float pixel = 1 / (fine * cell);
    const auto lies = [](Point place, const Cells& cells) {
        return box(place, {float(cells.middleX()), float(cells.middleY())},
                   {float(cells.width) / 2, float(cells.height) / 2}) < 0;
    };
    const auto smoothly = [](Rgba (*seenAt)(Point), Point place) {
        Rgba sum;
        for (const float x : {-0.375f, -0.125f, 0.125f, 0.375f})
            for (const float y : {-0.375f, -0.125f, 0.125f, 0.375f})
                sum = sum + seenAt(place + Point{x, y} * pixel) * 0.0625f;
        return sum;
    };
    const Canvas plates = plated(enamel, hullRows, {0.14f, 0.55f, 0.5f, 900});
    Canvas canvas(fine * size, fine * size);
    paint(canvas, [&](float x, float y, Rgba) {
        const Point place = Point{x, y} * pixel;
        if (lies(place, atlas::hull::sea)) {
            const Rgba c = smoothly(lanternsAt, place);
            return Rgba{c.r * c.a, c.g * c.a, c.b * c.a, c.a};
        }
        for (const Cells& cells : {atlas::hull::feathers, atlas::hull::plumage})
            if (lies(place, cells)) return smoothly(firebirdAt, place);
        for (const Cells& cells : atlas::hull::houses)
            if (lies(place, cells)) return smoothly(housesAt, place);
        Rgba c = plates.at(int(x / fine), int(y / fine));
        c.a = 1;
        return c;
    });
    saveRgba(canvas, path, Rows::TopFirst);
}

// The tunnel's bays, and below them its ribs' paint and its black, in the left half, and the hall's dome in
// the right one. The tunnel's alpha is 0, the ship's is 1: by that "distort"
// tells the ship from what lies behind it.
void makeWalls(const char* path) {
    const auto solid = [](Rgba seen) { return Rgba{seen.r, seen.g, seen.b, 1}; };
    const auto clear = [](Rgba seen) { return Rgba{seen.r, seen.g, seen.b, 0}; };
    Canvas canvas(size, size, grey(0));
    const auto within = [](float x, float y, const Cells& cells, Point half) {
        return Point{(x / cell - float(cells.middleX())) / float(cells.width) * 2 * half.x,
                     (float(cells.middleY()) - y / cell) / float(cells.height) * 2 * half.y};
    };
    paint(canvas, [&](float x, float y, Rgba) {
        constexpr Cells dome = atlas::walls::dome;
        if (x >= float(dome.left) * cell)
            return solid(domeAt((x / cell - float(dome.left)) / float(dome.width),
                                unit(1 - y / cell / float(dome.height))));
        Rgba seen = opaque(0, 0, 0);
        for (const float dx : {-0.375f, -0.125f, 0.125f, 0.375f})
            for (const float dy : {-0.375f, -0.125f, 0.125f, 0.375f}) {
                const float u = x + dx, v = y + dy;
                Point p;
                if (v >= float(atlas::walls::black.top) * cell) continue;
                if (v >= float(atlas::walls::rib.top) * cell)
                    p = within(u, v, atlas::walls::rib, {columnAtRib / 2, ribHalf}),
                    seen = seen + ribAt(p.x, p.y) * 0.0625f;
                else if (u >= float(atlas::walls::gallery.left) * cell)
                    p = within(u, v, atlas::walls::gallery, {bayHalf, bayLong}),
                    seen = seen + galleryAt(p.x, p.y) * 0.0625f;
                else
                    p = within(u, v, atlas::walls::bay, {bayHalf, bayLong}),
                    seen = seen + bayAt(p.x, p.y) * 0.0625f;
            }
        return clear(seen);
    });
    saveRgba(canvas, path, Rows::TopFirst);
}
