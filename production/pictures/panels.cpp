// The two plated textures, which repeat without a seam: "shiptex", the skin of everything that moves, and
// "cubetex", the walls of tunnel and room. Each is a drawing, a table of parts on a grid of 16 by 16 cells.
#include <vector>

#include "production/evenings.h"
#include "production/kit/picture/lettering.h"
#include "production/kit/picture/noise.h"
#include "production/kit/picture/relief.h"
#include "production/pictures/hall.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

constexpr int size = 1024;
constexpr float cell = size / 16.0f;

// Later rows lie on earlier ones.
enum class Part {
    Plate,   // raised, corners cut by `detail` cells, in `tone`
    Inset,   // a field sunk into what lies below, in `tone`
    Vent,    // a sunk field with `detail` slats
    Bolts,   // a row of `detail` bolts along the longer side
    Groove,  // a channel
    Rail,    // a raised tube
    Lamp,    // a strip of light in a channel; `tone` is its strength, warm where `detail` is 1
    Hazard,  // slanting stripes of paint
    Paint,   // a flat field of colour, warm where `detail` is 1
    Chip,    // a dab of one of the `chips`, by number in `detail`
    Rooms,   // a wall of glass before the stretch of rooms number `tone`
    Boards,  // timber, `detail` boards of it, with lamps let in
    Leaves,  // a hedge, ragged below
};

using enum Part;

// Left, top, width and height are in cells; what the other two mean stands beside each kind of part.
struct Row {
    Part part;
    float left, top, width, height;
    float tone = 0;
    float detail = 0;
};

struct Sign {
    const char* text;
    float left, baseline, height;  // cells
    float tone;
};

const Rgba warm = opaque(0.86f, 0.46f, 0.13f);
const Rgba warmLight = light(1.0f, 0.58f, 0.20f), coolLight = light(0.50f, 0.70f, 1.0f);

// Enamel of a brightness, a little warm beside the walls' steel.
Rgba enamel(float tone) {
    const float pale = tone == 0.26f ? 1 : 0;  // the wings', cold before the tunnel's orange panels
    return opaque(tone * mix(1.06f, 0.62f, pale), tone * mix(0.98f, 1.02f, pale),
                  tone * mix(0.88f, 1.34f, pale));
}

// Steel of a brightness: teal in the dark, nearly neutral when bright. The hall's lights have next to no red,
// so that what is teal here shines there, and is only steel under the tunnel's white ones.
Rgba steel(float tone) {
    const float bright = smoothstep(0.25f, 0.9f, tone);
    return opaque(tone * mix(0.76f, 0.97f, bright), tone * mix(1.34f, 1.02f, bright),
                  tone * mix(1.52f, 1.04f, bright));
}

// The walls': the glow on a beat makes seven times as much of a broad light, so their plates are deep.
Rgba deepSteel(float tone) {
    return steel(tone) * mix(0.66f, 0.88f, tone);
}

// The lime of the heap's slabs; the edge and the strings of the band, whose hues "koe" gives; the ship's
// edges that the beams light.
const Rgba chips[] = {opaque(0.40f, 0.39f, 0.37f), opaque(1, 1, 1), grey(0.06f), opaque(1, 0.16f, 0.72f)};

using Metal = Rgba (*)(float tone);

float cutBox(Point p, Point half, float cut) {
    const float flat = box(p, {0, 0}, half);
    const float slant = (std::fabs(p.x) - half.x + std::fabs(p.y) - half.y + cut) * 0.70710678f;
    return std::fmax(flat, slant);
}

void stampBolt(Relief& relief, Point at, float radius) {
    const Extent extent = {at, {radius + 4, radius + 4}};
    raise(relief, extent, -1.2f, 2, [&](Point p) { return circle(p, {}, radius + 1.5f); });
    raise(relief, extent, 3.0f, 3, [&](Point p) { return circle(p, {}, radius - 0.5f); });
}

