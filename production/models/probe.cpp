// The satellite of the smoke scene, drawn at 0.3 of its size and never turned, seen from above: a drum of
// gold between two broad blue wings, a dish over it, a row of windows and a beacon. Few parts, each of its
// own colour, so that it reads at some thirty pixels.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/models.h"
#include "production/models/paints.h"

using namespace model;

namespace {

// A drum of gold that lies along z.
Shape body() {
    return turned(lathe({{0, -25}, {12, -25}, {15, -21}, {15, 12}, {9, 18}, {9, 24}, {0, 24}}, 8), Axis::x,
                  pi / 2);
}

// Where the dish's own coordinates (its y axis where it looks) lie on the probe.
Shape onNeck(const Shape& shape) {
    return placed(shape, {0, 17, 8}, {0.25, 1, 0.45});
}

constexpr double dishRadius = 17, dishDeep = 6;

Shape bowl() {
    Outline inside, outside = {{0, -6}, {3, -3}};
    for (int i = 0; i <= 3; i++) {
        const double k = (3 - i) / 3.0;
        inside.push_back({dishRadius * k, dishDeep * k * k});
    }
    return lathe(chained({outside, {{dishRadius + 0.4, dishDeep - 0.6}}, inside}), 16);
}

Shape dishEdge() {
    const double r = dishRadius, y = dishDeep;
    return lathe({{r - 1.6, y - 0.7}, {r + 1.2, y - 0.6}, {r + 1.6, y + 0.6}, {r - 1.6, y + 0.9}}, 16);
}

// On the side of +x, turned a little towards the front.
Shape wing(const Shape& shape) {
    return turned(shape, Axis::x, 0.3);
}

constexpr double wingFrom = 16, wingTo = 45.5, wingHalf = 22;

Shape board() {
    return moved(box({wingTo - wingFrom, 1.6, 2 * wingHalf}, 0), {(wingFrom + wingTo) / 2, 0, 0});
}

// Bright lines round a board, and the spar that it hangs on.
Shape seams() {
    std::vector<Shape> lines = {moved(box({wingTo - 8, 3.4, 2.6}, 0), {(wingTo + 8) / 2, 0, 0})};
    const double middle = (wingFrom + wingTo) / 2, span = wingTo - wingFrom;
    for (const double side : {-1.0, 1.0}) {
        lines.push_back(moved(box({span + 2.6, 3.4, 2.6}, 0), {middle, 0, side * wingHalf}));
        lines.push_back(moved(box({2.6, 3.4, 2 * wingHalf}, 0), {middle + side * span / 2, 0, 0}));
    }
    return joined(lines);
}

Shape facing(const Shape& shape, Vec light) {
    return shaded(shape, [=](Vec, Vec normal) { return normal * 0.3 + light; });
}

// What shines by itself: the wings' and the dish's edges, a beacon before it, and a row of windows.
Shape lamps() {
    const Shape lines = painted(wing(seams()), hull::coolLamp);
    const Shape beacon = moved(icosphere(5.5, 1), {0, 21, 13});
    const Shape windows = moved(box({13, 2, 22}, 0), {0, 14, -11});
    return joined({painted(onNeck(dishEdge()), hull::coolLamp),
                   painted(joined({beacon, windows}), hull::warmLamp), lines, turned(lines, Axis::y, pi)});
}

Shape unlit() {
    const Shape cells = painted(wing(board()), hull::sail);
    return joined({painted(body(), hull::orange), facing(painted(onNeck(bowl()), hull::plain), {0, 0, 1}),
                   facing(joined({cells, turned(cells, Axis::y, pi)}), {0.6, 0.6, 0.6})});
}

constexpr double flyingSize = 0.82;

}  // namespace

// The camera looks down at the same angle all the time: what seems to face straight up mirrors the same
// bright place of the sky from wherever it stands.
void makeProbe(const char* path) {
    const auto upwards = [](Vec, Vec) { return Vec{0, 1, 0}; };
    const Shape whole = joined({unlit(), shaded(lamps(), upwards)});
    writeAml(path, {scaled(whole, {flyingSize, flyingSize, flyingSize})});
}
