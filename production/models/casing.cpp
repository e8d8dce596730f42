// The casing round the robot's feet, which sinks with the light: a cup, and over it a hoop that glows on slim
// stalks, so low that a camera that circles its guest never sees it before him. The program squeezes it in
// height, so it sinks flat.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/models.h"

using namespace model;

namespace {

constexpr int stalks = 12;
constexpr double hoopRadius = 56;
constexpr double hoopHeight = 100.0 / 6;  // where the lowest rung of light lies in the red band

Shape hoop() {
    const double r = hoopRadius, y = hoopHeight;
    return lathe({{r, y - 0.5}, {r + 0.6, y}, {r, y + 0.5}, {r - 0.6, y}, {r, y - 0.5}}, 72);
}

Shape stalk() {
    const Vec foot = {51, 3, 0}, top = {hoopRadius, hoopHeight, 0};
    return placed(
        lathe({{1.5, 0}, {1.2, 1.6}, {0.5, 3}, {0.3, length(top - foot)}, {0, length(top - foot)}}, 10), foot,
        top - foot);
}

Shape cup() {
    return lathe({{47, 0},
                  {55, 0},
                  {56.4, 8},
                  {56.6, 15.4},
                  {55.8, 15.8},
                  {55.4, 8},
                  {54, 3.6},
                  {47.5, 3.6},
                  {44.8, 2.8},
                  {44.8, 0.6},
                  {47, 0}},
                 72);
}

}  // namespace

void makeCasing(const char* path) {
    writeAml(path, {mappedCylinder(joined({hoop(), around(stalk(), stalks), cup()}), 6, 48)});
}
