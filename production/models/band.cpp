// The figure of the stripes: a band that turns over three times on its way round, so that it has one edge,
// which runs round twice. It is made of black links, and the scene's glow makes a corona of the edge, which
// shines through their glass where that is thin and past them where it ends.
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
constexpr double edgeThick = 2.3;
// Nearer to the axis the edge is dark, so that the band's opening is not filled with light.
constexpr double darkWithin = radius - 4;

// Links of glass round the band, thick in the middle and sharp at the edge; between them is a slot.
constexpr int linkCount = 22;
constexpr double linkShare = 0.80, linkReach = 0.93;  // of its place round the band; in half widths
constexpr double linkThick = 5;                       // in the middle, from there to either side

// A point of the band, `side` from its middle line (0) to its edge (1, or -1 half a band's length on), and
// `up` units from its middle surface.
Vec place(double angle, double side, double up = 0) {
    const double lean = angle * halfTurns / 2;
    const double away = radius + halfWidth * side * std::cos(lean) - up * std::sin(lean);
    const Vec axis = normalized(axisInTumble);
    const Vec start = normalized(startInTumble - axis * dot(startInTumble, axis));
    return start * (away * std::cos(angle)) + cross(axis, start) * (away * std::sin(angle)) +
           axis * (halfWidth * side * std::sin(lean) + up * std::cos(lean));
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

// Each shows the whole of the glass on either of its faces: along the band from left to right, and from edge
// to edge up.
Shape links() {
    constexpr int pieces = 4, strips = 8;
    std::vector<Shape> all;
    for (int i = 0; i < linkCount; i++) {
        for (const double face : {1.0, -1.0}) {
            all.push_back(grid(pieces + 1, strips + 1, false, false, [&](int column, int row) {
                const double along = (double(column) / pieces - 0.5) * face;
                const double side = 2.0 * row / strips - 1;
                const double bulge = std::sqrt(std::max(0.0, 1 - side * side)) * (1 - 1.2 * along * along);
                return place(2 * pi * (i + linkShare * along) / linkCount, side * linkReach,
                             face * linkThick * bulge);
            }));
        }
    }
    return painted(joined(all), hull::glass);
}

}  // namespace

void makeBand(const char* path) {
    writeAml(path, {edge(), links()});
}
