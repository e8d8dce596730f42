// The mirror ball and the copy that beams are traced against.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/kit/model/paints.h"
#include "production/models/models.h"

using namespace model;

namespace {

constexpr double radius = 42;
constexpr int level = 2;       // 320 mirrors
constexpr double rise = 1.1;   // of the mirrors over the ground between them
constexpr double tilt = 0.09;  // slope of a mirror against its place
constexpr double domed = 0.03,
                 facetHalf = 7;  // radians that a mirror seems to bend from its middle to its edge, units

// A bar on the ball from one unit direction to another, broad side out.
Shape bar(Vec from, Vec to) {
    Sweep how;
    for (int i = 0; i <= 8; i++) how.path.push_back(normalized(mix(from, to, i / 8.0)) * (radius - 0.2));
    how.up = normalized(from + to);
    return sweep({{-0.9, -1}, {0.9, -1}, {0.75, 0.5}, {0.4, 0.75}, {-0.4, 0.75}, {-0.75, 0.5}}, how);
}

Shape hub(Vec direction) {
    const Outline rings = {{3.6, -1},  {3.6, 0.6}, {3.1, 1.3}, {2.4, 1.3}, {2, 0.6},
                           {1.4, 0.6}, {1.1, 1.2}, {0.6, 1.7}, {0, 1.8}};
    return placed(lathe(rings, 15), direction * (radius - 0.3), direction);
}

// Hubs on the twelve corners of the icosahedron that the ball grew from, bars along its thirty edges.
Shape frame() {
    const Shape solid = icosphere(1, 0);
    std::vector<Shape> parts;
    for (size_t i = 0; i < solid.points.size(); i++) {
        parts.push_back(hub(solid.points[i]));
        for (size_t k = 0; k < i; k++)
            if (length(solid.points[i] - solid.points[k]) < 1.1)
                parts.push_back(bar(solid.points[i], solid.points[k]));
    }
    return joined(parts);
}

// Tilts every mirror (the triangles of a plated ball; the rest are quads) a little its own way, so that
// neighbours never catch the same lamp.
Shape hungAskew(Shape ball) {
    int count = 0;
    for (const Face& face : ball.faces) {
        if (face.points.size() != 3) continue;
        const Vec centre = faceCentre(ball, face), normal = faceNormal(ball, face);
        const Vec right = normalized(cross({0, 1, 0.01}, normal)), up = cross(normal, right);
        const double way = 2.39996 * count++;
        const Vec slope = (right * std::cos(way) + up * std::sin(way)) * tilt;
        for (int point : face.points) {
            Vec& place = ball.points[point];
            place += normal * dot(place - centre, slope);
        }
    }
    return ball;
}

}  // namespace

void makeBallCollision(const char* path) {
    writeAml(path, {mappedBox(smoothed(icosphere(radius, level), hard), 24)});
}

// The mirrors lie on the collision copy's faces, each flat, so that a beam's spot lies on glass.
void makeBall(const char* path) {
    const Shape ground = smoothed(icosphere(radius - rise, level), hard);
    const Shape mirrors = hungAskew(panelled(ground, {0.45, 0.5, rise, hard}));
    // Each mirror seems domed, so that it holds a part of every lamp.
    const Shape jewels =
        shaded(mirrors, [](Vec p, Vec n) { return n + (p - n * dot(p, n)) * (domed / facetHalf); });
    writeAml(path, {painted(jewels, hull::coolLamp), painted(frame(), hull::orange)});
}