void stampBolts(Relief& relief, const Row& row, Point middle, Point half) {
    const int count = int(row.detail);
    const bool lying = half.x > half.y;
    for (int i = 0; i < count; i++) {
        const float k = count > 1 ? 2.0f * i / (count - 1) - 1 : 0;
        stampBolt(relief, middle + (lying ? Point{k * half.x, 0} : Point{0, k * half.y}), 5);
    }
}

void stampVent(Relief& relief, Metal metal, const Row& row, Point middle, Point half) {
    const Extent extent = {middle, half};
    tint(relief, extent, metal(row.tone), 1, [&](Point p) { return box(p, {}, half, 6); });
    raise(relief, extent, -9, 3, [&](Point p) { return box(p, {}, half, 6); });
    const float pitch = half.y * 2 / row.detail;
    raise(relief, extent, 8, pitch * 0.5f, [&](Point p) {
        const float slat = std::remainder(p.y + half.y + 4 * size - pitch / 2, pitch);
        return std::fmax(std::fabs(slat) - pitch * 0.22f, box(p, {}, half - Point{7, 3}, 4));
    });
}

void stampLamp(Relief& relief, const Row& row, Point middle, Point half) {
    const Point channel = half + Point{9, 9};
    const Extent extent = {middle, channel + Point{26, 26}};
    tint(relief, extent, steel(0.10f), 1, [&](Point p) { return box(p, {}, channel, 9); });
    raise(relief, extent, -7, 4, [&](Point p) { return box(p, {}, channel, 9); });
    const Rgba glow = row.detail > 0 ? warmLight : coolLight;
    const bool lying = half.x > half.y;
    // Thin bars across it, so that a broad lamp is no blank.
    shine(relief, extent, glow * row.tone, 26, [&](Point p) {
        const float along = lying ? p.x : p.y;
        const float bar = 2.5f - std::fabs(std::remainder(along + 8 * cell - cell * 0.85f, cell * 1.7f));
        return std::fmax(box(p, {}, half, std::fmin(std::fmin(half.x, half.y), 14.0f)), bar);
    });
}

// No two rooms are lit alike: a lamp under the ceiling, the floor in shade and what stands on it before the
// light; some have drawn their blinds, some watch a screen, some are out.
void stampRooms(Relief& relief, const Row& row, Point middle, Point half) {
    const float wide = 2 * half.x / heap::roomsInStretch;
    visitWrapped(relief, {middle, half}, [&](size_t i, Point p) {
        const float across = (p.x + half.x) / wide, down = (p.y + half.y) / (2 * half.y);
        const int room = int(across), key = room + heap::roomsInStretch * int(row.tone);
        const float x = across - float(room);
        const char evening = heap::evenings[int(row.tone)][room];
        const float lamp = 0.25f + 0.75f * randomAt(key, 2, 5);
        float light = 0.55f + 0.45f * bell(x - lamp, 0.35f);
        light *= mix(0.95f, 0.38f, down);
        Rgba tone = mix(opaque(1, 0.52f, 0.16f), opaque(1, 0.70f, 0.36f), randomAt(key, 3, 5));
        if (evening == 'o') light *= 0.07f;
        if (evening == 's') tone = opaque(0.30f, 0.62f, 1);
        if (evening == 'b') light = down * 9 - std::floor(down * 9) < 0.7f ? 0.34f : 0.12f;
        const float furniture = randomAt(key, 4 + int(x * 5), 5) * 0.42f;
        if (1 - down < furniture) light *= 0.22f;
        const float person = 0.2f + 0.6f * randomAt(key, 11, 5);
        if (randomAt(key, 12, 5) > 0.5f) {
            const Point at = {(x - person) * wide, (down - 1) * 2 * half.y};
            if (std::fmin(box(at, {0, -8}, {3.2f, 9}, 3), circle(at, {0, -21}, 2.9f)) < 0) light *= 0.15f;
        }
        const float frame = std::fmin(std::fmin(x, 1 - x) * wide - 1.6f,
                                      std::fmin(down * 2 * half.y - 4, (1 - down) * 2 * half.y - 1.8f));
        light *= smoothstep(-0.7f, 0.7f, frame);
        relief.colours[i] = opaque(0.012f, 0.014f, 0.018f);
        relief.glows[i] = tone * light;
    });
}

