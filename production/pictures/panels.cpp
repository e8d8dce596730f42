// The two plated textures, which repeat without a seam: "shiptex", the skin of everything that moves, and
// "cubetex", the walls of tunnel and room. Each is a drawing, a table of parts on a grid of 16 by 16 cells.
#include <string>
#include <vector>

#include "production/kit/picture_lettering.h"
#include "production/kit/picture_noise.h"
#include "production/kit/picture_relief.h"
#include "production/pictures/pictures.h"

namespace {

constexpr int size = 1024;
constexpr float cell = size / 16.0f;

enum class Part {
    Plate,   // raised, corners cut by `detail` cells, in `tone`
    Inset,   // a field sunk into what lies below, in `tone`
    Vent,    // a sunk field with `detail` slats
    Hatch,   // a round lid with a ring of bolts
    Bolts,   // a row of `detail` bolts along the longer side
    Groove,  // a channel
    Rail,    // a raised tube
    Lamp,    // a strip of light in a channel; `tone` is its strength, warm where `detail` is 1
    Hazard,  // slanting stripes of paint
    Paint,   // a flat field of colour, warm where `detail` is 1
};

// Left, top, width and height in cells.
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
const Rgba warmLight = light(1.0f, 0.58f, 0.20f), coolLight = light(0.80f, 0.94f, 1.0f);

// Enamel of a brightness, a little warm beside the walls' steel.
Rgba enamel(float tone) {
    return opaque(tone * 1.06f, tone * 0.98f, tone * 0.88f);
}

// Steel of a brightness: teal in the dark, nearly neutral when bright. The hall's lights have next to no red,
// so that what is teal here shines there, and is only steel under the tunnel's white ones.
Rgba steel(float tone) {
    const float bright = smoothstep(0.25f, 0.9f, tone);
    return opaque(tone * mix(0.76f, 0.97f, bright), tone * mix(1.34f, 1.02f, bright),
                  tone * mix(1.52f, 1.04f, bright));
}

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
    const int count = static_cast<int>(row.detail);
    const bool lying = half.x > half.y;
    for (int i = 0; i < count; i++) {
        const float k = count > 1 ? 2.0f * i / (count - 1) - 1 : 0;
        stampBolt(relief, middle + (lying ? Point{k * half.x, 0} : Point{0, k * half.y}), 5);
    }
}

void stampHatch(Relief& relief, Metal metal, const Row& row, Point middle, Point half) {
    const float radius = half.x;
    const Extent extent = {middle, {radius + 4, radius + 4}};
    tint(relief, extent, metal(row.tone), 1, [&](Point p) { return circle(p, {}, radius); });
    raise(relief, extent, -5, 4, [&](Point p) { return circle(p, {}, radius); });
    raise(relief, extent, 7, 5, [&](Point p) { return circle(p, {}, radius - 9); });
    raise(relief, extent, -3, 3, [&](Point p) { return std::fabs(circle(p, {}, radius * 0.55f)) - 3; });
    for (int i = 0; i < 8; i++)
        stampBolt(relief, middle + turned({radius * 0.74f, 0}, i * 0.78539816f + 0.39f), 4.5f);
}

void stampVent(Relief& relief, Metal metal, const Row& row, Point middle, Point half) {
    const Extent extent = {middle, half};
    tint(relief, extent, metal(row.tone), 1, [&](Point p) { return box(p, {}, half, 6); });
    raise(relief, extent, -9, 3, [&](Point p) { return box(p, {}, half, 6); });
    const float pitch = half.y * 2 / row.detail;
    raise(relief, extent, 8, pitch * 0.5f, [&](Point p) {
        const float slat = std::fmod(p.y + half.y + 4 * size, pitch) - pitch / 2;
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
        const float bar = 2.5f - std::fabs(std::fmod(along + 8 * cell, cell * 1.7f) - cell * 0.85f);
        return std::fmax(box(p, {}, half, std::fmin(std::fmin(half.x, half.y), 14.0f)), bar);
    });
}

