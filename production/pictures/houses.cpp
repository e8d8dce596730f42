#include "production/pictures/houses.h"

#include "production/kit/picture/noise.h"
#include "production/kit/picture/shapes.h"
#include "production/shared/atlas.h"
#include "production/shared/house.h"

using namespace picture;
using atlas::Cells;

namespace {

const Rgba night = opaque(0.006f, 0.005f, 0.014f), shade = opaque(0.036f, 0.010f, 0.062f);
const Rgba gold = light(1, 0.60f, 0.16f), blue = light(0.14f, 0.44f, 1), amber = light(1, 0.42f, 0.08f),
           cyan = light(0.16f, 0.80f, 1), pink = light(1, 0.16f, 0.48f), magenta = light(0.95f, 0.06f, 0.60f),
           violet = light(0.42f, 0.12f, 1), teal = light(0.02f, 0.62f, 0.60f);

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
float seated(Point p) {
    const float body = std::fmin(circle(p, {0.2f, 6.2f}, 0.85f), rod(p, {0, 2.9f}, {0, 4.5f}, 0.9f));
    const float legs =
        std::fmin(rod(p, {0, 2.7f}, {2.0f, 2.7f}, 0.5f), rod(p, {2.0f, 2.7f}, {2.2f, 0.3f}, 0.4f));
    return std::fmin(std::fmin(body, legs), rod(p, {0.3f, 4.4f}, {2.4f, 4.0f}, 0.35f));
}

// Rooms, from their lower left, in units of their own.
constexpr float tall = 13.8f, roomHalf = 5;

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

// A fish that swims to the right, drawn by lines.
void bigFish(Seen& seen, Point p) {
    constexpr float size = 2.2f, wide = 0.10f / size;
    p = (p - Point{roomHalf + 1, 7}) * (1 / size);
    const float body = leaf(p, -4, 4, 1.7f);
    const float tail = std::fmax(std::fabs(p.y) - 0.55f * (-3.2f - p.x), -5.6f - 0.5f * std::fabs(p.y) - p.x);
    if (body < 0) seen.colour = mix(amber * 0.10f, amber * 0.34f, unit(0.5f - p.y / 3)) + opaque(0, 0, 0.02f);
    if (tail < 0 && p.x < -3.2f) seen.colour = amber * 0.22f;
    seen.line(body, wide, amber);
    if (p.x < -3.2f) seen.line(tail, wide, amber * 0.9f);
    if (body < 0)
        for (const float at : {-2.4f, -1.2f, 0.0f, 1.2f})
            seen.line(length(p - Point{at - 1.5f, 0}) - 1.7f + (p.x < at - 1.5f ? 9.0f : 0.0f), wide * 0.6f,
                      amber * 0.6f, 0.1f);
    seen.body(circle(p, {2.6f, 0.35f}, 0.34f), amber + opaque(0.1f, 0.1f, 0.1f));
}

// A place about a star's middle, turned to the nearest of its eight points.
Point toPoint(Point p, float from) {
    constexpr float pitch = pi / 4;
    const float turn = std::remainder(arcTan(p.y, p.x) - from * pitch, pitch);
    return Point{std::cos(turn), std::sin(turn)} * length(p);
}

// Half of a house's underside, from the core to its front and from the axis to its wall, in units: a star of
// stained glass.
Rgba soffitAt(Point p) {
    const Rgba deep = opaque(0.003f, 0.004f, 0.026f);
    const Point star = p - Point{float(house::depth) / 2, 0};
    Seen seen{deep};
    const auto petals = [&](float turn, float low, float high, float wide, Rgba inner, Rgba outer, Rgba own) {
        const float d = leaf(toPoint(star, turn), low, high, wide);
        if (d < 0) seen.colour = mix(inner, outer, smoothstep(low, high, length(star)));
        seen.line(d, 0.4f, own, 0.2f);
    };
    petals(0.5f, 8, 21, 4.0f, violet * 0.3f, opaque(0.08f, 0.01f, 0.16f), magenta * 0.8f);
    petals(0, 4, 17, 3.4f, amber * 0.5f, opaque(0.24f, 0.01f, 0.06f), gold * 0.7f);
    seen.body(circle(star, {}, 2.6f), gold * 0.8f);
    const float edge = std::fmin(float(house::halfWidth) - p.y, float(house::depth) - p.x);
    seen.line(edge - 1.2f, 0.6f, violet * 0.8f, 0.3f);
    return seen.colour;
}

// The front, from its lower left corner, in units: a rose under the ridge, and below it somebody under a lamp
// and a tree in moonlight.
Rgba gableAt(Point p) {
    constexpr float half = float(house::halfWidth), high = float(house::high), floor = 4, ceiling = 16;
    constexpr float rise = high - float(house::wall);
    const Point q = {p.x - half, p.y};
    const float slope = ((high - q.y) * half - std::fabs(q.x) * rise) / std::hypot(rise, half);
    const float edge = std::fmin(std::fmin(slope, half - std::fabs(q.x)), q.y);
    if (edge < -1 || (edge > float(house::lining) + 0.5f && edge < float(house::frame) - 0.5f)) return shade;
    if (edge < float(house::frame) - 0.5f)
        return (q.y > float(house::wall) ? magenta * 0.75f : blue) * (q.y < 3 ? 0.4f : 1);
    if (q.y > ceiling) {
        Seen seen{opaque(0.10f, 0.01f, 0.10f)};
        const Point rose = q - Point{0, 20.6f};
        const float petal = leaf(toPoint(rose, 0), 1.2f, 5.4f, 1.3f);
        seen.body(petal, magenta * 0.7f);
        seen.line(petal, 0.16f, pink);
        seen.body(circle(rose, {}, 1.1f), gold);
        seen.line(circle(rose, {}, 5.8f), 0.2f, violet);
        seen.line(q.y - ceiling, 0.5f, magenta);
        return seen.colour;
    }
    const bool within = q.x < 1;
    Seen seen{within ? mix(light(0.86f, 0.36f, 0.06f), light(0.34f, 0.06f, 0.02f), q.y / ceiling)
                     : mix(light(0.02f, 0.32f, 0.34f), light(0.01f, 0.08f, 0.20f), q.y / ceiling)};
    if (within) {
        seen.glow(length(q - Point{-6, 14}), 4, light(0.7f, 0.4f, 0.1f));
        seen.body(std::fmax(circle(q, {-6, 13}, 2.4f), 13 - q.y), night);
        seen.body(standing(q - Point{-12, floor}), night);
        seen.body(box(q, {-4, 6}, {3, 0.4f}), night);
    } else {
        const float moon = circle(q, {14.5f, 12.4f}, 1.8f);
        seen.glow(moon, 2, cyan * 0.3f);
        seen.body(moon, cyan);
        seen.body(std::fmin(rod(q, {8.5f, floor}, {8.5f, 10}, 0.55f), circle(q, {8.5f, 10.4f}, 3.2f)),
                  teal * 0.35f);
        seen.line(circle(q, {8.5f, 10.4f}, 3.2f), 0.2f, teal);
    }
    seen.body(std::fabs(q.x - 1) - 0.6f, night);
    return seen.colour;
}

// A side of the core, from its lower left corner, in units: a flight of stairs up to the next side's, and
// above and below it a window.
Rgba coreAt(Point p) {
    constexpr float wide = 2 * float(house::core), high = float(house::storeyHigh), steps = 10;
    Seen seen{mix(opaque(0.05f, 0.008f, 0.08f), opaque(0.02f, 0.004f, 0.05f), p.y / high)};
    const auto window = [&](Point middle, Rgba own) {
        const float d = box(p, middle, {4.5f, 5.0f}, 4.4f);
        if (d < 0) seen.colour = mix(own, own * 0.3f, unit((p.y - middle.y) / 10 + 0.5f));
        seen.line(d, 0.25f, own);
        seen.body(std::fmax(std::fabs(p.x - middle.x) - 0.3f, d), night);
    };
    window({12.5f, 13}, gold * 0.9f);
    window({33.5f, 6.5f}, teal);
    const float tread = (std::floor(p.x / wide * steps) + 0.5f) / steps * high;
    const float rise = std::fmin(std::fabs(p.y - tread), std::fabs(p.y - tread + high));
    seen.body(rise - 0.8f, magenta * 0.6f);
    const float rail = p.x / wide * high + 4, above = std::fabs(std::remainder(p.y - rail, high));
    seen.line(above, 0.25f, pink * 0.8f);
    seen.line(std::fmin(p.x, wide - p.x) - 0.9f, 0.7f, violet);
    return seen.colour;
}

// Behind the walls' windows, over walls that darken upwards.
struct Room {
    void (*paint)(Seen& seen, Point p);
    Rgba low, high;
};
const Room rooms[house::walls][house::windowsEach] = {
    {{twoWhoDance, opaque(0.80f, 0.30f, 0.06f), opaque(0.25f, 0.05f, 0.04f)},
     {atThePiano, opaque(0.80f, 0.34f, 0.06f), opaque(0.25f, 0.07f, 0.02f)}},
    {{bigFish, opaque(0.002f, 0.05f, 0.20f), opaque(0.006f, 0.30f, 0.60f)},
     {catAtItsWindow, opaque(0.80f, 0.34f, 0.06f), opaque(0.25f, 0.07f, 0.02f)}}};

Rgba wallAt(int side, Point p) {
    constexpr float scale = tall / float(house::lintel - house::sill);
    if (p.y > float(house::lintel) + 1) return side == 0 ? violet : teal;
    for (int i = 0; i < house::windowsEach; i++) {
        const auto& [left, right] = house::windows[side][i];
        const auto& [paint, low, high] = rooms[side][i];
        if (p.x < left - 1 || p.x > right + 1) continue;
        const Point inside = (p - Point{float(left + right) / 2, float(house::sill)}) * scale;
        Seen seen{mix(low, high, inside.y / tall)};
        paint(seen, inside + Point{roomHalf, 0});
        return seen.colour;
    }
    return shade;
}

Rgba sampleAt(Point place) {
    const auto within = [&](const Cells& cells, double wide, double high) {
        const Point p = {(place.x - float(cells.left)) / float(cells.width),
                         1 - (place.y - float(cells.top)) / float(cells.height)};
        return std::pair{unit(p.x) == p.x && unit(p.y) == p.y, Point{p.x * float(wide), p.y * float(high)}};
    };
    if (const auto [holds, p] = within(atlas::hull::gable, 2 * house::halfWidth, house::high); holds)
        return gableAt(p);
    for (int i = 0; i < house::walls; i++)
        if (const auto [holds, p] = within(atlas::hull::houseWall(i), house::depth, house::wall); holds)
            return wallAt(i, p);
    if (const auto [holds, p] = within(atlas::hull::soffit, house::depth, house::halfWidth); holds)
        return soffitAt(p);
    if (const auto [holds, p] = within(atlas::hull::core, 2 * house::core, house::storeyHigh); holds)
        return coreAt(p);
    if (const auto [holds, p] = within(atlas::hull::brace, 1, 1); holds) return gold * 0.5f;
    return shade;
}

}  // namespace

Rgba housesAt(Point place) {
    const Rgba seen = sampleAt(place);
    return {unit(seen.r), unit(seen.g), unit(seen.b), 1};
}
