// The casing round the lower part of the robot, which sinks with the light: twelve armoured sides, open
// above. The program squeezes it in height, so it is made of courses that read at any height.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/models.h"

using namespace model;

namespace {

constexpr int sides = 12;
constexpr double height = 94;

// One course of plates between two heights, drawn in at its middle.
Shape course(double low, double high, double outer) {
    const double rise = high - low;
    const Shape wall =
        lathe({{outer - 4, low}, {outer, low + rise * 0.16}, {outer, low + rise * 0.84}, {outer - 4, high}},
              sides, pi / sides);
    return panelled(wall, {1.1, 0.9, 1.3, 0.9});
}

Shape band(double middle, double radius) {
    return lathe({{radius - 3, middle - 2.6},
                  {radius - 0.6, middle - 2.2},
                  {radius, middle - 1},
                  {radius, middle + 1},
                  {radius - 0.6, middle + 2.2},
                  {radius - 3, middle + 2.6}},
                 48);
}

// Round posts at the corners, with rings where the bands cross.
Shape post() {
    const Outline wall =
        platedProfile({2, 8, 28, 34, 60, 66, 86, 92}, {1, 0.9, 0.8, 20}, [](double) { return 3.0; });
    return moved(lathe(wall, 10), {54.5, 0, 0});
}

}  // namespace

void makeCasing(const char* path) {
    const Outline rim = {{46, height - 9},     {46, height - 2},   {47, height},    {53, height},
                         {54.4, height - 1.4}, {54.4, height - 3}, {51, height - 4}};
    const Shape top = insideOut(lathe({rim.rbegin(), rim.rend()}, 48));
    const Shape foot = lathe({{50, 0}, {55.5, 0}, {56.4, 1.2}, {55.4, 3}, {51, 3.6}}, 48);
    const Shape casing = joined({course(3, 31, 53), course(31, 63, 53), course(63, 91, 53), band(31, 54.6),
                                 band(63, 54.6), foot, around(post(), sides, Axis::y),
                                 insideOut(lathe({{47, 0}, {46, height - 8}}, 24)), top});
    writeAml(path, {mappedCylinder(casing, Axis::y, 6, 48)});
}