void stamp(Relief& relief, Metal metal, const Row& row) {
    const Point half = {row.width * cell / 2, row.height * cell / 2};
    const Point middle = Point{row.left * cell, row.top * cell} + half;
    const Extent extent = {middle, half + Point{3, 3}};
    switch (row.part) {
        case Part::Plate: {
            const auto shape = [&](Point p) { return cutBox(p, half - Point{2, 2}, row.detail * cell); };
            tint(relief, extent, metal(row.tone), 1, shape);
            raise(relief, extent, 5, 5, shape);
            break;
        }
        case Part::Inset: {
            const auto shape = [&](Point p) { return box(p, {}, half, 7); };
            tint(relief, extent, metal(row.tone), 1, shape);
            raise(relief, extent, -4, 4, shape);
            break;
        }
        case Part::Vent:
            stampVent(relief, metal, row, middle, half);
            break;
        case Part::Hatch:
            stampHatch(relief, metal, row, middle, half);
            break;
        case Part::Bolts:
            stampBolts(relief, row, middle, half);
            break;
        case Part::Groove:
            raise(relief, extent, -4, 4,
                  [&](Point p) { return box(p, {}, half, std::fmin(half.x, half.y)); });
            break;
        case Part::Rail: {
            const float thick = std::fmin(half.x, half.y);
            tint(relief, extent, metal(row.tone), 1, [&](Point p) { return box(p, {}, half); });
            raise(relief, extent, thick * 0.9f, thick * 1.6f,
                  [&](Point p) { return box(p, {}, half) + thick * 0.5f; });
            break;
        }
        case Part::Lamp:
            stampLamp(relief, row, middle, half);
            break;
        case Part::Hazard:
            tint(relief, extent, warm, 0.9f, [&](Point p) {
                const float stripe = std::fabs(std::fmod(p.x + p.y + 64 * cell, 44.0f) - 22) - 11;
                return std::fmax(stripe * 0.7071f, box(p, {}, half, 3));
            });
            break;
        case Part::Paint:
            tint(relief, extent, row.detail > 0 ? warm : metal(row.tone), 0.85f,
                 [&](Point p) { return box(p, {}, half, 3); });
            break;
    }
}

void stencil(Relief& relief, Metal metal, const std::vector<Sign>& signs) {
    for (const Sign& sign : signs) {
        LetteringField text(size, size, 2);
        setText(text, sign.text, {sign.height * cell, 0.22f, 0.25f, 0.2f}, sign.left * cell,
                sign.baseline * cell);
        for (size_t i = 0; i < text.distances.size(); i++)
            relief.colours[i] = mix(relief.colours[i], metal(sign.tone), 0.8f * coverage(text.distances[i]));
    }
}

// clang-format off
const std::vector<Row> hullRows = {
    {Part::Plate, 0, 0, 6, 5, 0.34f, 0.7f},        {Part::Plate, 6, 0, 4, 3, 0.18f, 0.3f},      {Part::Plate, 10, 0, 6, 3, 0.45f, 0.3f},
    {Part::Plate, 6, 3, 7, 6, 0.39f, 0.7f},        {Part::Plate, 13, 3, 3, 6, 0.14f, 0.3f},     {Part::Plate, 0, 5, 3, 6, 0.16f, 0.3f},
    {Part::Plate, 3, 5, 3, 4, 0.41f, 0.3f},        {Part::Plate, 3, 9, 7, 3, 0.27f, 0.3f},      {Part::Plate, 10, 9, 6, 7, 0.36f, 0.9f},
    {Part::Plate, 0, 11, 3, 5, 0.41f, 0.4f},       {Part::Plate, 3, 12, 4, 4, 0.13f, 0.4f},     {Part::Plate, 7, 12, 3, 4, 0.31f, 0.4f},
    {Part::Inset, 0.6f, 2.9f, 3.4f, 1.4f, 0.07f},  {Part::Vent, 0.8f, 3.1f, 3, 1, 0.06f, 5},    {Part::Inset, 7, 4, 3.2f, 4, 0.28f},
    {Part::Hatch, 13.4f, 5.1f, 2.2f, 2.2f, 0.27f}, {Part::Hatch, 10.8f, 12.6f, 2.4f, 2.4f, 0.20f}, {Part::Vent, 13.8f, 10, 1.6f, 4.6f, 0.06f, 11},
    {Part::Vent, 3.5f, 12.8f, 3, 2.4f, 0.06f, 6},  {Part::Groove, 0.5f, 6, 2, 0.12f},           {Part::Groove, 0.5f, 6.4f, 2, 0.12f},
    {Part::Groove, 0.5f, 6.8f, 2, 0.12f},          {Part::Inset, 0.6f, 8, 1.8f, 2.2f, 0.06f},   {Part::Lamp, 0.9f, 8.5f, 1.2f, 0.16f, 0.85f, 1},
    {Part::Lamp, 0.9f, 9.5f, 1.2f, 0.16f, 0.8f},   {Part::Paint, 10.04f, 0.9f, 5.92f, 0.5f, 0, 1},      {Part::Paint, 10.04f, 1.55f, 5.92f, 0.16f, 0, 1},
    {Part::Hazard, 3.4f, 11.2f, 6.2f, 0.55f},      {Part::Rail, 6.4f, 1.3f, 3.2f, 0.28f, 0.23f}, {Part::Rail, 6.4f, 2.0f, 3.2f, 0.28f, 0.23f},
    {Part::Groove, 10.6f, 3.4f, 0.14f, 5.2f},      {Part::Groove, 11, 3.4f, 0.14f, 5.2f},       {Part::Inset, 0.5f, 12, 2, 3.2f, 0.28f},
    {Part::Bolts, 0.7f, 0.6f, 4.2f, 0.01f, 0, 6},  {Part::Bolts, 10.5f, 2.6f, 5, 0.01f, 0, 7},  {Part::Bolts, 11.5f, 3.5f, 1, 0.01f, 0, 2}, {Part::Inset, 11.5f, 4.4f, 1.1f, 2.2f, 0.20f},
    {Part::Bolts, 3.5f, 5.5f, 2, 0.01f, 0, 3},     {Part::Bolts, 3.5f, 8.5f, 2, 0.01f, 0, 3},   {Part::Bolts, 7.4f, 12.6f, 2.2f, 0.01f, 0, 3},
    {Part::Bolts, 7.4f, 15.4f, 2.2f, 0.01f, 0, 3}, {Part::Bolts, 10.7f, 15.5f, 4.6f, 0.01f, 0, 6},
};
const std::vector<Sign> hullSigns = {
    {"Valo", 7.25f, 6.0f, 0.86f, 0.16f}, {"7", 11.35f, 8.4f, 1.2f, 0.20f}, {"juova", 7.28f, 7.0f, 0.5f, 0.16f},
    {"126", 3.5f, 7.6f, 0.9f, 0.2f},     {"Ö-9", 7.45f, 14.5f, 0.8f, 0.18f}, {"no step", 3.6f, 10.5f, 0.55f, 0.16f}, {"10 88 4", 10.6f, 10.6f, 0.42f, 0.2f},
};

