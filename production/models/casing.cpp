// The casing round the robot's feet, which sinks with the light: a lotus of broad petals on a rim, so low
// that a camera that circles its guest never sees it before him. Its petals are dark but for their edges. The
// program squeezes it in height, so it opens until it lies flat.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/models.h"

using namespace model;

namespace {

constexpr int petals = 8;
constexpr double foot = 37, reach = 8, height = 17;

// A pointed leaf, hollow towards the axis, which rises from the rim along +x.
Shape petal() {
    constexpr int around = 20, along = 12;
    return grid(around, along, true, false, [&](int c, int r) {
        const double k = double(r) / (along - 1), turn = -2 * pi * c / around;
        const double across = std::cos(turn), thick = 0.6 * std::sin(turn) * std::sqrt(1 - k * k * 0.9);
        const double half = 14.5 * std::sqrt(std::sin(pi * mix(0.24, 1, std::pow(k, 1.5))));
        const double out = foot + reach * std::pow(k, 0.8) + 2.5 * std::pow(k, 4);
        const double hollow = 0.27 * half * across * across * (1 - 0.5 * k);
        return Vec{out - hollow + thick, 1 + (height - 1) * k - 0.8 * thick, half * across};
    });
}

Shape rim() {
    return lathe({{35.6, 0}, {43, 0}, {44, 1.2}, {43, 2.4}, {37, 2.6}, {35.4, 1.4}, {35.6, 0}}, 64);
}

}  // namespace

void makeCasing(const char* path) {
    // What seems to look up gets nothing of the light, which comes from below.
    const auto asDark = [](Vec, Vec normal) {
        const double face = normal.x * normal.x + normal.y * normal.y;
        return normal + Vec{0, 1.1 * face * face, 0};
    };
    writeAml(path, {mappedCylinder(joined({rim(), around(shaded(petal(), asDark), petals)}), 6, 48)});
}
