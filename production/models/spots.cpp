#include "production/models/spots.h"

#include <cmath>
#include <vector>

#include "production/models/arcade.h"
#include "production/models/viewer.h"
#include "production/shared/comet.h"
#include "production/shared/glow.h"
#include "script/room_view.h"

using namespace model;

namespace {

constexpr double halfAzimuth = 4.6, halfElevation = 2.8;  // degrees of the picture that a spot shows

// Whether what faces `normal` never shows the viewer the glow beyond the hall while he sees it.
bool dark(Vec place, Vec normal) {
    constexpr double step = 0.2, halfSight = 0.55;  // seconds; cosine
    constexpr double margin = 0.14;                 // round the middle of what it shows
    for (double turn = 0; turn < 2 * pi; turn += step * roomTurn) {
        const viewer::View view = viewer::standingAt(turn);
        if (-dot(normalized(place - view.eye), view.back) < halfSight) continue;
        const Vec shown = viewer::shown(view, place, normal);
        if (shown.z < glow::begins + margin && shown.y < 0.1) return false;
    }
    return true;
}

// What a spot shows: the comet's head, or one of the lamps over the viewer.
enum class Light { comet, cold, warm };
Vec shownBy(Light light, double across, double up) {
    if (light == Light::comet)
        return viewer::direction(comet::azimuth + halfAzimuth * across,
                                 comet::elevation + halfElevation * up);
    constexpr double middle = degrees(12);  // of a lamp, from straight above
    return {0, std::cos(middle), std::sin(light == Light::cold ? middle : -middle)};
}

// A square that lies there with a front, and shows its light at that time, unless it would have to look
// behind its front for that. What it shows is the same if it looks the other way.
void addSpot(Shape& spots, Vec place, Vec right, Vec up, Light light, double time) {
    const Vec front = normalized(cross(right, up));
    const viewer::View view = viewer::at(time);
    const double side = dot(viewer::facing(view, place, shownBy(light, 0, 0)), front) > 0 ? 1 : -1;
    Face face;
    std::vector<Vec> rim;
    for (const auto& [c, s] : {Flat{1, 1}, Flat{-1, 1}, Flat{-1, -1}, Flat{1, -1}}) {
        const Vec corner = place + right * c + up * s;
        rim.push_back(corner);
        face.points.push_back(int(spots.points.size() + face.points.size()));
        face.uvs.push_back({});
        face.normals.push_back(viewer::facing(view, corner, shownBy(light, c, s)) * side);
        if (dot(face.normals.back(), front) < 0.01) return;
    }
    spots.points.insert(spots.points.end(), rim.begin(), rim.end());
    spots.faces.push_back(face);
}

// The next one's light.
Light lightOf(int count) {
    constexpr Light lights[] = {Light::comet, Light::cold, Light::comet, Light::warm};
    return lights[count % std::size(lights)];
}

// Before the wall, where it stays dark otherwise.
void addOnWall(Shape& spots, double turn, double height, Light light, double time) {
    constexpr double gap = 2, half = 7.5;  // from the gallery; of its size
    const Vec place = hall::onRing(turn, arcade::gallery - gap, height);
    if (dark(place, viewer::facing(viewer::at(time), place, shownBy(light, 0, 0))))
        addSpot(spots, place, hall::onRing(turn + pi / 2, half, 0), {0, half, 0}, light, time);
}

// How far neighbour `column` of row `row` lies in its group's turn: 0..1, falling along the row.
double turnInGroup(int column, int row, int group) {
    return 1 - fraction((column % group + 0.618 * row * group) / group);
}

}  // namespace

namespace spots {

Shape onWall() {
    constexpr int columns = 100, group = 10;
    constexpr double heights[] = {405, 455, 505, 550};
    Shape spots;
    for (int row = 0; row < int(std::size(heights)); row++) {
        for (int column = 0; column < columns; column++) {
            // Scattered about its place.
            const int count = row * columns + column;
            const double turn =
                2 * pi * (column + 0.5 * (row % 2) + 0.8 * fraction(0.618034 * count)) / columns;
            const double height = heights[row] + 34 * (fraction(0.754878 * count) - 0.5);
            const double middle = 2 * pi * (column / group + 0.5) * group / columns;
            addOnWall(spots, turn, height, lightOf(count),
                      viewer::timeAt(middle + pi) - 2.0 + 2.6 * turnInGroup(column, row, group));
        }
    }
    return spots;
}

}  // namespace spots
