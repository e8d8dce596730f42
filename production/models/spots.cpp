#include "production/models/spots.h"

#include <cmath>
#include <vector>

#include "production/comet_place.h"
#include "production/models/hall.h"
#include "production/models/viewer.h"

using namespace model;

namespace {

constexpr double orbit = 2 * pi / 0.4;                    // seconds that the viewer takes round the ball
constexpr double firstRound = 157.08;                     // seconds: when he stands at turn 0
constexpr double halfAzimuth = 4.6, halfElevation = 2.8;  // degrees of the picture that a spot shows

// When the viewer stands at a turn, in his first round of those on the ellipse.
double timeAt(double turn) {
    const double rounds = turn / (2 * pi);
    return firstRound + (rounds - std::floor(rounds)) * orbit;
}

// Whether what faces `normal` never shows the viewer the glow beyond the hall while he sees it.
bool dark(Vec place, Vec normal) {
    constexpr double step = 0.2, halfSight = 0.55;  // seconds; cosine
    for (double after = 0; after < orbit; after += step) {
        const viewer::View view = viewer::at(firstRound + after);
        if (-dot(normalized(place - view.eye), view.back) < halfSight) continue;
        const Vec shown = viewer::shown(view, place, normal);
        if (shown.z < -0.42 && shown.y < 0.1) return false;
    }
    return true;
}

// A disc before the wall, unless it would have to look into it to show the comet then.
void addSpot(Shape& spots, double turn, double height, double time) {
    constexpr double gap = 5, half = 6.5;  // from the wall; of its size
    constexpr int corners = 6;
    const Vec front = hall::onRing(turn + pi, 1, 0);
    const Vec place = hall::onRing(turn, hall::wallRadius - gap, height),
              right = hall::onRing(turn + pi / 2, half, 0), up = {0, half, 0};
    const viewer::View view = viewer::at(time);
    Face face;
    std::vector<Vec> rim;
    bool seen = true;
    for (int i = 0; i < corners; i++) {
        const double along = 2 * pi * i / corners, c = std::cos(along), s = std::sin(along);
        const Vec corner = place + right * c + up * s;
        rim.push_back(corner);
        face.points.push_back(int(spots.points.size()) + i);
        face.uvs.push_back({});
        face.normals.push_back(viewer::facing(
            view, corner,
            viewer::direction(comet::azimuth + halfAzimuth * c, comet::elevation + halfElevation * s)));
        seen &= dot(face.normals.back(), front) > 0.01;
    }
    if (!seen ||
        !dark(place, viewer::facing(view, place, viewer::direction(comet::azimuth, comet::elevation))))
        return;
    spots.points.insert(spots.points.end(), rim.begin(), rim.end());
    spots.faces.push_back(face);
}

double fraction(double x) {
    return x - std::floor(x);
}

// How far neighbour `column` of row `row` lies in its group's turn: 0..1, falling along the row.
double turnInGroup(int column, int row, int group) {
    return 1 - fraction((column % group + 0.618 * row * group) / group);
}

// The pictures on the wall are bright enough of themselves where these lie.
bool overPicture(double turn, double height) {
    struct Bright {
        double turn, half, low, high;
    };
    constexpr Bright pictures[] = {{hall::pillarTurn, 0.72, 20, 480},
                                   {hall::shipTurn, 0.66, 40, 560},
                                   {hall::probesTurn, 0.62, 0, 240},
                                   {hall::colossusTurn, 0.85, 60, 560}};
    for (const Bright& picture : pictures)
        if (std::abs(std::remainder(turn - picture.turn, 2 * pi)) < picture.half && height > picture.low &&
            height < picture.high)
            return true;
    return false;
}

}  // namespace

namespace spots {

Shape onWall() {
    constexpr int columns = 112, group = 14;
    constexpr double heights[] = {62, 104, 148, 194, 242, 292, 344, 398, 454, 512};
    Shape spots;
    for (int row = 0; row < int(std::size(heights)); row++) {
        for (int column = 0; column < columns; column++) {
            // Scattered about its place.
            const int count = row * columns + column;
            const double turn =
                2 * pi * (column + 0.5 * (row % 2) + 0.8 * fraction(0.618034 * count)) / columns;
            const double height = heights[row] + 34 * (fraction(0.754878 * count) - 0.5);
            if (overPicture(turn, height)) continue;
            const double middle = 2 * pi * (column / group + 0.5) * group / columns;
            addSpot(spots, turn, height, timeAt(middle + pi) - 2.0 + 2.6 * turnInGroup(column, row, group));
        }
    }
    return spots;
}

}  // namespace spots
