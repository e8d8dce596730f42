// One segment of the tunnel, drawn and traced.
#include "production/kit/model_aml.h"
#include "production/kit/model_forms.h"
#include "production/kit/model_mapping.h"
#include "production/models/models.h"

using namespace model;

void makeTunnel(const char* path) {
    const int columns = 48, rows = 7;
    const double z[rows] = {-150, -140, -130, 0, 130, 140, 150};
    const double radius[rows] = {280, 280, 270, 292, 270, 280, 280};
    Shape wall = grid(columns, rows, true, false, [&](int c, int r) {
        const double angle = -2 * pi * c / columns - 0.8 * z[r] / 300;
        return Vec{radius[r] * std::cos(angle), radius[r] * std::sin(angle), z[r]};
    });
    writeAml(path, {smoothed(mappedCylinder(wall, Axis::z, 12, 150), 0.3)});
}
