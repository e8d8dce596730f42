#include "production/pictures/houses.h"

#include "production/kit/picture/noise.h"
#include "production/kit/picture/shapes.h"
#include "production/shared/atlas.h"
#include "production/shared/house.h"

using namespace picture;
using atlas::Cells;

namespace {

const Rgba night = opaque(0.006f, 0.005f, 0.014f), shade = opaque(0.020f, 0.014f, 0.046f);
const Rgba gold = light(1, 0.60f, 0.16f), blue = light(0.10f, 0.42f, 1), amber = light(1, 0.42f, 0.08f),
           cyan = light(0.16f, 0.80f, 1), violet = light(0.74f, 0.34f, 1), pink = light(1, 0.16f, 0.48f),
           green = light(0.40f, 0.85f, 0.25f);

// What has been painted of a place so far: dark bodies over painted glow, and lines of light.
struct Seen {
    Rgba colour;

    void body(float distance, Rgba own) {
        if (distance < 0) colour = own;
    }
    void glow(float distance, float reach, Rgba own) {
        colour = colour + own * std::exp(-std::fmax(distance, 0.0f) / reach);
    }
    // `width` to each side of where the distance is 0.
    void line(float distance, float width, Rgba own, float reach = 0.35f) {
        const float away = std::fabs(distance) - width;
        colour = colour + own * (away < 0 ? 1 : 0.30f * std::exp(-away / reach));
    }
};

// A leaf along x, pointed at both ends.
float leaf(Point p, float from, float to, float half) {
    const float reach = (to - from) / 2, radius = (reach * reach + half * half) / (2 * half);
    return length(Point{p.x - from - reach, std::fabs(p.y) + radius - half}) - radius;
}
float rod(Point p, Point a, Point b, float half) {
    return segment(p, a, b) - half;
}

// People, from where their feet are, y upwards, facing right; 8.6 high.
float standing(Point p, float stride = 0.8f) {
    return std::fmin(
        std::fmin(circle(p, {0.1f, 7.7f}, 0.85f), rod(p, {0, 4.2f}, {0, 6.0f}, 0.95f)),
        std::fmin(rod(p, {0, 4}, {-stride, 0.3f}, 0.45f), rod(p, {0, 4}, {stride, 0.3f}, 0.45f)));
}
float dancing(Point p) {
    return std::fmin(standing(p, 1.3f), std::fmin(rod(p, {-0.7f, 6.3f}, {-2.2f, 8.8f}, 0.35f),
                                                  rod(p, {0.7f, 6.3f}, {2.3f, 8.4f}, 0.35f)));
}
float seated(Point p) {
    const float body = std::fmin(circle(p, {0.2f, 6.2f}, 0.85f), rod(p, {0, 2.9f}, {0, 4.5f}, 0.9f));
    const float legs =
        std::fmin(rod(p, {0, 2.7f}, {2.0f, 2.7f}, 0.5f), rod(p, {2.0f, 2.7f}, {2.2f, 0.3f}, 0.4f));
    return std::fmin(std::fmin(body, legs), rod(p, {0.3f, 4.4f}, {2.4f, 4.0f}, 0.35f));
}
float palm(Point p, float tall, int seed) {
    float near = rod(p, {0, 0}, {0.3f, tall}, 0.22f);
    for (int i = 0; i < 7; i++) {
        const float turn = pi * (0.06f + 0.147f * i) + 0.2f * randomAt(i, 3, uint32_t(seed));
        const Point tip = turned(p - Point{0.3f, tall}, -turn);
        const float droop = tip.x > 0 ? 0.07f * tip.x * tip.x * (std::cos(turn) > 0 ? 1.0f : -1.0f) : 0;
        near = std::fmin(near, leaf({tip.x, tip.y + droop}, 0, 3.6f, 0.5f));
    }
    return near;
}
float toNearest(float x, float pitch) {
    return std::fabs(std::remainder(x, pitch));
}

// Rooms, from their lower left, in units of their own.
constexpr float tall = 13.8f;

void pendant(Seen& seen, Point p, Point at, Rgba own) {
    const Point from = p - at;
    if (from.y < 0 && std::fabs(from.x) < 0.9f - 0.42f * from.y)
        seen.colour = seen.colour + own * (0.30f * std::exp(from.y / 5));
    seen.glow(length(from), 2.2f, own * 0.38f);
    if (from.y > 0) seen.body(std::fabs(from.x) - 0.10f, night);
    seen.body(std::fmax(circle(from, {}, 1.15f), -from.y), night);
    seen.line(std::fmax(std::fabs(from.x) - 1.15f, std::fabs(from.y)), 0.14f, own);
    seen.body(circle(from, {0, -0.35f}, 0.55f), own + opaque(0, 0.25f, 0.35f));
}

Rgba bottles(Point p, uint32_t seed) {
    const int column = int(std::floor(p.x / 0.95f));
    const float high = 0.75f + 0.75f * randomAt(column, 1, seed), x = p.x / 0.95f - column - 0.5f;
    if (p.y < 0 || p.y > high || std::fabs(x) > (p.y > 0.66f * high ? 0.14f : 0.34f)) return {};
    const Rgba tints[] = {cyan, amber, pink, green, gold, violet};
    return tints[int(randomAt(column, 2, seed) * 5.99f)] * 0.8f;
}

// A bar: its bottles before the wall, and guests under lamps.
Rgba barRoom(Point p, float wide) {
    Seen seen{mix(opaque(0.20f, 0.045f, 0.02f), opaque(0.06f, 0.01f, 0.03f), p.y / tall)};
    const float middle = wide / 2;
    for (const float shelf : {5.2f, 7.2f, 9.2f}) {
        if (std::fabs(p.x - middle) > 8.6f) break;
        seen.glow(std::fabs(p.y - shelf - 0.8f), 0.9f, amber * 0.20f);
        seen.colour = seen.colour + bottles(p - Point{middle - 8.6f, shelf + 0.15f}, uint32_t(shelf * 7));
        seen.line(p.y - shelf, 0.12f, gold * 0.6f, 0.2f);
    }
    for (const float x : {-9.6f, -3.2f, 3.2f, 9.6f}) pendant(seen, p, {middle + x, 11.4f}, gold);
    seen.body(standing(p - Point{middle, 0.8f}), night);
    seen.body(box(p, {middle, 1.8f}, {9, 1.8f}), opaque(0.03f, 0.008f, 0.012f));
    seen.line(std::fmax(std::fabs(p.x - middle) - 9.2f, std::fabs(p.y - 3.7f)), 0.18f, gold);
    for (const float x : {-8.2f, -4.2f, 6.5f})
        seen.body(seated({(p.x - middle - x) * (x < 0 ? 1.f : -1.f), p.y - 0.9f}), night);
    return seen.colour;
}

// Homes.
void atThePiano(Seen& seen, Point p) {
    pendant(seen, p, {5.6f, 10.4f}, gold);
    seen.body(
        std::fmin(box(p, {6.3f, 3.4f}, {2.6f, 0.55f}),
                  std::fmin(rod(p, {4.2f, 3.2f}, {4.2f, 0}, 0.2f), rod(p, {8.4f, 3.2f}, {8.4f, 0}, 0.2f))),
        night);
    seen.body(rod(p, {4.2f, 4.2f}, {8.6f, 7.6f}, 0.22f), night);
    seen.line(segment(p, {4.2f, 4.5f}, {8.5f, 7.8f}), 0.08f, gold * 0.9f, 0.2f);
    seen.line(segment(p, {3.6f, 4.0f}, {8.8f, 4.0f}), 0.08f, gold * 0.8f, 0.2f);
    seen.body(seated({p.x - 1.6f, p.y}), night);
}
void amongBooks(Seen& seen, Point p) {
    const float row = p.y / 1.9f, book = p.x / 0.42f;
    const int shelf = int(row), volume = int(book);
    const Rgba spines[] = {amber, green * 0.6f, cyan * 0.5f, gold, pink * 0.6f};
    if (p.x > 1 && p.x < 6 && row - shelf < 0.55f + 0.3f * randomAt(volume, shelf, 4) && row - shelf > 0.1f)
        seen.colour = seen.colour + spines[int(randomAt(volume, shelf, 5) * 4.99f)] *
                                        (0.3f + 0.4f * randomAt(volume, shelf, 6));
    seen.line(std::fmax((std::fabs(p.x - 3.5f) - 2.5f), std::fabs(std::remainder(p.y, 1.9f))), 0.09f,
              gold * 0.35f, 0.1f);
    pendant(seen, p, {7.4f, 8.6f}, amber);
    seen.body(rod(p, {4.3f, 0.8f}, {4.3f, 4.8f}, 0.75f), night);
    seen.body(seated({p.x - 5.2f, p.y}), night);
}
void catAtItsWindow(Seen& seen, Point p) {
    const float moon = circle(p, {6.2f, 9.2f}, 2.1f);
    seen.glow(moon, 2.4f, cyan * 0.22f);
    seen.body(moon, opaque(0.10f, 0.36f, 0.55f));
    seen.line(moon, 0.12f, cyan);
    for (int i = 0; i < 9; i++)
        seen.glow(circle(p, {0.9f + 8 * randomAt(i, 1, 3), 6.2f + 7 * randomAt(i, 2, 3)}, 0.1f), 0.2f,
                  cyan * 0.7f);
    seen.body(p.y - 3.4f, night);
    seen.line(p.y - 3.4f, 0.10f, cyan * 0.7f, 0.3f);
    const Point cat = p - Point{3.4f, 3.4f};
    float body = std::fmin(leaf({cat.y + 0.5f, cat.x}, 0, 4.2f, 1.25f), circle(cat, {0.2f, 3.4f}, 0.85f));
    body = std::fmin(body, std::fmin(leaf({cat.y - 3.6f, cat.x + 0.3f}, 0, 1.4f, 0.25f),
                                     leaf({cat.y - 3.6f, cat.x - 0.7f}, 0, 1.4f, 0.25f)));
    body = std::fmin(body, rod(cat, {-0.8f, 0.3f}, {-2.6f, 1.4f}, 0.22f));
    seen.body(body, night);
}
void twoWhoDance(Seen& seen, Point p) {
    seen.glow(length(p - Point{4.9f, 11}), 4, pink * 0.35f + gold * 0.2f);
    for (int i = -3; i <= 3; i++) {
        seen.line(segment(p, {4.9f, tall}, {4.9f + 0.8f * i, 10.8f - 0.4f * (3 - std::abs(i))}), 0.05f,
                  gold * 0.6f, 0.15f);
        seen.glow(circle(p, {4.9f + 0.8f * i, 10.6f - 0.4f * (3 - std::abs(i))}, 0.22f), 0.25f, gold);
    }
    seen.body(std::fmin(standing(p - Point{4.1f, 0}), standing(Point{5.9f - p.x, p.y})), night);
    seen.body(std::fmin(rod(p, {4.2f, 6}, {5.8f, 6.2f}, 0.3f), rod(p, {5.9f, 6.2f}, {7.9f, 7.6f}, 0.28f)),
              night);
    seen.body(leaf({p.y + 0.2f, p.x - 6.0f}, 0, 5.0f, 1.3f), night);
}

Rgba salon(Point p, float) {
    Seen seen{mix(opaque(0.34f, 0.07f, 0.10f), opaque(0.07f, 0.01f, 0.07f), p.y / tall)};
    atThePiano(seen, p - Point{2.5f, 0});
    twoWhoDance(seen, p - Point{13.5f, 0});
    return seen.colour;
}
Rgba library(Point p, float) {
    Seen seen{mix(opaque(0.16f, 0.12f, 0.05f), opaque(0.05f, 0.03f, 0.04f), p.y / tall)};
    amongBooks(seen, p - Point{4, 0});
    return seen.colour;
}
Rgba moonlight(Point p, float) {
    Seen seen{mix(opaque(0.02f, 0.07f, 0.28f), opaque(0.01f, 0.02f, 0.10f), p.y / tall)};
    catAtItsWindow(seen, p - Point{3, 0});
    return seen.colour;
}

// A stair behind glass, which runs on from storey to storey.
Rgba stair(Point p, float) {
    Seen seen{mix(opaque(0.015f, 0.07f, 0.24f), opaque(0.05f, 0.025f, 0.19f), p.y / tall)};
    const float half = tall / 2, from = 3, to = 28, slope = half / (to - from);
    for (const bool upper : {true, false}) {
        const float along = upper ? to - p.x : p.x - from, foot = upper ? half : 0;
        const float up = foot + slope * along;
        if (along < 0 || along > to - from) continue;
        const float step = foot + slope * 1.25f * std::floor(along / 1.25f) + 0.3f;
        const float under = step - p.y;
        if (under > 0 && under < 4) seen.colour = seen.colour + violet * (0.16f * std::exp(-under / 1.2f));
        seen.glow(std::fabs(p.y - up - 1.6f), 1.5f, cyan * 0.26f);
        for (const float person : {5.5f, 14.0f, 20.5f})
            if ((person == 14.0f) == upper)
                seen.body(standing({upper ? person - along : along - person,
                                    (p.y - foot - slope * person) * 1.15f}),
                          night);
        seen.body(std::fmax(p.y - step, up - 1.1f - p.y), night);
        seen.line(p.y - step, 0.13f, gold, 0.25f);
        seen.line(p.y - up + 1.1f, 0.08f, gold * 0.5f, 0.2f);
        seen.line(p.y - up - 3.1f, 0.10f, cyan * 0.9f, 0.25f);
        if (p.y > up && p.y < up + 3.1f) seen.line(toNearest(along, 1.25f), 0.05f, cyan * 0.35f, 0.05f);
    }
    for (const Point at : {Point{1.6f, 3}, Point{29.4f, 9.5f}})
        seen.glow(box(p, at, {0.2f, 1.6f}), 0.7f, gold * 0.9f);
    return seen.colour;
}

// A fish that swims to the right, drawn by lines.
void fish(Seen& seen, Point p, float size, Rgba own) {
    p = p * (1 / size);
    const float body = leaf(p, -4, 4, 1.7f), wide = 0.10f / size;
    const float tail = std::fmax(std::fabs(p.y) - 0.55f * (-3.2f - p.x), -5.6f - 0.5f * std::fabs(p.y) - p.x);
    if (body < 0) seen.colour = mix(own * 0.10f, own * 0.34f, unit(0.5f - p.y / 3)) + opaque(0, 0, 0.02f);
    if (tail < 0 && p.x < -3.2f) seen.colour = own * 0.22f;
    seen.line(body, wide, own);
    if (p.x < -3.2f) seen.line(tail, wide, own * 0.9f);
    if (body < 0)
        for (const float at : {-2.4f, -1.2f, 0.0f, 1.2f})
            seen.line(length(p - Point{at - 1.5f, 0}) - 1.7f + (p.x < at - 1.5f ? 9.0f : 0.0f), wide * 0.6f,
                      own * 0.6f, 0.1f);
    seen.body(circle(p, {2.6f, 0.35f}, 0.34f), own + opaque(0.1f, 0.1f, 0.1f));
}

// An aquarium from slab to slab, and who looks at it.
Rgba aquarium(Point p, float wide) {
    Seen seen{mix(opaque(0.002f, 0.02f, 0.09f), opaque(0.006f, 0.13f, 0.24f), p.y / tall)};
    seen.colour =
        seen.colour +
        cyan * (0.10f * smoothstep(0.6f, 0.9f, ridgedNoise(p.x / 9, p.y / 5, 64, 2, 3)) * p.y / tall);
    for (int i = 0; i < 11; i++) {
        const float at = 1.4f + 3.3f * i, high = 3 + 4.5f * randomAt(i, 1, 8);
        if (p.y > high) continue;
        seen.line(p.x - at - 0.6f * std::sin(p.y * 0.9f + i), 0.13f * (1.2f - p.y / high),
                  green * 0.55f + cyan * 0.1f, 0.3f);
    }
    for (int i = 0; i < 16; i++) {
        const float at = wide * randomAt(i, 4, 8), up = tall * randomAt(i, 5, 8);
        seen.line(circle(p, {at, up}, 0.25f + 0.35f * randomAt(i, 6, 8)), 0.06f, cyan * 0.6f, 0.12f);
    }
    fish(seen, p - Point{23, 8}, 1.7f, amber);
    fish(seen, Point{9.5f - p.x, p.y - 10.4f}, 0.8f, pink);
    fish(seen, Point{29 - p.x, p.y - 2.8f}, 0.6f, gold);
    fish(seen, p - Point{14, 3.2f}, 0.6f, violet);
    seen.body(standing(p - Point{5.5f, 0}), night);
    seen.body(standing((p - Point{8.2f, 0}) * 1.6f), night);
    return seen.colour;
}

// A dance under a ball of mirrors.
Rgba dance(Point p, float wide) {
    const Point ball = {wide / 2, 10.6f}, from = p - ball;
    Seen seen{mix(opaque(0.42f, 0.06f, 0.16f), opaque(0.03f, 0.010f, 0.11f), smoothstep(0, 8.5f, p.y))};
    const Rgba tints[] = {violet, pink, cyan, gold};
    for (int i = 0; i < 12; i++) {
        const float turn = 2 * pi * (i + 0.5f) / 12;
        const Point along = turned(from, -turn);
        if (along.x > 1.5f)
            seen.line(along.y, 0.05f + 0.004f * along.x, tints[i % 4] * (0.75f * std::exp(-along.x / 14)),
                      0.12f + 0.03f * along.x);
    }
    for (int i = 0; i < 26; i++) {
        const Point at = {wide * randomAt(i, 1, 6), 2 + 12 * randomAt(i, 2, 6)};
        seen.body(length(Point{(p.x - at.x) * 0.7f, p.y - at.y}) - 0.24f, tints[i % 4] * 0.7f);
    }
    if (circle(from, {}, 1.7f) < 0) {
        const float lit = randomAt(int(from.x * 1.9f + 9), int(from.y * 1.9f + 9), 3);
        seen.colour = (violet * 0.3f + cyan * 0.3f + gold * 0.2f) * (0.3f + lit);
    }
    seen.line(circle(from, {}, 1.7f), 0.10f, light(0.9f, 0.8f, 1), 0.5f);
    if (from.y > 0) seen.line(from.x, 0.06f, violet * 0.6f, 0.1f);
    for (int i = 0; i < int(wide / 3.7f); i++) {
        const float at = 2.2f + 3.7f * i + randomAt(i, 8, 6), size = 0.92f + 0.2f * randomAt(i, 9, 6);
        const Point q = Point{p.x - at, p.y} * (1 / size);
        const float who = i % 3 == 1 ? standing(q) : dancing(q);
        seen.body(who, night);
        if (who > 0) seen.glow(who, 0.18f, pink * 0.25f);
    }
    return seen.colour;
}

// A winter garden under arches; in the last one somebody looks at the stars.
Rgba garden(Point p, float wide) {
    constexpr float pane = 9.5f;
    const int last = int(wide / pane + 0.5f) - 1, arch = std::clamp(int(p.x / pane), 0, last);
    const Point q = {p.x - pane * (arch + 0.5f), p.y};
    const bool stars = arch == last;
    Seen seen{stars ? mix(opaque(0.16f, 0.07f, 0.34f), opaque(0.01f, 0.03f, 0.16f), p.y / tall)
                    : mix(opaque(0.10f, 0.20f, 0.04f), opaque(0.01f, 0.06f, 0.04f), p.y / tall)};
    if (stars) {
        for (int i = 0; i < 16; i++)
            seen.glow(circle(q, {8.4f * (randomAt(i, 1, 9) - 0.5f), 3.5f + 9 * randomAt(i, 2, 9)}, 0.10f),
                      0.16f, mix(cyan, gold, randomAt(i, 3, 9)) * 0.9f);
        seen.body(standing(q - Point{-2.3f, 0}), night);
        seen.body(std::fmin(rod(q, {-1.0f, 6.2f}, {2.6f, 9.4f}, 0.55f),
                            std::fmin(rod(q, {0.6f, 7.4f}, {-0.6f, 0}, 0.16f),
                                      rod(q, {0.6f, 7.4f}, {1.9f, 0}, 0.16f))),
                  night);
        seen.line(rod(q, {-1.0f, 6.2f}, {2.6f, 9.4f}, 0.55f), 0.07f, gold * 0.8f, 0.2f);
    } else {
        const float sag = 11.2f + 0.05f * q.x * q.x;
        seen.line(p.y - sag, 0.05f, gold * 0.5f, 0.1f);
        for (int i = -2; i <= 2; i++)
            seen.glow(circle(q, {1.8f * i, 10.8f + 0.16f * i * i}, 0.26f), 0.6f, gold * 0.9f);
        seen.body(palm(q - Point{arch == 1 ? 1.8f : -1.6f, 0}, arch == 2 ? 4.2f : 6.4f, arch), night);
        seen.body(palm(q - Point{arch == 1 ? -2.4f : 2.6f, 0}, 2.8f, arch + 5), night);
        if (arch == 2) seen.body(standing(q - Point{1.6f, 0}), night);
        seen.body(p.y - 0.9f, night);
    }
    const float spring = 8.8f;
    const float frame = q.y > spring ? length(q - Point{0, spring}) - 4.3f : std::fabs(q.x) - 4.3f;
    seen.body(-frame, night);
    seen.line(frame, 0.12f, gold * 0.9f, 0.25f);
    return seen.colour;
}

// What lies side by side in each of the stretches of a storey, between dark piers.
using Room = Rgba (*)(Point, float);
constexpr Room rooms[house::stretches][house::mostRooms] = {{salon, aquarium, moonlight, barRoom, library},
                                                            {garden, stair, dance, moonlight},
                                                            {dance, barRoom},
                                                            {aquarium, garden}};

Rgba roomsAt(int stretch, float across, float up) {
    constexpr float pier = 1.3f, lintel = 0.9f;
    constexpr float scale = tall / float(house::roomHeight);
    const float all = scale * float(house::lengthOf(stretch));
    Point p = {across * all, up * tall};
    for (int i = 0; i < house::mostRooms; i++) {
        const float wide = all * float(house::shares[stretch][i]);
        if (p.x < wide) {
            const bool dark = std::fmin(p.x, wide - p.x) < pier || tall - p.y < lintel;
            return dark ? night : rooms[stretch][i](p, wide);
        }
        p.x -= wide;
    }
    return night;
}

// A place about a middle, turned to the nearest of `count` spokes.
Point toSpoke(Point p, int count, float from) {
    const float pitch = 2 * pi / count, turn = std::remainder(arcTan(p.y, p.x) - from * pitch, pitch);
    return Point{std::cos(turn), std::sin(turn)} * length(p);
}

// Half of a storey's underside at one of its ends, from where it is painted to the end and from the axis to
// its long side, in units: stained glass, where it reaches out beyond a storey that lies across. Under the
// prow lies a rose, under the terrace a star.
Rgba soffitAt(int end, float across, float up) {
    constexpr float from = float(house::paintedFrom), half = float(house::halfLength),
                    width = float(house::halfWidth);
    const Point p = {from + across * (half - from), up * width}, rose = p - Point{66, 0};
    const float r = length(rose);
    float edge = std::fmin(half - p.x, width - p.y);
    for (int i = 1; i < house::corners; i++) {
        const auto& [x, y] = house::outline[end][i];
        const Point corner = {float(x), float(y)};
        const Point side =
            corner - Point{float(house::outline[end][i - 1].along), float(house::outline[end][i - 1].aside)};
        edge = std::fmin(edge, (side.x * (corner.y - p.y) - side.y * (corner.x - p.x)) / length(side));
    }
    const Rgba deep = opaque(0.003f, 0.004f, 0.026f);
    Seen seen{deep};
    const auto petal = [&](int count, float turn, float low, float high, float wide, Rgba inner, Rgba outer,
                           Rgba own) {
        const float d = leaf(toSpoke(rose, count, turn), low, high, wide);
        if (d < 0) seen.colour = mix(inner, outer, smoothstep(low, high, r));
        seen.line(d, 0.3f, own, 0.2f);
    };
    if (end == 0) {
        petal(12, 0.5f, 8, 22, 2.2f, violet * 0.25f, opaque(0.05f, 0, 0.16f), violet * 0.7f);
        petal(12, 0, 6, 27, 2.5f, pink * 0.40f, opaque(0.12f, 0.004f, 0.16f), pink * 0.8f);
        seen.body(circle(rose, {}, 12.5f), deep);
        seen.line(circle(rose, {}, 12.5f), 0.4f, cyan, 0.3f);
        petal(6, 0.5f, 1.5f, 12, 2.9f, green * 0.5f, opaque(0, 0.14f, 0.16f), green);
        seen.body(circle(toSpoke(rose, 6, 0), {9.4f, 0}, 1.1f), cyan);
        seen.body(circle(rose, {}, 2.2f), gold + opaque(0, 0.10f, 0.15f));
    } else {
        petal(8, 0.5f, 9, 24, 4.4f, cyan * 0.38f, opaque(0.01f, 0.04f, 0.20f), cyan * 0.9f);
        petal(8, 0, 4, 18, 3.4f, amber * 0.75f, opaque(0.30f, 0.01f, 0.10f), gold);
        const float bow = circle(toSpoke(rose, 16, 0.5f), {24.4f, 0}, 4.6f);
        if (r > 24.8f) seen.line(bow, 0.36f, blue, 0.25f);
        seen.body(circle(toSpoke(rose, 8, 0), {21.4f, 0}, 1.2f), pink * 0.9f);
        seen.body(circle(rose, {}, 2.6f), gold + opaque(0, 0.10f, 0.15f));
    }
    seen.line(edge - 3.0f, 0.25f, end == 0 ? pink * 0.5f : violet * 0.5f, 0.25f);
    return seen.colour;
}

// The edge of a slab: a line of light below beads, on its long sides, its ends and its corners.
Rgba edgeAt(int side, float along, float up) {
    const Rgba tints[] = {blue, gold, pink};
    Seen seen{shade};
    const float high = up * float(house::slab);
    seen.line(high - 0.7f, 0.55f, tints[side], 0.30f);
    seen.glow(length(Point{toNearest(along * float(2 * house::halfLength), 4), high - 2.1f}) - 0.35f, 0.2f,
              tints[(side + 1) % 3] * 0.6f);
    return seen.colour;
}

Rgba leavesAt(float across, float up) {
    const float blade = fractalNoise(across * 35, up * 7, 64, 3, 7);
    return mix(opaque(0.006f, 0.035f, 0.022f), opaque(0.16f, 0.40f, 0.10f), smoothstep(-0.1f, 0.45f, blade));
}

Rgba sampleAt(Point place) {
    const auto within = [&](const Cells& cells) {
        return Point{(place.x - float(cells.left)) / float(cells.width),
                     1 - (place.y - float(cells.top)) / float(cells.height)};
    };
    const auto holds = [](Point p) { return unit(p.x) == p.x && unit(p.y) == p.y; };
    for (int i = 0; i < 4; i++)
        if (const Point p = within(atlas::hull::rooms[i]); holds(p)) return roomsAt(i, p.x, p.y);
    for (int i = 0; i < 3; i++)
        if (const Point p = within(atlas::hull::edge(i)); holds(p)) return edgeAt(i, p.x, p.y);
    for (int i = 0; i < house::ends; i++)
        if (const Point p = within(atlas::hull::soffit(i)); holds(p)) return soffitAt(i, p.x, p.y);
    if (const Point p = within(atlas::hull::leaves); holds(p)) return leavesAt(p.x, p.y);
    return shade;
}

}  // namespace

Rgba housesAt(Point place) {
    const Rgba seen = sampleAt(place);
    return {unit(seen.r), unit(seen.g), unit(seen.b), 1};
}
