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
constexpr double hoopRadius = 47;
constexpr double hoopHeight = 100.0 / 6;  // where the lowest rung of light lies in the red band

Shape hoop() {
    const double r = hoopRadius, y = hoopHeight;
    return lathe({{r, y - 0.5}, {r + 0.6, y}, {r, y + 0.5}, {r - 0.6, y}, {r, y - 0.5}}, 72);
}

Shape stalk() {
    const Vec foot = {42, 3, 0}, top = {hoopRadius, hoopHeight, 0};
    return placed(
        lathe({{1.5, 0}, {1.2, 1.6}, {0.5, 3}, {0.3, length(top - foot)}, {0, length(top - foot)}}, 10), foot,
        top - foot);
}

Shape cup() {
    return lathe({{37, 0},
                  {44, 0},
                  {45.6, 5},
                  {46, 9.4},
                  {45.2, 9.8},
                  {44.6, 5},
                  {43, 3},
                  {37.5, 3},
                  {35.2, 2.2},
                  {35.2, 0.6},
                  {37, 0}},
                 64);
}

}  // namespace

void makeCasing(const char* path) {
    writeAml(path, {mappedCylinder(joined({hoop(), around(stalk(), stalks), cup()}), 6, 48)});
}
