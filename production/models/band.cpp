// The figure of the stripes: a band that turns over three times on its way round, so that it has one edge,
// which runs round twice. It is laid with dark plates, and the scene's glow makes a corona of the edge: the
// plates stand as tinted glass before it, and between them it shines through.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/models.h"
#include "production/models/paints.h"

using namespace model;

namespace {

// As small as the scene allows: on a beat the drawing is drawn larger, and its light is not.
constexpr double radius = 68, halfWidth = 22;
constexpr double halfTurns = 3;

// Where the band's axis and its first plate point. The tumble then shows its opening, at 60 degrees or less,
// for three quarters of the scene.
constexpr Vec axisInTumble = {-0.180, 0.828, 0.531}, startInTumble = {0.785, -0.205, 0.585};

// A glow that is made of less than 4 pixels of tube flickers: the blur looks at every fourth.
constexpr double edgeThick = 1.7;
// Nearer to the axis the edge is dark, so that the band's opening is not filled with light.
constexpr double darkWithin = radius - 4;

constexpr int plateCount = 28;
constexpr double plateShare = 0.72;  // of its place round the band; what is left is a slot
constexpr double plateReach = 0.93;  // in half widths

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
    const Shape tube = smoothed(sweep(polygon(sides, edgeThick), round), pi);
    return mappedBy(tube, [&](const Face& face, Vec) {
        const Vec away = cross(faceCentre(tube, face), normalized(axisInTumble));
        return std::sqrt(dot(away, away)) > darkWithin ? hull::neon : hull::plate;
    });
}

Shape plates() {
    constexpr int pieces = 4;
    std::vector<Shape> all;
    for (int i = 0; i < plateCount; i++) {
        all.push_back(grid(pieces + 1, 2, false, false, [&](int column, int row) {
            const double turn = i + plateShare * (double(column) / pieces - 0.5);
            return place(2 * pi * turn / plateCount, row ? plateReach : -plateReach);
        }));
    }
    return painted(joined(all), hull::plate);
}

}  // namespace

void makeBand(const char* path) {
    writeAml(path, {edge(), plates()});
}