void stampBoards(Relief& relief, const Row& row, Point middle, Point half) {
    const float wide = 2 * half.y / row.detail;
    visitWrapped(relief, {middle, half}, [&](size_t i, Point p) {
        const float down = (p.y + half.y) / wide;
        const int board = int(down);
        const float along = p.x + half.x + 61 * float(board % 3);
        const int plank = int(along / 120);
        const float joint =
            std::fmin(std::fabs(std::remainder(down, 1.0f)) * wide, std::fabs(std::remainder(along, 120.0f)));
        const float grain = 0.75f + 0.5f * randomAt(board, plank, 6);
        relief.colours[i] = opaque(0.17f, 0.105f, 0.066f) * (grain * smoothstep(0.2f, 1.7f, joint));
        relief.glows[i] = {};
    });
    for (int k = 0; k < 10; k++) {
        const Point at =
            middle + Point{half.x * (0.4f * float(k % 5) - 0.8f), half.y * (k < 5 ? 0.62f : -0.62f)};
        shine(relief, {at, {16, 16}}, light(1.0f, 0.62f, 0.26f), 10,
              [](Point p) { return circle(p, {}, 3.4f); });
    }
}

void stampLeaves(Relief& relief, Point middle, Point half) {
    visitWrapped(relief, {middle, half}, [&](size_t i, Point p) {
        const float leaf = fractalNoise(p.x / 6, p.y / 6, 64, 3, 7), drop = gradientNoise(p.x / 9, 0, 64, 8);
        const float down = (p.y + half.y) / (2 * half.y);
        relief.colours[i] =
            mix(opaque(0.02f, 0.09f, 0.025f), opaque(0.30f, 0.46f, 0.12f), smoothstep(-0.25f, 0.4f, leaf));
        if (down > 0.72f + 0.25f * drop) relief.colours[i] = chips[0];
        relief.glows[i] = {};
    });
}

void stamp(Relief& relief, Metal metal, const Row& row) {
    const Point half = {row.width * cell / 2, row.height * cell / 2};
    const Point middle = Point{row.left * cell, row.top * cell} + half;
    const Extent extent = {middle, half + Point{3, 3}};
    switch (row.part) {
        case Plate: {
            const auto shape = [&](Point p) { return cutBox(p, half - Point{2, 2}, row.detail * cell); };
            tint(relief, extent, metal(row.tone), 1, shape);
            raise(relief, extent, 5, 5, shape);
            break;
        }
        case Inset: {
            const auto shape = [&](Point p) { return box(p, {}, half, 7); };
            tint(relief, extent, metal(row.tone), 1, shape);
            raise(relief, extent, -4, 4, shape);
            break;
        }
        case Vent:
            stampVent(relief, metal, row, middle, half);
            break;
        case Bolts:
            stampBolts(relief, row, middle, half);
            break;
        case Groove:
            raise(relief, extent, -4, 4,
                  [&](Point p) { return box(p, {}, half, std::fmin(half.x, half.y)); });
            break;
        case Rail: {
            const float thick = std::fmin(half.x, half.y);
            tint(relief, extent, metal(row.tone), 1, [&](Point p) { return box(p, {}, half); });
            raise(relief, extent, thick * 0.9f, thick * 1.6f,
                  [&](Point p) { return box(p, {}, half) + thick * 0.5f; });
            break;
        }
        case Lamp:
            stampLamp(relief, row, middle, half);
            break;
        case Hazard:
            tint(relief, extent, warm, 0.9f, [&](Point p) {
                const float stripe = std::fabs(std::remainder(p.x + p.y + 64 * cell - 22, 44.0f)) - 11;
                return std::fmax(stripe * 0.7071f, box(p, {}, half, 3));
            });
            break;
        case Paint:
            tint(relief, extent, row.detail > 0 ? warm : metal(row.tone), 0.85f,
                 [&](Point p) { return box(p, {}, half, 3); });
            break;
        case Chip:
            tint(relief, extent, chips[int(row.detail)], 1, [&](Point p) { return box(p, {}, half); });
            break;
        case Rooms:
            stampRooms(relief, row, middle, half);
            break;
        case Boards:
            stampBoards(relief, row, middle, half);
            break;
        case Leaves:
            stampLeaves(relief, middle, half);
            break;
    }
}

