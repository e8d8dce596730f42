// The sky, seen from inside: its picture goes three times round from pole to pole, so that no view holds two.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/models.h"

using namespace model;

void makeSky(const char* path) {
    const double radius = 2400, repeats = 3;
    const int meridians = 48, parallels = 24;
    const Shape dome = grid(meridians + 1, parallels + 1, false, false, [&](int c, int r) {
        const double around = 2 * pi * c / meridians, up = pi * r / parallels - pi / 2;
        const double level = std::cos(up) * radius;
        return Vec{level * std::sin(around), std::sin(up) * radius, -level * std::cos(around)};
    });
    writeAml(path, {welded(painted(dome, Patch{{0, 1}, {repeats, 0}}))});
}
