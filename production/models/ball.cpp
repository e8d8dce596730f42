// The mirror ball: what is seen of it, which hangs still in the hall, what turns within it, and the copy that
// beams are traced against.
#include "production/models/ball.h"

#include <algorithm>
#include <cmath>

#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/hall.h"
#include "production/models/models.h"
#include "production/models/paints.h"
#include "production/models/viewer.h"
#include "production/shared/comet.h"

using namespace model;

namespace {

// The screen shows a square view a third too broad, so the ball is taller than broad to look round.
constexpr double halfBreadth = 39, halfHeight = 52;
// Of the copy: as far from the centre as the ball's surface where beams meet it, half-way up.
constexpr double copyRadius = 42;
constexpr double withinRadius = 3;

// Rows of squares.
constexpr int rows = 22;
constexpr double mirrorPart = 0.92;  // of its place that a mirror covers, each way
constexpr double domed = 0.007;      // radians that a mirror seems to bend for each unit from its middle

// Up to which lot of 0..1 a mirror is of each kind.
constexpr double gold = 0.26, blue = 0.42, ice = 0.64, flashes = 0.96;

// Of the shell behind it, whose inside is seen round it: times the ball's size.
constexpr double rimSize = 1.045;

// A number of 0..1 for a mirror and what it is for, scattered.
double lotOf(int mirror, int what) {
    return fraction(0.7548776662 * mirror * (what + 1) + 0.5698402910 * what * mirror * mirror);
}

// What a mirror seems to face. What leans in from upright throws back the warm glow low beyond the ball from
// wherever it is seen, what leans out the cold one over that: so two in five of them are always lit. The
// others wait for one moment each of the viewer's round, for a lamp over him, the lamp by the ball or the
// comet.
Vec facing(int mirror, Vec place, Vec normal) {
    const Vec out = normalized(Vec{normal.x, 0, normal.z}), side = {-out.z, 0, out.x};
    const double lot = lotOf(mirror, 0), lean = lotOf(mirror, 1), aside = 0.3 * (lotOf(mirror, 2) - 0.5);
    if (lot < gold) return Vec{0, -1, 0} + out * mix(0.25, 0.36, lean) + side * aside;
    if (lot < blue) return Vec{0, 1, 0} + out * mix(0.0, 0.09, lean) + side * aside;
    constexpr double reach = 1.7;  // seconds before and after the viewer stands right before it
    const viewer::View view =
        viewer::at(viewer::timeAt(std::atan2(place.z, place.x)) + reach * (2 * lean - 1));
    if (lot < ice) return viewer::inLampLight(view, place);
    constexpr double middle = degrees(10);  // of a lamp, from straight above
    const double beyond = aside < -0.06 ? -middle : middle;
    if (lot < flashes) return viewer::facing(view, place, {0, std::cos(beyond), std::sin(beyond)});
    return viewer::facing(view, place, viewer::direction(comet::azimuth, comet::elevation));
}

// On the front's side, where what throws something back does so as well.
Vec toFront(Vec facing, Vec normal) {
    constexpr double least = 0.08;  // cosine
    facing = normalized(facing);
    const double ahead = dot(facing, normal);
    return normalized(facing * (ahead < 0 ? -1 : 1) + normal * std::max(least - std::abs(ahead), 0.0));
}

Shape plainMirrors() {
    Shape mirrors;
    const double step = pi / rows;
    for (int row = 0; row < rows; row++) {
        const double middle = step * (row + 0.5);  // from the pole
        const int columns = std::max(6, int(std::lround(2 * rows * std::sin(middle))));
        const double halfTurn = pi / columns * mirrorPart, half = step / 2 * mirrorPart;
        for (int column = 0; column < columns; column++) {
            const double turn = 2 * pi * (column + 0.5 * (row % 2)) / columns;
            const int first = int(mirrors.points.size());
            for (const auto& [across, down] : {Flat{1, 1}, Flat{-1, 1}, Flat{-1, -1}, Flat{1, -1}}) {
                const double away = middle + half * down;
                mirrors.points.push_back(hall::ballCentre + hall::onRing(turn + halfTurn * across,
                                                                         halfBreadth * std::sin(away),
                                                                         halfHeight * std::cos(away)));
            }
            addFace(mirrors, {first, first + 1, first + 2, first + 3});
        }
    }
    return mirrors;
}

}  // namespace

namespace ball {

Shape mirrors() {
    Shape mirrors = plainMirrors();
    for (int i = 0; i < int(mirrors.faces.size()); i++) {
        Face& face = mirrors.faces[i];
        const Vec centre = faceCentre(mirrors, face);
        const Vec normal = faceNormal(mirrors, face), facing = toFront(::facing(i, centre, normal), normal);
        face.normals.clear();
        for (int point : face.points)
            face.normals.push_back(normalized(facing + (mirrors.points[point] - centre) * domed));
    }
    return painted(mirrors, hull::coolLamp);
}

Shape rim() {
    constexpr double size = rimSize * halfBreadth, clear = 0.94;  // cosine round a beam
    Shape shell = smoothed(icosphere(size, 2), pi), open;
    open.points = shell.points;
    for (const Face& face : shell.faces) {
        const Vec way = normalized(faceCentre(shell, face));
        bool met = false;
        for (int i = 0; i < hall::sources; i++)
            met |= dot(way, normalized(hall::onRing(2 * pi * i / hall::sources, hall::sourceRadius,
                                                    hall::sourceHeight) -
                                       hall::ballCentre)) > clear;
        if (!met) open.faces.push_back(face);
    }
    return moved(insideOut(scaled(open, {1, halfHeight / halfBreadth, 1})), hall::ballCentre);
}

}  // namespace ball

void makeBallCollision(const char* path) {
    writeAml(path, {mappedBox(smoothed(icosphere(copyRadius, 2), hard), 24)});
}

// Hidden, but while the hall fades in it is drawn over the mirrors: a spark where the beams would meet.
void makeBall(const char* path) {
    writeAml(path, {painted(smoothed(icosphere(withinRadius, 2), pi), hull::dark.low)});
}