void stencil(Relief& relief, Metal metal, const std::vector<Sign>& signs) {
    for (const Sign& sign : signs) {
        LetteringField text(size, size, 2);
        setText(text, {.height = sign.height * cell, .weight = 0.22f, .contrast = 0.25f, .gap = 0.2f},
                {sign.text, sign.left * cell, sign.baseline * cell});
        for (size_t i = 0; i < text.distances.size(); i++)
            relief.colours[i] = mix(relief.colours[i], metal(sign.tone), 0.8f * coverage(text.distances[i]));
    }
}

const std::vector<Row> hullRows = {
    {Plate, 0, 0, 6, 5, 0.34, 0.7},
    {Plate, 6, 0, 4, 3, 0.18, 0.3},
    {Plate, 10, 0, 6, 3, 0.45, 0.3},
    {Plate, 6, 3, 7, 6, 0.39, 0.7},
    {Plate, 13, 3, 3, 6, 0.14, 0.3},
    {Plate, 0, 5, 3, 6, 0.16, 0.3},
    {Plate, 3, 5, 3, 4, 0.41, 0.3},
    {Plate, 3, 9, 7, 3, 0.27, 0.3},
    {Plate, 10, 9, 6, 7, 0.26, 0},
    {Plate, 0, 11, 3, 5, 0.41, 0.4},
    {Plate, 3, 12, 4, 4, 0.13, 0.4},
    {Plate, 7, 12, 3, 4, 0.31, 0.4},
    {Rail, 6.4, 1.3, 3.2, 0.28, 0.23},
    {Rail, 6.4, 2, 3.2, 0.28, 0.23},
    {Inset, 0.6, 2.9, 3.4, 1.4, 0.07},
    {Inset, 7, 4, 3.2, 4, 0.28},
    {Inset, 0.6, 8, 1.8, 2.2, 0.06},
    {Inset, 0.5, 12, 2, 3.2, 0.28},
    {Inset, 11.5, 4.4, 1.1, 2.2, 0.2},
    {Vent, 0.8, 3.1, 3, 1, 0.06, 5},
    {Vent, 3.5, 12.8, 3, 2.4, 0.06, 6},
    {Groove, 0.5, 6, 2, 0.12},
    {Groove, 0.5, 6.4, 2, 0.12},
    {Groove, 0.5, 6.8, 2, 0.12},
    {Groove, 10.6, 3.4, 0.14, 5.2},
    {Groove, 11, 3.4, 0.14, 5.2},
    {Paint, 10.04, 0.9, 5.92, 0.5, 0, 1},
    {Paint, 10.04, 1.55, 5.92, 0.16, 0, 1},
    {Hazard, 3.4, 11.2, 6.2, 0.55},
    {Lamp, 0.9, 8.5, 1.2, 0.16, 0.85, 1},
    {Lamp, 0.9, 9.5, 1.2, 0.16, 0.8},
    {Bolts, 0.7, 0.6, 4.2, 0.01, 0, 6},
    {Bolts, 10.5, 2.6, 5, 0.01, 0, 7},
    {Bolts, 11.5, 3.5, 1, 0.01, 0, 2},
    {Bolts, 3.5, 5.5, 2, 0.01, 0, 3},
    {Bolts, 3.5, 8.5, 2, 0.01, 0, 3},
    {Bolts, 7.4, 12.6, 2.2, 0.01, 0, 3},
    {Bolts, 7.4, 15.4, 2.2, 0.01, 0, 3},
    {Groove, 10.1, 13.2, 5.8, 0.1},
    {Groove, 12.6, 9.1, 0.1, 6.8},
    {Paint, 13.6, 13.3, 0.5, 2.6, 0, 1},
    {Paint, 14.3, 13.3, 0.16, 2.6, 0, 1},
    // The heap's houses.
    {Rooms, 13.1, 3.1, 2.8, 0.6, 0},
    {Rooms, 13.1, 3.8, 2.8, 0.6, 1},
    {Boards, 13.1, 4.5, 2.8, 2.2, 0, 9},
    {Leaves, 13.1, 6.8, 2.8, 0.6},
    {Chip, 13.1, 7.5, 2.8, 0.6, 0, 0},
    // The band.
    {Chip, 0.7, 12.7, 0.6, 0.6, 0, 1},
    {Chip, 1.7, 12.7, 0.6, 0.6, 0, 2},
    {Chip, 0.7, 14.7, 0.6, 0.6, 0, 3},
};
const std::vector<Sign> hullSigns = {
    {"Valo", 7.25, 6, 0.86, 0.16}, {"7", 11.35, 8.4, 1.2, 0.2},    {"juova", 7.28, 7, 0.5, 0.16},
    {"126", 3.5, 7.6, 0.9, 0.2},   {"Ö-9", 7.45, 14.5, 0.8, 0.18}, {"no step", 3.6, 10.5, 0.55, 0.16},
};

