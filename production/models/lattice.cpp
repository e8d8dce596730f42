// The figure that is cut to stripes: a burning wheel. Five arms sweep back from its heart like flames and
// rise to a cone, five shorter ones sweep the other way below, so that its edge-on view is a shape too. Arms
// are crossed ribbons, sheets whose coloured inside shows to whoever looks along them.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/kit/model/paints.h"
#include "production/models/models.h"

using namespace model;

namespace {

// From afar only the outline is read, over 70 units wide and in deep notches: few arms, broad at the root.
struct Arm {
    double reach;    // of its tip from the axle
    double breadth;  // of half a ribbon, at its broadest
    double rise;     // of its tip over its root
    double bend;     // radians that the tip lags behind the root
    double twist;    // radians that the ribbons turn about the arm
};
constexpr Arm flame = {96, 17, 38, 1.35, 1.1};
constexpr Arm counterFlame = {48, 9, -52, -0.8, -0.9};
constexpr int arms = 5;
constexpr double root = 10;  // where an arm leaves the heart

// Along +x, the axle being y.
Shape armOf(const Arm& arm) {
    const int steps = 36, across = 5;
    const auto middle = [&](double k) {
        const double r = mix(root, arm.reach, k), turn = arm.bend * k * k;
        // Level at first, then up: the wheel is a dish, not a funnel.
        return Vec{r * std::cos(turn), arm.rise * k * k, r * std::sin(turn)};
    };
    const auto ribbon = [&](double start) {
        return grid(across, steps + 1, false, false, [&](int c, int r) {
            const double k = static_cast<double>(r) / steps;
            const Vec along = normalized(middle(k + 1e-3) - middle(k - 1e-3));
            const Vec side = normalized(cross(along, {0, 1, 0})), up = cross(side, along);
            const double taper = std::pow(1 - k, 0.7) * mix(0.4, 1, smoothStep(0, 0.2, k));
            const double half = arm.breadth * taper + 0.3;
            const double turn = start + arm.twist * k, x = 2.0 * c / (across - 1) - 1;
            const Vec flat = side * std::cos(turn) + up * std::sin(turn), off = cross(along, flat);
            return middle(k) + flat * (half * x) + off * (0.35 * half * x * x);  // hollow, like a leaf
        });
    };
    return joined({ribbon(0.4), ribbon(0.4 + pi / 2)});
}

// A star of twenty spikes.
Shape heart() {
    const double radius = 15, tip = 24;
    const Shape core = icosphere(radius, 0);
    Shape spikes;
    for (const Face& face : core.faces) {
        const int first = static_cast<int>(spikes.points.size());
        for (int point : face.points) spikes.points.push_back(core.points[point]);
        spikes.points.push_back(normalized(faceCentre(core, face)) * tip);
        for (int i = 0; i < 3; i++) addFace(spikes, {first + i, first + (i + 1) % 3, first + 3});
    }
    return smoothed(spikes, hard);
}

// Out of line with the axes, so that no two turns of the tumble look the same.
Shape tilted(const Shape& shape) {
    return turned(turned(shape, Axis::x, 0.9), Axis::z, 0.3);
}

}  // namespace

void makeLattice(const char* path) {
    const Shape wheel = around(armOf(flame), arms, Axis::y);
    const Shape counterWheel = turned(around(armOf(counterFlame), arms, Axis::y), Axis::y, pi / arms);
    writeAml(path, {painted(tilted(wheel), hull::coolLamp), painted(tilted(counterWheel), hull::orange),
                    painted(tilted(heart()), hull::coolLamp)});
}
