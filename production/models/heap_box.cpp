// The box of the heap: a pressure module of dark metal on two bays, and a counterweight on two lit rails in
// the third, so that quarter turns change the stack's outline. A little under one storey (20 units) high,
// twenty of which lie across each other.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/kit/model/paints.h"
#include "production/models/figures.h"
#include "production/models/models.h"

using namespace model;

namespace {

constexpr Vec size = {110, 18.6, 45};

// A frame round the box at x = 0, `width` units along x.
Shape clamp(double width, double grow) {
    const Outline section = chamferedRectangle(size.z + grow, size.y + grow, 4.5);
    return moved(turned(extrude(section, width, 1.1), Axis::y, pi / 2), {-width / 2, 0, 0});
}

// A tank along x from `from` to `to`, seen as a half barrel on the flank at z > 0.
Shape tank(double from, double to) {
    const double mid = (from + to) / 2, half = (to - from) / 2;
    const Outline wall =
        platedProfile({-half + 1, -half + 4.5, half - 4.5, half - 1}, {0.9, 0.8, 0.7, 9}, [&](double y) {
            const double k = y / half;
            return 5.9 - 1.2 * k * k * k * k;
        });
    const Outline profile = chained({{{0, -half}, {3.4, -half + 0.4}}, wall, {{3.4, half - 0.4}, {0, half}}});
    return placed(lathe(profile, 12), {mid, 0, 16.6}, {1, 0, 0});
}

// Raised plates over the top of a bay, domed across so that no wide face is flat.
Shape lid(double from, double to) {
    const int columns = 4, rows = 5;
    const Shape dome = grid(columns, rows, false, false, [&](int c, int r) {
        const double k = 2.0 * r / (rows - 1) - 1;
        return Vec{mix(from, to, double(c) / (columns - 1)), 8.1 - 1.5 * k * k, -17.0 * k};
    });
    return panelled(dome, {0.7, 0.7, 0.9, 0.9});
}

// Rings on the end face at x > 0, and the two lamps beside them.
Shape endCap() {
    const Outline ring = {{7.6, 0},    {7.6, 1},    {6.8, 1.8}, {5.6, 1.8}, {5, 1},
                          {4.8, -0.6}, {3.4, -0.6}, {3, 0.6},   {1.6, 1.2}, {0, 1.4}};
    const Outline lamp = {{3.4, 0}, {3.4, 0.7}, {2.8, 1.2}, {2.2, 1.2}, {1.8, 0.4}, {0, 0.8}};
    const double x = size.x / 2 - 1.4;
    return joined({placed(lathe(ring, 18), {x, 0, 0}, {1, 0, 0}),
                   placed(lathe(lamp, 10), {x, 0, 13.5}, {1, 0, 0}),
                   placed(lathe(lamp, 10), {x, 0, -13.5}, {1, 0, 0})});
}

}  // namespace

Shape figures::heapBox() {
    const Shape core = box({size.x - 6, size.y - 3.2, size.z - 10}, 2.4);
    const Shape frames = joined({withMirror(moved(clamp(8, 0), {size.x / 2 - 5.2, 0, 0}), Axis::x),
                                 withMirror(moved(clamp(5, -0.8), {17.5, 0, 0}), Axis::x)});
    return joined({core, frames});
}

void makeHeapBox(const char* path) {
    const Shape tanks = joined({tank(-14.5, 14.5), tank(20.5, 45.5)});
    const Shape lids = joined({lid(-14.5, 14.5), lid(20.5, 45.5)});
    const Shape module = moved(box({72, size.y - 3.2, size.z - 10}, 2.4), {16, 0, 0});
    const Shape dark = joined({module, withMirror(lids, Axis::y), withMirror(tanks, Axis::z)});
    const Shape frames =
        joined({withMirror(moved(clamp(8, 0), {size.x / 2 - 5.2, 0, 0}), Axis::x),
                withMirror(moved(clamp(5, -0.8), {17.5, 0, 0}), Axis::x), withMirror(endCap(), Axis::x)});
    const Shape rail = moved(box({28, 3.4, 3.4}, 0.8), {-33, 0, 12});
    writeAml(path, {painted(dark, hull::dark), mappedBox(frames, 64),
                    painted(withMirror(rail, Axis::z), hull::warmLamp)});
}
