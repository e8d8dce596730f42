// The satellite of the smoke scene, drawn at 0.3 of its size and never turned: a ribbed core in a ring, four
// sails outside it, so that it reads from above at some forty pixels.
#include "production/kit/model_aml.h"
#include "production/kit/model_forms.h"
#include "production/kit/model_mapping.h"
#include "production/kit/model_paints.h"
#include "production/models/models.h"

using namespace model;

namespace {

Shape core() {
    const Outline wall = platedProfile({-18, -10, -3.5, 3.5, 10, 18}, {2, 2, 1.4, 6},
                                       [](double y) { return 14.5 - 0.017 * y * y; });
    const Outline profile = chained({{{0, -20}, {6, -19}}, wall, {{7, 18.6}, {6, 22}, {3.6, 24}, {0, 25}}});
    return flutedLathe(profile, {6, 0.22, 1.8, -17, 17, 2});
}

// The aerial above and the lamp below.
Shape mast() {
    return lathe({{0, -33},
                  {3, -31.4},
                  {3, -29},
                  {1.8, -27},
                  {1.8, 24},
                  {1.6, 33},
                  {3.4, 34.4},
                  {3.4, 37},
                  {1.8, 39},
                  {0, 39.4}},
                 8);
}

Shape ring() {
    const Outline section = {{21, 0},     {22.4, -3}, {26.4, -4}, {29.4, -2.2},
                             {29.4, 2.2}, {26.4, 4},  {22.4, 3},  {21, 0}};
    return panelled(lathe(section, 16), {0.4, 0.6, 0.8, 0.9});
}

// A bowed sail along +x, raised towards its end like a petal, with plates on both faces.
Shape sail() {
    const double from = 33, to = 48;
    const auto place = [=](double along, double across, double over) {
        const double x = mix(from, to, along), width = mix(8, 15, along);
        return Vec{x, over + 0.02 * (x - from) * (x - from), -across * width};
    };
    const auto face = [&](double side) {
        const Shape plates = grid(3, 3, false, false, [&](int c, int r) {
            const double across = r - 1;
            return place(c / 2.0, across, side * (1.2 + 1.2 * (1 - across * across)));
        });
        return panelled(side > 0 ? plates : insideOut(plates), {0.6, 0.6, 0.8, 0.9});
    };
    const double rim[5][2] = {{0, -1}, {1, -1}, {1, 1}, {0, 1}, {0, -1}};
    const Shape edge =
        grid(5, 2, false, false, [&](int c, int r) { return place(rim[c][0], rim[c][1], r ? 1.2 : -1.2); });
    return joined({face(1), face(-1), edge});
}

Shape arm() {
    return placed(lathe({{0, 10}, {2.2, 10}, {2.2, 30}, {3.4, 30.6}, {3.4, 33}, {2.2, 34}, {0, 34}}, 6), {},
                  {1, 0, 0});
}

}  // namespace

void makeProbe(const char* path) {
    const auto crosswise = [](const Shape& part) {
        return turned(around(part, 4, Axis::y), Axis::y, degrees(45));
    };
    writeAml(path, {joined({painted(core(), hull::plain), painted(mast(), hull::warmLamp),
                            painted(ring(), hull::orange), painted(crosswise(arm()), hull::plain),
                            painted(crosswise(sail()), hull::coolLamp)})});
}
