// The satellite of the smoke scene, drawn at 0.3 of its size and never turned, seen from above: a drum with a
// dish on top and a broad panel on either side, few and large parts that read at some forty pixels.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/kit/model/paints.h"
#include "production/models/figures.h"
#include "production/models/models.h"

using namespace model;

namespace {

Shape drum() {
    const Outline wall = platedProfile({-16, -8, 2, 10}, {2, 2, 1.4, 6},
                                       [](double y) { return 17 - 0.012 * (y + 3) * (y + 3); });
    const Outline profile = chained({{{0, -18}, {7, -17.4}}, wall, {{12, 11}, {8, 13}, {5, 14}, {0, 14}}});
    return flutedLathe(profile, {6, 0.22, 2, -15, 9, 3});
}

Shape nozzle() {
    return lathe({{0, -24}, {6, -24}, {10, -33}, {11.4, -33}, {9, -22}, {7, -17}, {0, -17}}, 16);
}

Shape mast() {
    return lathe({{0, 12}, {4, 12}, {2.6, 15}, {2.2, 21}, {0, 21}}, 10);
}

Shape belt() {
    return lathe({{17, -5.6}, {19.6, -5}, {20.6, -3}, {19.6, -1}, {17, -0.4}}, 20);
}

// Where the dish's own coordinates (its y axis where it looks) lie on the probe.
Shape onMast(const Shape& shape) {
    return placed(scaled(shape, {0.86, 0.86, 0.86}), {0, 19, 0}, {0.16, 1, 0.42});
}

Shape bowl() {
    Outline inside, outside;
    for (int i = 0; i <= 6; i++) {
        const double r = 22 * i / 6.0;
        inside.push_back({22 - r, 0.021 * (22 - r) * (22 - r)});
        outside.push_back({r, 0.021 * r * r - 2});
    }
    return lathe(chained({outside, {{22.6, 9.4}}, inside}), 24);
}

// Its edge, and the receiver over its middle.
Shape dishTrim() {
    const Shape edge = lathe({{21.4, 8.2}, {23.4, 8.6}, {24, 10}, {23, 11.4}, {21.6, 10.8}}, 24);
    const Shape receiver =
        lathe({{0, 0}, {1.4, 0}, {1, 13}, {3.4, 14.4}, {3.4, 18}, {1.6, 20}, {0, 20.4}}, 10);
    return joined({edge, receiver});
}

// On the side of +x, turned a little towards the front.
Shape wing(const Shape& shape) {
    return moved(turned(shape, Axis::x, 0.30), {0, -3, 0});
}

Shape board() {
    const Shape plate = moved(box({28, 2, 26}, 0.8), {36, 0, 0});
    const Shape arm = placed(lathe({{0, 15}, {2.6, 15}, {2.6, 24}, {0, 24}}, 8), {}, {1, 0, 0});
    return joined({plate, arm});
}

Shape cells() {
    std::vector<Shape> tiles;
    for (int column = 0; column < 3; column++)
        for (int row = 0; row < 2; row++)
            for (int face = -1; face <= 1; face += 2)
                tiles.push_back(
                    moved(box({7.4, 0.8, 11.6}, 0.3), {27.4 + column * 8.6, face * 1.2, row * 13.0 - 6.5}));
    return joined(tiles);
}

}  // namespace

Shape figures::probe() {
    const auto bothSides = [](const Shape& shape) { return around(wing(shape), 2, Axis::y); };
    return joined({painted(drum(), hull::plain), painted(nozzle(), hull::dark), painted(mast(), hull::orange),
                   painted(belt(), hull::orange), painted(onMast(bowl()), hull::coolLamp),
                   painted(onMast(dishTrim()), hull::orange), painted(bothSides(board()), hull::dark),
                   painted(bothSides(cells()), hull::coolLamp)});
}

void makeProbe(const char* path) {
    writeAml(path, {figures::probe()});
}
