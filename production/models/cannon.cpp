// The cannon below the ball: a dish of plates, five braces and a coiled barrel that points straight up.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/kit/model/paints.h"
#include "production/models/models.h"

using namespace model;

namespace {

Shape dish() {
    // Three steps of plates between the rim and the barrel.
    auto step = [](double r) -> Outline {
        const double y = (60 - r) * 0.12;
        return {{r + 2, 4.4 + y}, {r + 1.2, 5.8 + y}, {r - 5.4, 6.8 + y}, {r - 6.2, 5.4 + y}};
    };
    const Outline rim = {{66, 0}, {68, 1.4}, {68, 3.4}, {66, 5}, {62, 5.6}, {60.5, 4.6}};
    const Outline profile = chained({rim, step(57), step(48), step(39), {{28, 8}, {20, 9}}});
    return flutedLathe(profile, {20, 0.05, 1.2, 4.5, 9, 2}, degrees(9));
}

Shape barrel() {
    const Outline coils = platedProfile({11, 13.6, 16.2, 18.8, 21.4}, {0.9, 1.8, 0.9, 3},
                                        [](double y) { return 19.5 - (y - 11) * 0.62; });
    const Outline profile = chained({{{22, 8}, {22, 9.6}, {20.5, 11}},
                                     coils,
                                     {{10, 22},
                                      {10, 23.4},
                                      {13, 24.4},
                                      {14, 25.6},
                                      {14, 26.8},
                                      {13, 27.8},
                                      {11.4, 28},
                                      {10.4, 27},
                                      {8.6, 22},
                                      {7.4, 15},
                                      {4.4, 14.2},
                                      {3.6, 15.8},
                                      {0, 17}}});
    return painted(lathe(profile, 40), hull::striped);
}

// One brace along +x: a swept rib from the dish's rim to the barrel, a lens on its foot.
Shape brace() {
    Sweep how;
    how.path = curveThrough({{64, 4, 0}, {57, 11, 0}, {40, 13.5, 0}, {26, 17, 0}, {17, 18, 0}}, false, 4);
    how.up = {0, 0, 1};
    how.change = [](int step, Outline outline) {
        const double k = step / 16.0;
        for (Flat& p : outline) p = {p.x * mix(1.2, 0.8, k), p.y * mix(1.3, 0.7, k)};
        return outline;
    };
    const Shape rib = sweep({{2.6, -3.6},
                             {3.2, -2.4},
                             {3.2, 2.4},
                             {2.6, 3.6},
                             {-2.6, 3.6},
                             {-3.4, 2.4},
                             {-3.4, -2.4},
                             {-2.6, -3.6}},
                            how);
    const Outline lens = {{6, 0},     {6.2, 1.2}, {5.4, 2.4}, {4.4, 2.4},
                          {3.9, 1.2}, {3, 1.2},   {1.6, 2.4}, {0, 2.8}};
    return joined({painted(rib, hull::plain),
                   painted(placed(lathe(lens, 20), {59, 9, 0}, {0.75, 0.66, 0}), hull::coolLamp)});
}

// A reflector between two braces, its bowl turned up to the ball.
Shape reflector() {
    const Outline bowl = {{0, -3},    {3, -2.6}, {7.4, 1},    {8.6, 3},   {8.2, 3.8},
                          {7.4, 3.4}, {5.4, 1},  {2.4, -0.8}, {1.2, 2.2}, {0, 2.6}};
    const Shape stalk = lathe({{0, -4}, {2.6, -4}, {2, 2}, {3, 3}, {0, 4}}, 12);
    return joined({painted(placed(lathe(bowl, 24), {45, 14, 0}, {-0.55, 0.83, 0}), hull::coolLamp),
                   painted(moved(stalk, {45.4, 9, 0}), hull::plain)});
}

}  // namespace

void makeCannon(const char* path) {
    const Shape reflectors = turned(around(reflector(), 5, Axis::y), Axis::y, pi / 5);
    writeAml(path, {mappedBox(dish(), 48), joined({barrel(), around(brace(), 5, Axis::y), reflectors})});
}
