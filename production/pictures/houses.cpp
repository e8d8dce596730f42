#include "production/pictures/houses.h"

#include "production/kit/picture/noise.h"
#include "production/kit/picture/shapes.h"
#include "production/shared/atlas.h"
#include "production/shared/house.h"

using namespace picture;
using atlas::Cells;

namespace {

const Rgba night = opaque(0.006f, 0.005f, 0.014f), shade = opaque(0.036f, 0.010f, 0.062f);
const Rgba gold = light(1, 0.60f, 0.16f), amber = light(1, 0.42f, 0.08f), cyan = light(0.16f, 0.80f, 1),
           pink = light(1, 0.16f, 0.48f), magenta = light(0.95f, 0.06f, 0.60f),
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

// Rooms, from their lower left.
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

void cat(Seen& seen, Point p, float size) {
    p = p * (1 / size);
    float body = std::fmin(leaf({p.y + 0.5f, p.x}, 0, 4.2f, 1.25f), circle(p, {0.2f, 3.4f}, 0.85f));
    body = std::fmin(body, std::fmin(leaf({p.y - 3.6f, p.x + 0.3f}, 0, 1.4f, 0.25f),
                                     leaf({p.y - 3.6f, p.x - 0.7f}, 0, 1.4f, 0.25f)));
    seen.body(std::fmin(body, rod(p, {-0.8f, 0.3f}, {-2.6f, 1.4f}, 0.22f)), night);
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

// A robot, from where its feet are, which strikes to its right.
float machine(Point p) {
    const float trunk =
        std::fmin(box(p, {0, 4.9f}, {1.7f, 1.7f}, 0.3f), box(p, {0.2f, 8.0f}, {1.2f, 0.9f}, 0.2f));
    const float legs = std::fmin(box(p, {-1, 1.6f}, {0.5f, 1.6f}), box(p, {1, 1.6f}, {0.5f, 1.6f}));
    const float aerial =
        std::fmin(rod(p, {0.2f, 8.8f}, {0.2f, 10.4f}, 0.16f), circle(p, {0.2f, 10.4f}, 0.4f));
    const float arm = std::fmin(rod(p, {1.4f, 6}, {4, 7.6f}, 0.4f), box(p, {4.4f, 8.1f}, {1.2f, 0.7f}));
    return std::fmin(std::fmin(trunk, legs), std::fmin(aerial, arm));
}

// A fish drawn by lines, 8 long, which swims to the right.
void fish(Seen& seen, Point p, float size, Rgba own) {
    p = p * (1 / size);
    const float wide = 0.22f / size, flesh = leaf(p, -2.6f, 4, 1.5f);
    const float tail = std::fmax(std::fabs(p.y) - 0.75f * (-1.9f - p.x), -4 - p.x);
    seen.line(tail, wide, own, 0.15f);
    seen.body(flesh, own * 0.25f);
    seen.line(flesh, wide, own, 0.15f);
    seen.body(circle(p, {2.5f, 0.3f}, 0.3f), own);
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

// The front, from its lower left corner, in units: under the sign of a fish a shop that a cat keeps.
Rgba gableAt(Point p) {
    constexpr float half = float(house::halfWidth), high = float(house::high), top = float(house::ceiling);
    constexpr float rise = high - float(house::wall);
    const Point q = {p.x - half, p.y};
    const float slope = ((high - q.y) * half - std::fabs(q.x) * rise) / std::hypot(rise, half);
    const float edge = std::fmin(slope, half - std::fabs(q.x));
    if (edge < -1) return shade;
    if (edge < float(house::lining)) return (q.y > float(house::wall) - 1 ? magenta : teal) * 0.65f;
    Seen seen{shade};
    if (q.y > top + 1) {
        fish(seen, q - Point{-0.8f, 21.5f}, 2, gold);
        return seen.colour;
    }
    const float window = box(q, {-5, 7.6f}, {13, 6}), door = box(q, {14, 6.8f}, {4, 6.8f});
    if (window < 0) {
        seen.colour = mix(light(0.85f, 0.42f, 0.06f), light(0.28f, 0.05f, 0.05f), q.y / top);
        for (const float at : {-15.0f, -11.0f, -7.0f}) {
            seen.body(std::fabs(q.x - at) + (q.y < 10 ? 1.0f : -0.12f), night);
            seen.body(leaf({q.y - 6, q.x - at}, 0, 4.4f, 0.9f), night);
        }
        cat(seen, q - Point{1.5f, 4.4f}, 1.9f);
        seen.body(q.y - 4.6f, night);
        seen.line(q.y - 4.6f, 0.15f, pink);
    }
    if (door < 0) {
        seen.colour = mix(light(0.06f, 0.66f, 0.62f), light(0.01f, 0.20f, 0.34f), q.y / top);
        seen.body(standing(q - Point{14, 0.4f}), night);
    }
    seen.line(window, 0.25f, magenta * 0.8f);
    seen.line(door, 0.25f, teal);
    return seen.colour;
}

// A window high up in the core's side, from its lower left corner, in units.
Rgba coreAt(Point p) {
    constexpr float wide = 2 * float(house::core), high = float(house::storeyHigh);
    Seen seen{mix(opaque(0.05f, 0.008f, 0.08f), opaque(0.02f, 0.004f, 0.05f), p.y / high)};
    const float d = std::fmax(circle(p, {wide * 0.32f, 7}, 6), 6 - p.y);
    if (d < 0) seen.colour = mix(gold * 0.8f, light(0.5f, 0.05f, 0.10f), unit((p.y - 6) / 7));
    seen.body(std::fmax(std::fabs(p.x - wide * 0.32f) - 0.4f, d), night);
    seen.line(d, 0.25f, gold * 0.8f);
    seen.line(std::remainder(p.y - 1, high), 0.35f, magenta * 0.7f);
    for (const float at : {0.66f, 0.74f, 0.82f}) seen.line(p.x - wide * at, 0.3f, teal * 0.6f, 0.2f);
    seen.line(std::fmin(p.x, wide - p.x) - 0.9f, 0.7f, violet);
    return seen.colour;
}

// The core's side behind the stairs: a lit arch, and somebody who looks out of it.
Rgba stairsAt(Point p) {
    constexpr float wide = 2 * float(house::core), high = float(house::storeyHigh);
    Seen seen{opaque(0.03f, 0.006f, 0.06f)};
    const Point q = p - Point{wide * 0.3f, 9.5f};
    const float arch = box(q, {0, 3.4f}, {5, 6}, 4.9f);
    if (arch < 0) seen.colour = mix(cyan * 0.7f, light(0.02f, 0.16f, 0.42f), unit(0.5f + q.y / 14));
    seen.body(std::fmax(standing(q - Point{0, -2}), arch), night);
    seen.line(arch, 0.3f, cyan);
    seen.line(std::fmin(p.x, wide - p.x) - 0.9f, 0.7f, violet);
    seen.line(std::remainder(p.y, high), 0.4f, violet * 0.6f);
    return seen.colour;
}

// The workshop, from its wall's lower left corner, in units: a great wheel before its fire, and at the gate a
// robot that strikes sparks.
Rgba workshopAt(Point p) {
    const Point hub = p - Point{float(house::wheelX), float(house::wheelY)};
    const float away = length(hub);
    if (away < float(house::wheel) + 1) {
        Seen seen{mix(light(1, 0.66f, 0.22f), light(0.60f, 0.10f, 0.02f), unit(away / float(house::wheel)))};
        const Point cog = hub - Point{-1.4f, -1.4f};
        const float turn = arcTan(cog.y, cog.x), radius = 5 + (std::cos(10 * turn) > 0 ? 0.6f : -0.4f);
        const float rim = std::fmax(length(cog) - radius, 3.4f - length(cog));
        const float spoke = std::fabs(std::remainder(turn, pi / 3)) * length(cog) - 0.5f;
        seen.body(std::fmin(rim, std::fmin(std::fmax(spoke, length(cog) - 4), length(cog) - 1.4f)), night);
        seen.line(away - float(house::wheel) + 0.6f, 0.6f, teal);
        return seen.colour;
    }
    const auto& [left, right, low, high] = house::gate;
    if (p.x < left - 1 || p.x > right + 1) return shade;
    const Point q = p - Point{float(left), float(low)};
    Seen seen{mix(light(0.10f, 0.78f, 0.70f), light(0.01f, 0.18f, 0.30f), unit(q.y / float(high)))};
    const Point anvil = {14, 3.4f};
    seen.body(machine(q - Point{8, 0}), night);
    seen.body(
        std::fmin(box(q, anvil - Point{0, 0.6f}, {3, 0.7f}), box(q, anvil - Point{0, 2.2f}, {1.2f, 1.6f})),
        night);
    seen.glow(length(q - anvil), 0.9f, gold);
    for (int i = 0; i < 9; i++) {
        const float turn = 0.25f + 0.33f * float(i), reach = 3 + 3 * randomAt(i, 4, 2);
        const Point way = {std::cos(turn), std::sin(turn)};
        seen.line(segment(q, anvil + way * (reach * 0.4f), anvil + way * reach), 0.09f, gold, 0.15f);
    }
    return seen.colour;
}

// The flat: somebody with a book under a lamp, two who dance, a cat before the moon.
Rgba flatAt(Point p) {
    for (const house::Window& room : house::rooms) {
        if (p.x < room.left - 1 || p.x > room.right + 1) continue;
        const Point inside = p - Point{float(room.middle()), float(room.low)};
        const bool moonlit = &room == &house::rooms[2];
        Seen seen{moonlit ? mix(light(0.05f, 0.36f, 0.60f), light(0.01f, 0.10f, 0.30f), inside.y / tall)
                          : mix(light(0.95f, 0.40f, 0.08f), light(0.40f, 0.06f, 0.12f), inside.y / tall)};
        if (moonlit) {
            const float moon = circle(inside, {1.5f, 9.5f}, 2.4f);
            seen.glow(moon, 2.4f, cyan * 0.3f);
            seen.body(moon, cyan);
            cat(seen, inside - Point{-0.6f, 4.4f}, 1);
            seen.body(inside.y - 4.6f, night);
        } else if (&room == &house::rooms[1]) {
            twoWhoDance(seen, inside + Point{5, 0});
        } else {
            pendant(seen, inside - Point{1.6f, 11}, {}, gold);
            seen.body(seated(inside - Point{-1, 0}), night);
            seen.body(rod(inside, {-2.4f, 2.4f}, {-2.6f, 6.4f}, 0.45f), night);
            seen.body(box(inside, {6, 5}, {1.6f, 5}), night);
        }
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
    for (const auto& [wall, paint] : {std::pair{house::workshop, &workshopAt}, {house::flat, &flatAt}})
        if (const auto [holds, p] = within(atlas::hull::houseWall(wall), house::depth, house::wall); holds)
            return p.y > float(house::wall - house::lining) - 0.5f
                       ? (wall == house::flat ? magenta : teal) * 0.8f
                       : paint(p);
    if (const auto [holds, p] = within(atlas::hull::stairs, 2 * house::core, house::storeyHigh); holds)
        return stairsAt(p);
    if (const auto [holds, p] = within(atlas::hull::soffit, house::depth, house::halfWidth); holds)
        return soffitAt(p);
    if (const auto [holds, p] = within(atlas::hull::core, 2 * house::core, house::storeyHigh); holds)
        return coreAt(p);
    const Rgba paints[atlas::hull::housePaints] = {gold * 0.5f, magenta * 0.55f, teal * 0.6f};
    for (int i = 0; i < atlas::hull::housePaints; i++)
        if (within(atlas::hull::housePaint(i), 1, 1).first) return paints[i];
    return shade;
}

}  // namespace

Rgba housesAt(Point place) {
    const Rgba seen = sampleAt(place);
    return {unit(seen.r), unit(seen.g), unit(seen.b), 1};
}
