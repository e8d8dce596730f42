// The ring that rides at the height of the light disc, lying flat. Six clamps hold the corners of the disc,
// which stand 100 units out at 30, 90, 150 ... degrees.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/models.h"

using namespace model;

namespace {

constexpr double discRadius = 100;

// A closed band of plates: an octagon carried round, every facet raised.
Shape band() {
    const Outline section = {{102, -2}, {103, -4.2}, {106, -5.4}, {110, -4}, {112, -1.4}, {112, 1.4},
                             {110, 4},  {106, 5.4},  {103, 4.2},  {102, 2},  {102, -2}};
    return panelled(lathe(section, 60), {0.35, 0.5, 0.7, 0.9});
}

// Reaches in to the disc's corner along +x.
Shape clamp() {
    const Shape saddle = moved(box({9, 15, 15}, 2.2, 2), {107.2, 0, 0});
    const Shape jaw = moved(box({8, 3, 6}, 1.1, 2), {101.5, 4.4, 0});
    const Outline lens = {{4.6, 0}, {4.8, 0.8}, {4.2, 1.6}, {3.4, 1.6},
                          {3, 0.8}, {2.2, 1.2}, {1.1, 1.8}, {0, 2}};
    const Shape eye = placed(lathe(lens, 18), {111.4, 0, 0}, {1, 0, 0});
    const Shape cap = placed(lathe(lens, 18), {107.2, 7.2, 0}, {0, 1, 0});
    return joined({saddle, jaw, reflected(jaw, Axis::y), eye, cap, reflected(cap, Axis::y)});
}

// The thin inner rail that the light runs along, between the clamps' jaws.
Shape rail() {
    const double r = discRadius + 0.6;
    return lathe({{r, -0.9}, {r + 0.9, 0}, {r, 0.9}, {r - 0.9, 0}, {r, -0.9}}, 60);
}

}  // namespace

void makeRing(const char* path) {
    const Shape clamps = turned(around(clamp(), 6, Axis::y), Axis::y, degrees(30));
    writeAml(path, {mappedCylinder(joined({band(), rail(), clamps}), Axis::y, 24, 32)});
}
