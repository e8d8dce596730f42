// The casing round the lower part of the robot, which sinks with the light.
#include "production/kit/model_aml.h"
#include "production/kit/model_forms.h"
#include "production/kit/model_mapping.h"
#include "production/models/models.h"

using namespace model;

void makeCasing(const char* path) {
    const Shape wall = lathe({{50, 0}, {56, 4}, {54, 60}, {56, 90}, {50, 94}, {46, 94}, {46, 0}}, 12);
    writeAml(path, {smoothed(mappedCylinder(wall, Axis::y, 6, 64), hard)});
}
