// The satellite of the smoke scene, drawn at 0.3 of its size and never turned, seen from above: a gold body
// between two broad wings, a small dish before it, a mast above and a boom behind. Few parts, each of its own
// brightness, and wings whose edges shine, so that it reads at some twenty pixels. All fourteen are one
// model, and what tells them apart is the light in their middle: each wing and the dish face another way, so
// that it lights one or the other.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/models.h"
#include "production/models/paints.h"

using namespace model;

namespace {

Shape body() {
    return lathe({{0, -20}, {10, -20}, {16, -14}, {16, 9}, {11, 15}, {0, 15}}, 6);
}

// Between two heights of the y axis.
Shape stick(double radius, double from, double to) {
    return lathe({{0, from}, {radius, from}, {radius, to}, {0, to}}, 6);
}

Shape ball(double radius, Vec place) {
    return moved(icosphere(radius, 1), place);
}

// Where the dish's own coordinates (its y axis where it looks) lie on the probe.
Shape onNeck(const Shape& shape) {
    return placed(shape, {0, 9, 22}, {0.3, 0.75, 1});
}

constexpr double dishRadius = 13, dishDeep = 5;

Shape bowl() {
    Outline inside, outside = {{0, -2}};
    for (int i = 0; i <= 3; i++) {
        const double k = (3 - i) / 3.0;
        inside.push_back({dishRadius * k, dishDeep * k * k});
    }
    outside.push_back({dishRadius * 0.6, dishDeep * 0.36 - 1.6});
    return lathe(chained({outside, {{dishRadius + 0.4, dishDeep - 0.6}}, inside}), 16);
}

Shape dishEdge() {
    const double r = dishRadius, y = dishDeep;
    return lathe({{r - 1.2, y - 0.7}, {r + 1.2, y - 0.6}, {r + 1.6, y + 0.6}, {r - 1.2, y + 0.9}}, 16);
}

// On the side of +x, turned a little towards the front.
Shape wing(const Shape& shape) {
    return moved(turned(shape, Axis::x, 0.5), {0, -4, 0});
}

constexpr double wingFrom = 19, wingTo = 46.2, wingHalf = 18.5;

Shape board() {
    return moved(box({wingTo - wingFrom, 1.6, 2 * wingHalf}, 0), {(wingFrom + wingTo) / 2, 0, 0});
}

// Bright lines round and across a board.
Shape seams() {
    std::vector<Shape> lines;
    const double middle = (wingFrom + wingTo) / 2, span = wingTo - wingFrom;
    for (const double side : {-1.0, 1.0})
        lines.push_back(moved(box({span + 2.2, 3, 2.2}, 0), {middle, 0, side * wingHalf}));
    for (int i = 0; i <= 2; i++)
        lines.push_back(moved(box({2.2, 3, 2 * wingHalf}, 0), {wingFrom + i * span / 2, 0, 0}));
    return joined(lines);
}

Shape facing(const Shape& shape, Vec light) {
    return shaded(shape, [=](Vec, Vec normal) { return normal * 0.5 + light; });
}

// What shines by itself.
Shape lamps() {
    const Shape tips = joined({ball(5.4, {0, 36, 0}), ball(4.4, {0, -4, -40})});
    const Shape lines = painted(wing(seams()), hull::coolLamp);
    return joined({painted(onNeck(dishEdge()), hull::coolLamp), painted(tips, hull::warmLamp), lines,
                   turned(lines, Axis::y, pi)});
}

Shape unlit() {
    const Shape spars = joined({stick(1.1, 10, 36), placed(stick(1.2, -48, 48), {0, -4, 0}, {1, 0, 0}),
                                placed(stick(1.1, 8, 40), {0, -4, 0}, {0, 0, -1}),
                                placed(stick(1.5, 8, 20), {0, 4, 0}, {0, 0.2, 1})});
    const Shape cells = painted(wing(board()), hull::sail);
    return joined({painted(body(), hull::orange), painted(spars, hull::dark),
                   facing(painted(onNeck(bowl()), hull::plain), {0, 0, 1}), facing(cells, {1, 0, 0.3}),
                   facing(turned(cells, Axis::y, pi), {-1, 0, 0.3})});
}

constexpr double flyingSize = 0.99;

}  // namespace

// The camera looks down at the same angle all the time: what seems to face straight up mirrors the same
// bright place of the sky from wherever it stands.
void makeProbe(const char* path) {
    const auto upwards = [](Vec, Vec) { return Vec{0, 1, 0}; };
    const Shape whole = joined({unlit(), shaded(lamps(), upwards)});
    writeAml(path, {scaled(whole, {flyingSize, flyingSize, flyingSize})});
}
