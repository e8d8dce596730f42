// The ring that rides at the height of the light disc, lying flat: a slim rail, and six clasps that hold the
// corners of the disc, which stand 100 units out at 30, 90, 150 ... degrees.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/models.h"

using namespace model;

namespace {

constexpr double discRadius = 100;

// A closed rail with the section of a lens, its outer edge sharp.
Shape rail() {
    const Outline section = {{102.2, 0},  {102.6, -1.1}, {104, -1.6}, {106.4, -1.1}, {109, -0.25},
                             {109, 0.25}, {106.4, 1.1},  {104, 1.6},  {102.6, 1.1},  {102.2, 0}};
    return lathe(section, 96);
}

// Fine ticks on the rail, as on an instrument.
Shape tick() {
    return moved(box({3.4, 0.7, 0.5}, 0.15), {105.4, 1.5, 0});
}

// Reaches in to the disc's corner along +x.
Shape clasp() {
    const Shape saddle = moved(box({10, 7.4, 7}, 2.4, 2), {106.6, 0, 0});
    const Shape jaw = moved(box({8, 1.6, 3}, 0.7, 2), {101.6, 2.6, 0});
    const Outline lens = {{2.9, 0}, {3, 0.5}, {2.6, 1}, {2, 1}, {1.7, 0.5}, {0.9, 1.2}, {0, 1.4}};
    const Shape eye = placed(lathe(lens, 16), {111.3, 0, 0}, {1, 0, 0});
    const Shape cap = placed(lathe(lens, 16), {106.6, 3.5, 0}, {0, 1, 0});
    return joined({saddle, jaw, reflected(jaw, Axis::y), eye, cap, reflected(cap, Axis::y)});
}

// The thin inner line that the light runs along, between the clasps' jaws.
Shape wire() {
    const double r = discRadius + 0.4;
    return lathe({{r, -0.5}, {r + 0.5, 0}, {r, 0.5}, {r - 0.5, 0}, {r, -0.5}}, 96);
}

}  // namespace

void makeRing(const char* path) {
    const Shape clasps = turned(around(clasp(), 6, Axis::y), Axis::y, degrees(30));
    const Shape ticks = around(tick(), 120, Axis::y);
    writeAml(path, {mappedCylinder(joined({rail(), wire(), clasps, ticks}), Axis::y, 24, 32)});
}
