// The satellite of the smoke scene, drawn at 0.3 of its size and never turned: a ribbed core in a ring, four
// sails outside it, so that it reads from above at some forty pixels.
#include "production/kit/model_aml.h"
#include "production/kit/model_forms.h"
#include "production/kit/model_mapping.h"
#include "production/models/models.h"

using namespace model;

namespace {

Shape core() {
    Outline profile = {{0, -15}, {5, -14}};
    const Outline wall = platedProfile({-13, -7, -2.5, 2.5, 7, 13}, {1.4, 1.6, 1, 6},
                                       [](double y) { return 10.5 - 0.022 * y * y; });
    profile.insert(profile.end(), wall.begin(), wall.end());
    profile.insert(profile.end(), {{6, 13.4}, {5.4, 16}, {3.4, 18}, {0, 19}});
    return flutedLathe(profile, {6, 0.2, 1.2, -12, 12, 2});
}

// The aerial above and the lamp below.
Shape mast() {
    return lathe(
        {{0, -25}, {1.6, -23.6}, {1.6, -14}, {1.2, 18}, {1, 28}, {2.2, 29}, {2.4, 31}, {1.4, 32.6}, {0, 33}},
        8);
}

Shape ring() {
    const Outline section = {{19.4, 0},   {20.4, -2.2}, {23, -2.8},  {24.6, -1.4},
                             {24.6, 1.4}, {23, 2.8},    {20.4, 2.2}, {19.4, 0}};
    return panelled(lathe(section, 16), {0.3, 0.5, 0.6, 0.9}, [](const Shape& shape, const Face& face) {
        return length(areaVector(shape, face)) > 25;  // the broad facets only
    });
}

// A sail along +x: a bowed plate with ribs on both sides, raised like a petal.
Shape sail() {
    auto side = [](double thickness) {
        const Shape face = grid(4, 3, false, false, [&](int c, int r) {
            const double x = mix(27, 41, c / 3.0), across = mix(-1, 1, r / 2.0), width = mix(6, 12, c / 3.0);
            return Vec{x,
                       thickness + 0.9 * (1 - across * across) * (thickness > 0 ? 1 : -1) +
                           0.02 * (x - 27) * (x - 27),
                       -across * width};
        });
        return panelled(thickness > 0 ? face : insideOut(face), {0.35, 0.4, 0.6, 0.9});
    };
    const Shape arm = placed(
        lathe({{0, 8}, {1.6, 8}, {1.6, 18}, {2.6, 18.4}, {2.6, 20}, {1.6, 20.4}, {1.6, 28}, {0, 28}}, 6), {},
        {1, 0, 0});
    const double rim[5][2] = {{27, 6}, {41, 12}, {41, -12}, {27, -6}, {27, 6}};
    const Shape edge = grid(5, 2, false, false, [&](int c, int r) {
        return Vec{rim[c][0], (r ? 0.8 : -0.8) + 0.02 * (rim[c][0] - 27) * (rim[c][0] - 27), rim[c][1]};
    });
    return joined({side(0.8), side(-0.8), edge, arm});
}

}  // namespace

void makeProbe(const char* path) {
    const Shape sails = turned(around(sail(), 4, Axis::y), Axis::y, degrees(45));
    writeAml(path, {mappedBox(joined({core(), mast(), ring(), sails}), 32)});
}
