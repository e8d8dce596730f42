// The star sky, seen from inside.
#include "production/kit/model_aml.h"
#include "production/kit/model_forms.h"
#include "production/kit/model_mapping.h"
#include "production/models/models.h"

using namespace model;

void makeSky(const char* path) {
    const double radius = 2400, repeats = 4;
    const int steps = 12;
    std::vector<Shape> sides;
    for (int side = 0; side < 6; side++) {
        // Each side of a cube carried out to the sphere by angle, so that the stars keep their size.
        Shape part = grid(steps + 1, steps + 1, false, false, [&](int c, int r) {
            const double u = std::tan(pi / 4 * (2.0 * c / steps - 1)),
                         v = std::tan(pi / 4 * (2.0 * r / steps - 1));
            return normalized({u, v, -1}) * radius;
        });
        part = painted(part, Part{{0, repeats}, {repeats, 0}});
        if (side < 4)
            part = turned(part, Axis::y, pi / 2 * side);
        else
            part = turned(part, Axis::x, side == 4 ? pi / 2 : -pi / 2);
        sides.push_back(part);
    }
    writeAml(path, {joined(sides)});
}
