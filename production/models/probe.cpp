// The satellite of the smoke scene, drawn at 0.3 of its size and never turned, seen from above: a gold drum
// between two dark panels, under a broad dish, with a mast above and a boom below. Few and large parts, each
// of its own brightness, that read at some sixty pixels.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/figures.h"
#include "production/models/models.h"
#include "production/models/paints.h"

using namespace model;

namespace {

Shape drum() {
    const Outline wall = platedProfile({-20, -10, 0}, {2, 2, 1.4, 6}, [](double) { return 15.0; });
    const Outline profile = chained({{{0, -22}, {8, -22}, {13, -20.5}}, wall, {{12, 2}, {6, 5}, {0, 5}}});
    return flutedLathe(profile, {6, 0.22, 2, -18, -1, 3});
}

Shape belt() {
    return lathe({{15, -12.6}, {17.6, -12}, {18.6, -10}, {17.6, -8}, {15, -7.4}}, 12);
}

// A stick along the axis with a ball at its far end.
Shape antenna(double from, double to, double ball) {
    const Shape stick = lathe({{0, std::min(from, to)},
                               {1.5, std::min(from, to)},
                               {1.5, std::max(from, to)},
                               {0, std::max(from, to)}},
                              6);
    return joined({stick, moved(icosphere(ball, 1), {0, to, 0})});
}

// Where the dish's own coordinates (its y axis where it looks) lie on the probe.
Shape onNeck(const Shape& shape) {
    return placed(shape, {0, 9, 0}, {0.20, 1, 0.34});
}

constexpr double dishRadius = 29;

Shape bowl() {
    Outline inside, outside;
    for (int i = 0; i <= 4; i++) {
        const double left = dishRadius * (4 - i) / 4.0;
        inside.push_back({left, 0.013 * left * left});
    }
    for (int i = 0; i <= 2; i++) {
        const double r = dishRadius * i / 2.0;
        outside.push_back({r, 0.013 * r * r - 2});
    }
    return lathe(chained({outside, {{dishRadius + 0.6, 9.6}}, inside}), 20);
}

Shape dishEdge() {
    const double r = dishRadius;
    return lathe({{r - 2, 9.2}, {r + 1.6, 9.4}, {r + 2.4, 11}, {r + 1.2, 12.6}, {r - 2, 12}}, 20);
}

// Over its middle.
Shape receiver() {
    return lathe({{0, 0}, {1.6, 0}, {1.2, 15}, {4.6, 16.4}, {4.6, 21}, {2, 23}, {0, 23.4}}, 6);
}

// On the side of +x, turned a little towards the front.
Shape wing(const Shape& shape) {
    return moved(turned(shape, Axis::x, 0.34), {0, -9, 0});
}

constexpr double wingFrom = 19, wingTo = 46, wingHalf = 17;

Shape board() {
    const Shape plate =
        moved(box({wingTo - wingFrom, 2, 2 * wingHalf}, 0.8), {(wingFrom + wingTo) / 2, 0, 0});
    return joined(
        {plate, placed(lathe({{0, 13}, {2.6, 13}, {2.6, wingFrom}, {0, wingFrom}}, 6), {}, {1, 0, 0})});
}

// Bright lines round and across a board.
Shape seams() {
    std::vector<Shape> lines;
    const double middle = (wingFrom + wingTo) / 2, span = wingTo - wingFrom;
    for (int i = -1; i <= 1; i++) {
        lines.push_back(moved(box({span + 1.6, 3, 1.6}, 0.4), {middle, 0, i * wingHalf}));
        lines.push_back(moved(box({1.6, 3, 2 * wingHalf + 1.6}, 0.4), {middle + i * span / 2, 0, 0}));
    }
    return joined(lines);
}

// What shines by itself.
Shape lamps() {
    return painted(joined({belt(), onNeck(dishEdge())}), hull::coolLamp);
}

Shape unlit() {
    const auto bothSides = [](const Shape& shape) { return around(wing(shape), 2); };
    return joined({painted(drum(), hull::orange), painted(antenna(-22, -46, 3.4), hull::warmLamp),
                   painted(onNeck(bowl()), hull::dark), painted(onNeck(receiver()), hull::orange),
                   painted(bothSides(board()), hull::dark), painted(bothSides(seams()), hull::coolLamp)});
}

}  // namespace

Shape figures::probe() {
    return joined({unlit(), lamps()});
}

// Of those that fly; those that hang in the hall are larger.
constexpr double flyingSize = 0.72;

// The camera looks down at the same angle all the time: what seems to face straight up mirrors the same
// bright place of the sky from wherever it stands.
void makeProbe(const char* path) {
    const auto upwards = [](Vec, Vec) { return Vec{0, 1, 0}; };
    const Shape whole = joined({unlit(), shaded(lamps(), upwards)});
    writeAml(path, {scaled(whole, {flyingSize, flyingSize, flyingSize})});
}
