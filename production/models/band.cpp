// The figure of the stripes: a band that turns over three times on its way round, so that it has one edge,
// which runs round twice. It is strung like a harp and otherwise empty: the scene's glow makes tubes of light
// of its edge, the strings stand dark before it, and from no side is it a line.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/models.h"
#include "production/models/paints.h"

using namespace model;

namespace {

// The glow lights up 25 units on either side of a tube, so the band leaves nearly twice as much free in its
// middle. It is as small as the scene allows: on a beat the drawing is drawn larger, and its light is not.
constexpr double radius = 68, halfWidth = 23;
constexpr double halfTurns = 3;

// Where the band's axis and the first string point. The tumble then shows its opening, at 60 degrees or less,
// for three quarters of the scene.
constexpr Vec axisInTumble = {-0.180, 0.828, 0.531}, startInTumble = {0.785, -0.205, 0.585};

// A glow that is made of less than 4 pixels of tube flickers: the blur looks at every fourth.
constexpr double edgeThick = 1.5;

// Every fourth is a bar from edge to edge; between bars, strings that are finer and end short of the edge, in
// the brightest of its light.
constexpr int strings = 64, stringsInBar = 4;
struct Make {
    double thick, reach;  // `reach` in half widths
};
constexpr Make bar = {1.3, 1}, fine = {0.8, 0.72};

// A point of the band, `side` from its middle line (0) to its edge (1, or -1 half a band's length on).
Vec place(double angle, double side) {
    const double lean = angle * halfTurns / 2;
    const double away = radius + halfWidth * side * std::cos(lean);
    const Vec axis = normalized(axisInTumble);
    const Vec start = normalized(startInTumble - axis * dot(startInTumble, axis));
    return start * (away * std::cos(angle)) + cross(axis, start) * (away * std::sin(angle)) +
           axis * (halfWidth * side * std::sin(lean));
}

Shape edge() {
    constexpr int steps = 176, sides = 4;
    Sweep round;
    round.closedPath = true;
    for (int i = 0; i < steps; i++) round.path.push_back(place(4 * pi * i / steps, 1));
    return painted(smoothed(sweep(polygon(sides, edgeThick), round), pi), hull::neon);
}

Shape string(int number) {
    const double angle = 2 * pi * number / strings;
    const Make& make = number % stringsInBar == 0 ? bar : fine;
    Sweep across;
    across.path = {place(angle, -make.reach), place(angle, make.reach)};
    across.capped = false;
    return smoothed(sweep(polygon(3, make.thick), across), hard);
}

Shape harp() {
    std::vector<Shape> all;
    for (int i = 0; i < strings; i++) all.push_back(string(i));
    return painted(joined(all), hull::harp);
}

}  // namespace

void makeBand(const char* path) {
    writeAml(path, {edge(), harp()});
}
