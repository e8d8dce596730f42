// The figure that is cut to stripes: two cages of ribbons, one in the other, that wind from pole to pole in
// opposite ways. Ribbons are sheets, so that whoever looks in sees their coloured inside.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/kit/model/paints.h"
#include "production/models/models.h"

using namespace model;

namespace {

struct Cage {
    double radius;
    int ribbons;
    double breadth;  // units, at the equator
    double turns;    // of a ribbon from pole to pole
};
constexpr Cage cages[] = {{42, 6, 17, 0.62}, {23, 5, 12, -0.5}};
constexpr double poleAngle = 0.27;  // radians from the axis to the ribbons' ends

// Across a ribbon: places from edge to edge in half breadths, and heights over its sphere in half breadths.
struct Rib {
    double across, height;
};
constexpr Rib profile[] = {{-1, 0.16},  {-0.86, 0.2}, {-0.74, 0.02}, {-0.3, 0.06}, {0, 0.075},
                           {0.3, 0.06}, {0.74, 0.02}, {0.86, 0.2},   {1, 0.16}};
constexpr int profilePoints = sizeof(profile) / sizeof(profile[0]);

Vec onSphere(double fromPole, double angle) {
    return {std::sin(fromPole) * std::cos(angle), std::cos(fromPole), std::sin(fromPole) * std::sin(angle)};
}

// A ribbon keeps its breadth over the middle and draws in towards the poles, where there is less room.
Shape ribbon(const Cage& cage) {
    const int steps = 48;
    const auto middle = [&](double k) {
        const double fromPole = poleAngle + (pi - 2 * poleAngle) * k;
        return onSphere(fromPole, 2 * pi * cage.turns * k);
    };
    return grid(profilePoints, steps + 1, false, false, [&](int c, int r) {
        const double k = static_cast<double>(r) / steps;
        const Vec out = middle(k);
        const Vec along = normalized(middle(k + 1e-4) - middle(k - 1e-4));
        const double half = cage.breadth / 2 * std::pow(std::sin(pi * (0.08 + 0.84 * k)), 0.7);
        const Vec place = out * cage.radius + cross(along, out) * (profile[c].across * half);
        return normalized(place) * (cage.radius + profile[c].height * half);
    });
}

// The collar that holds the ribbons' ends, at the upper pole.
Shape collar(const Cage& cage) {
    const double y = cage.radius * std::cos(poleAngle), rim = cage.radius * std::sin(poleAngle);
    const Outline band = {{rim + 1.6, y - 2.6}, {rim + 2.2, y - 1.4}, {rim + 1, y + 1.8}, {rim - 1, y + 2.6}};
    return lathe(band, 36);
}

Shape cageOf(const Cage& cage) {
    return joined({around(ribbon(cage), cage.ribbons, Axis::y), withMirror(collar(cage), Axis::y)});
}

}  // namespace

void makeLattice(const char* path) {
    std::vector<Shape> parts;
    for (const Cage& cage : cages) parts.push_back(cageOf(cage));
    // Out of line with the axes, so that no two turns of its tumble look the same.
    writeAml(path, {painted(turned(turned(joined(parts), Axis::x, 0.3), Axis::z, 0.5), hull::coolLamp)});
}