const std::vector<Row> wallRows = {
    {Part::Plate, 2, 0, 6, 7, 0.19f, 0.9f},      {Part::Plate, 8, 0, 6, 4, 0.14f, 0.6f},     {Part::Plate, 8, 4, 6, 7, 0.19f, 0.9f},
    {Part::Plate, 2, 7, 6, 4, 0.11f, 0.6f},      {Part::Plate, 2, 11, 6, 5, 0.20f, 0.9f},    {Part::Plate, 8, 11, 6, 5, 0.15f, 0.9f},
    {Part::Rail, 14.1f, 0, 0.4f, 16, 0.25f},     {Part::Rail, 1.5f, 0, 0.4f, 16, 0.25f},     {Part::Lamp, 15.6f, 0.6f, 0.8f, 6.8f, 1.0f},
    {Part::Lamp, 15.6f, 8.6f, 0.8f, 6.8f, 1.0f},
    {Part::Inset, 2.9f, 0.9f, 4.2f, 5.2f, 0.14f},  {Part::Vent, 8.8f, 0.8f, 4.4f, 2.4f, 0.06f, 6}, {Part::Inset, 9, 5, 4, 5, 0.28f},
    {Part::Lamp, 9.0f, 11.6f, 4.0f, 0.16f, 0.5f}, {Part::Hatch, 3.2f, 11.8f, 3.6f, 3.6f, 0.19f}, {Part::Lamp, 2.8f, 7.7f, 0.3f, 2.6f, 0.9f, 1},
    {Part::Vent, 3.6f, 7.8f, 3.7f, 2.4f, 0.06f, 5}, {Part::Hazard, 9, 9.2f, 4, 0.6f},          {Part::Groove, 3.3f, 1.5f, 3.4f, 0.14f},
    {Part::Groove, 3.3f, 5.4f, 3.4f, 0.14f},       {Part::Inset, 8.8f, 12.4f, 4.4f, 2.8f, 0.11f}, {Part::Rail, 9.2f, 12.8f, 3.6f, 0.34f, 0.20f},
    {Part::Rail, 9.2f, 13.6f, 3.6f, 0.34f, 0.20f}, {Part::Rail, 9.2f, 14.4f, 3.6f, 0.34f, 0.20f}, {Part::Bolts, 2.45f, 1.2f, 0.01f, 4.6f, 0, 5},
    {Part::Bolts, 7.55f, 1.2f, 0.01f, 4.6f, 0, 5}, {Part::Bolts, 8.5f, 5.4f, 0.01f, 4.2f, 0, 4},  {Part::Bolts, 13.5f, 5.4f, 0.01f, 4.2f, 0, 4},
    {Part::Bolts, 9.2f, 15.6f, 3.6f, 0.01f, 0, 4},
};
const std::vector<Sign> wallSigns = {
    {"8", 4.1f, 4.4f, 2.4f, 0.62f}, {"808", 3.4f, 5.2f, 0.4f, 0.62f}, {"A", 9.9f, 7.7f, 1.9f, 0.12f}, {"utu", 10.0f, 8.7f, 0.6f, 0.12f},
};
// clang-format on

void makePlated(const char* path, Metal metal, const std::vector<Row>& rows, const std::vector<Sign>& signs,
                const Weather& weather) {
    Relief relief(size, metal(0.10f));
    for (const Row& row : rows) stamp(relief, metal, row);
    stencil(relief, metal, signs);
    saveRgb(lit(relief, weather), path, Rows::TopFirst);
}

}  // namespace

void makeHull(const char* path) {
    makePlated(path, enamel, hullRows, hullSigns, {0.14f, 0.55f, 0.5f, 900});
}

void makeWalls(const char* path) {
    makePlated(path, steel, wallRows, wallSigns, {0.16f, 0.40f, 0.6f, 1900});
}
