// The figure that is cut to stripes: a jellyfish. The tumble that the scene gives it keeps one of its axes
// within 60 degrees of the picture's upright, so it swims head up, and looks much the same from all sides.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/kit/model/paints.h"
#include "production/models/models.h"

using namespace model;

namespace {

constexpr Vec upInTumble = {0.117, 0.746, 0.656};

// Of the cords and of what lies behind the ribs; of the sheet below, which fills the near view.
constexpr Uv dark = {8.0 / 16, 0.7 / 16}, dim = {11.0 / 16, 10.0 / 16};
// From the dark at the lining's rim up to a lamp's middle at its crown.
constexpr Patch upToLamp = {{1.5 / 16, 10.0 / 16}, hull::coolLamp};

constexpr int lobes = 12;  // of the bell's rim
constexpr double rim = 54, rimHeight = -2;
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

Shape bell() {
    const int columns = lobes * 6, rows = 16;
    return grid(columns, rows, true, false,
                [&](int c, int r) { return onBell(-2 * pi * c / columns, 1 - double(r) / (rows - 1)); });
}

// The bell's inside as twelve panels with a bright rib between each two.
Shape lining(bool ribs) {
    constexpr int columns = lobes * 4, rows = 12, ribColumns = 1;
    const int across = ribs ? ribColumns : columns / lobes - ribColumns;
    std::vector<Shape> all;
    for (int i = 0; i < lobes; i++) {
        const int first = i * columns / lobes + (ribs ? -ribColumns / 2 : ribColumns / 2);
        all.push_back(grid(across + 1, rows, false, false, [&](int c, int r) {
            return onBell(2 * pi * (first + c) / columns, 1 - double(r) / (rows - 1)) * 0.985;
        }));
    }
    return joined(all);
}

// The sheet that closes the bell below, up to the mouth.
Shape veil() {
    const int columns = lobes * 4, rows = 4;
    return grid(columns, rows, true, false, [&](int c, int r) {
        const double turn = -2 * pi * c / columns;
        const Vec mouth = {16 * std::cos(turn), rimHeight + 10, 16 * std::sin(turn)};
        return mix(mouth, onBell(turn, 0.93), double(r) / (rows - 1));
    });
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

// One of the four rings on the crown.
Shape crownRing(double turn) {
    const auto path = [&](double k) {
        const Flat place = {15.5 + 8.5 * std::cos(2 * pi * k), 8.5 * std::sin(2 * pi * k)};
        const double sine = std::pow(std::hypot(place.x, place.y) / (rim + 1), 1 / 0.8);
        return onBell(turn + std::atan2(place.y, place.x), std::asin(sine) / rimAngle) * 1.01;
    };
    return tube(16, path, [](double) { return 1.8; });
}

// Dark cords: along every groove of the bell, along its rim and round its crown.
Shape cords() {
    std::vector<Shape> all = {tube(
        lobes * 4, [](double k) { return onBell(2 * pi * k, 1); }, [](double) { return 1.7; })};
    for (int i = 0; i < lobes; i++) {
        const double turn = 2 * pi * (i + 0.5) / lobes;
        all.push_back(tube(
            14, [&](double k) { return onBell(turn, mix(0.36, 1, k)) * 1.005; },
            [](double k) { return mix(0.8, 1.6, k); }));
    }
    for (int i = 0; i < 4; i++) all.push_back(crownRing(2 * pi * (i + 0.5) / 4));
    return joined(all);
}

// From the rim, on the side of `around`: drawn in below the bell, and waving like its neighbours.
Shape tentacle(double around, double length) {
    const auto path = [&](double k) {
        const double wave = std::sin(2 * pi * 1.35 * k + around) * mix(0.15, 1, k);
        const double radius = rim - 6 - 16 * smoothStep(0, 0.5, k) + 10 * wave;
        const double turn = around + 0.8 * k * k + 0.18 * k * std::cos(2 * pi * 1.2 * k + 2 * around);
        return Vec{radius * std::cos(turn), rimHeight - length * k, radius * std::sin(turn)};
    };
    return tube(30, path, [](double k) { return mix(3.8, 1.2, k); });
}

Shape tentacles() {
    constexpr double lengths[] = {92, 74, 88, 68, 82};
    std::vector<Shape> all;
    for (int i = 0; i < 10; i++) all.push_back(tentacle(2 * pi * i / 10, lengths[i % 5]));
    return joined(all);
}

// One of the four arms round the mouth: a frilled sheet, whose back is an ember.
Shape arm() {
    const int across = 7, steps = 32;
    return grid(across, steps + 1, false, false, [&](int c, int r) {
        const double k = double(r) / steps, x = 2.0 * c / (across - 1) - 1;
        const double turn = 0.9 * k, radius = mix(9, 15, k) + 4 * std::sin(k * 6);
        const Vec out = {std::cos(turn), 0, std::sin(turn)}, aside = {-std::sin(turn), 0, std::cos(turn)};
        const double half = 10 * std::pow(1 - k, 0.55) * smoothStep(-0.25, 0.2, k) + 0.6;
        const double frill = 3 * x * x * x * std::sin(k * 22 + (x > 0 ? 0 : 2));
        return out * (radius + frill + 0.25 * half * x * x) + aside * (half * x) + Vec{0, 38 - 132 * k, 0};
    });
}

Shape upright(const Shape& shape) {
    return placed(shape, {}, upInTumble);
}

// The scene's light, left by the ship's last view, comes from far below: what is to catch it faces down by
// `share` more than it does.
Shape litFromBelow(const Shape& shape, double share) {
    return shaded(upright(shape), [&](Vec, Vec normal) { return normal - upInTumble * share; });
}

}  // namespace

// Seen from near, which is from within, the lining and the veil are the sea that the far figure swims in.
void makeJellyfish(const char* path) {
    writeAml(path, {painted(litFromBelow(bell(), 0.9), hull::coolLamp),
                    painted(litFromBelow(lining(false), 0.8), upToLamp),
                    painted(litFromBelow(lining(true), 0.8), hull::coolLamp),
                    painted(litFromBelow(veil(), 0.5), dim), painted(upright(cords()), dark),
                    painted(litFromBelow(tentacles(), 0.4), hull::coolLamp),
                    painted(upright(around(arm(), 4, Axis::y)), hull::orange)});
}