// One panel of the tunnel, from joint to joint: calm and dark, as the glow on a beat makes seven times as
// much of a broad light.
const std::vector<Row> panelRows = {
    {Plate, 0.45, 0.2, 15.1, 14.1, 0.05, 1.6},
    {Inset, 2.2, 1.2, 11.6, 5.6, 0.03},
    {Inset, 2.2, 7.6, 11.6, 5.6, 0.04},
    {Vent, 3.4, 8.4, 5.2, 1.8, 0.03, 6},
    {Rail, 11.6, 8.2, 0.5, 4.4, 0.07},
    {Rail, 12.6, 8.2, 0.5, 4.4, 0.07},
    {Bolts, 1.3, 1.6, 0.01, 11, 0, 6},
    {Bolts, 14.7, 1.6, 0.01, 11, 0, 6},
    {Groove, 2.2, 7.1, 11.6, 0.14},
    {Lamp, 0.9, 1.0, 0.35, 12.4, 0.35},
    {Lamp, 14.9, 7.8, 0.35, 5.2, 0.5, 1},
};

Canvas plated(Metal metal, const std::vector<Row>& rows, const std::vector<Sign>& signs,
              const Weather& weather) {
    Relief relief(size, metal(0.10f));
    for (const Row& row : rows) stamp(relief, metal, row);
    stencil(relief, metal, signs);
    return lit(relief, weather);
}

}  // namespace

void makeHull(const char* path) {
    saveRgb(plated(enamel, hullRows, hullSigns, {0.14f, 0.55f, 0.5f, 900}), path, Rows::TopFirst);
}

// The tunnel's frame, along a segment: the light of the rings at both of its ends falls off towards its
// middle.
Rgba railAt(float along) {
    return opaque(0.62f, 0.98f, 1.30f) * mix(0.06f, 0.36f, std::exp(-6 * std::fmin(along, 1 - along)));
}

// The tunnel's panel and its frame, drawn in to the left half with the light and the black of its rings below
// them, and the hall's pictures in the right one.
void makeWalls(const char* path) {
    const Canvas panel = plated(deepSteel, panelRows, {}, {0.10f, 0.10f, 0.4f, 1900});
    Canvas canvas(size, size, grey(0));
    paint(canvas, [&](float x, float y, Rgba) {
        const int row = int(y);
        if (x >= size / 2) return hallPictures(x, y);
        if (y > 14.6f * cell)
            return mix(grey(0.004f), opaque(0.10f, 0.18f, 0.28f),
                       smoothstep(0.36f, 0.30f, std::fabs(y / cell - 15.5f)));
        if (x >= 5 * cell) return railAt(y / (14.5f * cell));
        Rgba seen = {};
        for (int i = 0; i < 4; i++) seen = seen + panel.at(int(std::floor(x) * 3.2f + 0.8f * i), row) * 0.25f;
        return seen;
    });
    saveRgb(canvas, path, Rows::TopFirst);
}
