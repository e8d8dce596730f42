// The mirror ball and the copy that beams are traced against.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/kit/model/paints.h"
#include "production/models/models.h"

using namespace model;

namespace {

constexpr double radius = 42;
constexpr int level = 2;             // 320 mirrors
constexpr double mirrorPart = 0.80;  // of its face that a mirror covers, each way
constexpr double tilt = 0.09;        // slope of a mirror against its place
constexpr double domed = 0.012,
                 facetHalf = 7;  // radians that a mirror seems to bend from its middle to its edge, units
constexpr double leastLean = 0.6, mostLean = 1.45;  // radians that a mirror seems to lean to one side

// Tilts every mirror a little its own way, so that
// neighbours never catch the same lamp.
Shape hungAskew(Shape ball) {
    int count = 0;
    for (const Face& face : ball.faces) {
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

// Makes every mirror throw back light from a side of its own: those that face the viewer see not only
// what is behind him, which is dark, but lamps all round, and flare up and go out as the ball turns.
// Each is all but flat, so that a lamp fills it.
Shape glittering(Shape ball) {
    int count = 0;
    for (Face& face : ball.faces) {
        const Vec centre = faceCentre(ball, face), normal = faceNormal(ball, face);
        const Vec right = normalized(cross({0, 1, 0.01}, normal)), up = cross(normal, right);
        const double way = 2.39996 * 7 * count, draw = 0.754878 * count;
        const double lean = mix(leastLean, mostLean, draw - std::floor(draw));
        const Vec aside = right * std::cos(way) + up * std::sin(way);
        const Vec facing = normal * std::cos(lean) + aside * std::sin(lean);
        face.normals.clear();
        for (int point : face.points)
            face.normals.push_back(normalized(facing + (ball.points[point] - centre) * (domed / facetHalf)));
        count++;
    }
    return ball;
}

}  // namespace

void makeBallCollision(const char* path) {
    writeAml(path, {mappedBox(smoothed(icosphere(radius, level), hard), 24)});
}

// The mirrors lie on the collision copy's faces, each flat, so that a beam's spot lies on glass; between them
// shines the light within, which hangs still in the hall.
void makeBall(const char* path) {
    const Shape solid = icosphere(radius, level);
    Shape mirrors;
    for (const Face& face : solid.faces) {
        const Vec centre = faceCentre(solid, face);
        const int first = int(mirrors.points.size());
        for (int point : face.points) mirrors.points.push_back(mix(centre, solid.points[point], mirrorPart));
        addFace(mirrors, {first, first + 1, first + 2});
    }
    writeAml(path, {painted(glittering(hungAskew(smoothed(mirrors, hard))), hull::coolLamp)});
}
