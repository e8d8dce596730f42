// The figure that is cut to stripes: a jellyfish, as open as a lantern, with a light in it. The tumble that
// the scene gives it keeps one of its axes within 60 degrees of the picture's upright, so it swims head up,
// and looks much the same from all sides.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/kit/model/paints.h"
#include "production/models/models.h"

using namespace model;

namespace {

constexpr Vec upInTumble = {0.117, 0.746, 0.656};

// From a tentacle's end up to the rim.
constexpr Patch violetToIndigo = {hull::violet, hull::indigo};

constexpr int lobes = 12;  // of the bell's rim
constexpr double rim = 50, rimHeight = 12;
const double rimAngle = degrees(106);  // from the top: the rim turns in

// A place of the bell, from its top (0) over the shoulder to the rim (1). Lobes hang from the rim.
Vec onBell(double turn, double k) {
    const double wave = std::fabs(std::cos(lobes * turn / 2));  // 0 between two lobes
    const double angle = k * rimAngle;
    const double groove = 1 - 0.08 * smoothStep(0.25, 1, k) * (1 - wave);
    const double radius = (rim + 1) * std::pow(std::sin(angle), 0.8) * groove;
    const double lobe = 8 * smoothStep(0.7, 1, k) * std::sqrt(wave);
    return {radius * std::cos(turn), rimHeight + 14 + 50 * std::cos(angle) - lobe, radius * std::sin(turn)};
}

// Petals about an opening, with slits between them: for the light from within, and for the tunnel, which is
// seen through the near figure.
Shape bell() {
    constexpr int across = 5, rows = 14;
    std::vector<Shape> all;
    for (int i = 0; i < lobes; i++)
        all.push_back(grid(across, rows, false, false, [&](int c, int r) {
            const double k = mix(1, 0.07, double(r) / (rows - 1)), aside = 2.0 * c / (across - 1) - 1;
            const double slit = 0.68 * smoothStep(0.08, 0.5, k) + 0.2 * smoothStep(0.6, 1, k);
            return onBell(-2 * pi * (i + 0.5 * aside * (1 - slit)) / lobes, k);
        }));
    return joined(all);
}

// A tube along a path, both by the place 0..1.
using Path = std::function<Vec(double)>;
using Radius = std::function<double(double)>;
Shape tube(int steps, const Path& path, const Radius& radius) {
    const int sides = 5;
    return grid(sides, steps + 1, true, false, [&](int c, int r) {
        const double k = 1 - double(r) / steps, turn = 2 * pi * c / sides;
        const Vec along = normalized(path(k + 1e-3) - path(k - 1e-3));
        const Vec right = normalized(cross(along, {0.3, 0.1, 1})), ahead = cross(right, along);
        return path(k) + (right * std::cos(turn) + ahead * std::sin(turn)) * radius(k);
    });
}

Shape rimCord() {
    return tube(
        lobes * 4, [](double k) { return onBell(2 * pi * k, 1); }, [](double) { return 1.7; });
}

// What shines within: four rings, as a moon jelly has them, about a ball.
Shape heart() {
    const auto path = [](double k) {
        const double a = 2 * pi * k;
        return Vec{9 + 6 * std::cos(a), rimHeight + 24 + 4 * std::cos(a), 6 * std::sin(a)};
    };
    const Shape ring = tube(14, path, [](double) { return 2.6; });
    return joined({around(ring, 4, Axis::y), placed(icosphere(7, 1), {0, rimHeight + 26, 0}, {0, 1, 0})});
}

// From the rim, on the side of `around`: spreading a little, and waving like its neighbours.
Shape tentacle(double around, double length) {
    const auto path = [&](double k) {
        const double wave = std::sin(2 * pi * 1.35 * k + around) * mix(0.15, 1, k);
        const double radius = rim - 6 + 10 * k + 8 * wave;
        const double turn = around + 0.7 * k * k + 0.18 * k * std::cos(2 * pi * 1.2 * k + 2 * around);
        return Vec{radius * std::cos(turn), rimHeight - length * k, radius * std::sin(turn)};
    };
    return tube(30, path, [](double k) { return mix(3.2, 0.9, k); });
}

Shape tentacles() {
    constexpr double lengths[] = {88, 72, 84, 68, 78};
    std::vector<Shape> all;
    for (int i = 0; i < 10; i++) all.push_back(tentacle(2 * pi * i / 10, lengths[i % 5]));
    return joined(all);
}

// One of the four arms round the mouth: a frilled sheet.
Shape arm() {
    const int across = 7, steps = 32;
    return grid(across, steps + 1, false, false, [&](int c, int r) {
        const double k = double(r) / steps, x = 2.0 * c / (across - 1) - 1;
        const double turn = 0.9 * k, radius = mix(9, 15, k) + 4 * std::sin(k * 6);
        const Vec out = {std::cos(turn), 0, std::sin(turn)}, aside = {-std::sin(turn), 0, std::cos(turn)};
        const double half = 6 * std::pow(1 - k, 0.55) * smoothStep(-0.25, 0.2, k) + 0.6;
        const double frill = 3 * x * x * x * std::sin(k * 22 + (x > 0 ? 0 : 2));
        return out * (radius + frill + 0.25 * half * x * x) + aside * (half * x) +
               Vec{0, rimHeight + 4 - 82 * k, 0};
    });
}

Shape upright(const Shape& shape) {
    return placed(shape, {}, upInTumble);
}

// The scene's light, left by the ship's last view, comes from far below: what is to catch it faces down by
// `share` more than it does. Not for what is large: turned like this, a surface throws back more of what is
// around it, which is of all colours.
Shape litFromBelow(const Shape& shape, double share) {
    return shaded(upright(shape), [&](Vec, Vec normal) { return normal - upInTumble * share; });
}

}  // namespace

// The glow of the far figure makes light of what is coloured and leaves the figure as ink before it, so each
// part has one clear colour. Off the beat they stay apart: cyan within, blue about the bell, rose and violet
// below. On it each spreads, and where all three meet the figure is white.
void makeJellyfish(const char* path) {
    writeAml(path,
             {painted(upright(bell()), hull::blue), painted(upright(rimCord()), hull::blue),
              painted(litFromBelow(heart(), 0.9), hull::cyan), painted(upright(tentacles()), violetToIndigo),
              painted(litFromBelow(around(arm(), 4, Axis::y), 0.7), hull::rose)});
}
