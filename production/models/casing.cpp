// The casing round the robot's feet, which sinks with the light: a lotus of two rows of petals on a rim, so
// low that a camera that circles its guest never sees it before him. The program squeezes it in height, so it
// opens until it lies flat.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/models.h"

using namespace model;

namespace {

constexpr int petals = 11;  // in a row

struct Row {
    double foot, reach, height, curl, turn;  // curl: how far the tip bends outwards
};
constexpr Row rows[] = {{38, 12, 16.7, 3, 0}, {40, 19, 13, 1, 0.5}};

// A pointed leaf, hollow towards the axis, which rises from the rim along +x. Those of the lower row lift
// their edges and their tips, so that they shade each other and hide little of what stands below.
Shape petal(const Row& row) {
    constexpr int around = 14, along = 10;
    return grid(around, along, true, false, [&](int c, int r) {
        const double k = double(r) / (along - 1), turn = 2 * pi * c / around;
        const double across = std::cos(turn), thick = 0.7 * std::sin(turn) * std::sqrt(1 - k * k * 0.9);
        const double half = 12.2 * std::sqrt(std::sin(pi * mix(0.2, 1, std::pow(k, 1.5))));
        const double out = row.foot + row.reach * std::pow(k, 0.8) + row.curl * k * k * k * k;
        const double hollow = 0.045 * half * across * across * (1 - 0.5 * k) * 6;
        const double rise =
            (row.height - 1) * mix(k, k * k, row.turn) + row.turn * 0.25 * half * across * across;
        return Vec{out - hollow + thick, 1 + rise - 0.8 * thick, half * across};
    });
}

Shape rim() {
    return lathe({{35.6, 0}, {43, 0}, {44, 1.2}, {43, 2.4}, {37, 2.6}, {35.4, 1.4}, {35.6, 0}}, 64);
}

}  // namespace

void makeCasing(const char* path) {
    std::vector<Shape> parts = {rim()};
    for (const Row& row : rows)
        parts.push_back(turned(around(petal(row), petals), Axis::y, 2 * pi / petals * row.turn));
    writeAml(path, {mappedCylinder(joined(parts), 6, 48)});
}
