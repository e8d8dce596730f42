// The hall round the ball: the copy that beams are traced against, a drum that carries a dome, and the dome
// as it is drawn. Wall and floor are drawn with what stands in the hall.
#include <algorithm>
#include <span>

#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/hall.h"
#include "production/models/models.h"
#include "production/models/paints.h"
#include "production/models/viewer.h"

using namespace model;
using namespace hall;

namespace {

constexpr int columns = 48;

// Profiles from the outside of the hall's axis in: distance from the axis, height.
constexpr Flat wall[] = {{wallRadius, 0}, {wallRadius, wallHeight}};
constexpr Flat dome[] = {{wallRadius, wallHeight}, {440, 690}, {320, 754}, {160, 790}, {0, 802}};
constexpr Flat ground[] = {{0, 0}, {wallRadius, 0}};

// A skin between the profile's points; columns run clockwise seen from above, so that a rising front faces
// the axis.
Shape skin(std::span<const Flat> profile) {
    return welded(grid(columns, int(profile.size()), true, false, [&](int c, int r) {
        return onRing(towerTurn + 2 * pi * c / columns, profile[r].x, profile[r].y);
    }));
}

// Over the part's breadth from the axis to the wall, over its height half a bay.
Shape paintedDome() {
    constexpr int along = 3;  // each piece of the profile cut into
    Outline fine = {dome[0]};
    for (size_t i = 0; i + 1 < std::size(dome); i++)
        for (int k = 1; k <= along; k++) fine.push_back(mix(dome[i], dome[i + 1], double(k) / along));
    const Shape plain = skin(fine);
    const Shape shape = mappedBy(plain, [&](const Face& face, Vec p) {
        constexpr double bay = pi / 4;
        const Vec centre = faceCentre(plain, face);
        const double turn = std::atan2(centre.z, centre.x) - towerTurn,
                     middle = towerTurn + bay * std::round(turn / bay),
                     aside = std::abs(std::remainder(std::atan2(p.z, p.x) - middle, 2 * pi)) / (bay / 2);
        const double out = std::hypot(p.x, p.z) / wallRadius;
        return walls::dome.at(out, out > 1e-6 ? std::min(1.0, aside) : 0.5);
    });
    return shaded(
        shape, [](Vec p, Vec) { return viewer::inLampLight(viewer::standingAt(std::atan2(-p.z, -p.x)), p); });
}

// A small mirror that throws what comes from `from` to `to`, front and back.
Shape mirror(Vec from, Vec place, Vec to, double half) {
    const Vec normal = normalized(normalized(to - place) + normalized(from - place));
    const Vec right = normalized(cross(normal, {0.31, 0.77, 0.55})) * half, up = cross(normal, right);
    Shape shape;
    shape.points = {place - right - up, place + right - up, place + right + up, place - right + up};
    addFace(shape, {0, 1, 2, 3});
    addFace(shape, {3, 2, 1, 0});
    return shape;
}

// A beam has five bounces and fades with each. It spends the first of them inside the projector's barrel, so
// that it leaves thin. Two of each source meet the ball with the fourth and are gone where the fifth is due,
// on the wall; one stands down to a stud on the stage, draws a side of a star from there to the next stud but
// one, and sinks into that. No line is left to cross the hall.
constexpr double mirrorHalf = 0.16, studHalf = 1, endHalf = 0.7;

Shape periscopes() {
    const Vec fan = Vec{0.41212, 0.86940, 0} * 5;  // between the aims of two beams of one source
    std::vector<Shape> mirrors;
    for (int i = 0; i < sources; i++) {
        const double turn = 2 * pi * i / sources;
        const Vec mouth = onRing(turn, sourceRadius, sourceHeight);
        const Vec axis = normalized(ballCentre - mouth);
        const Vec aside = normalized(cross(axis, fan)), along = cross(aside, axis);
        // Out, back and out again, each beam in a plane of its own.
        const auto first = [&](int j) { return mouth + normalized(ballCentre + fan * j - mouth) * (15 + j); };
        const auto second = [&](int j) { return mouth + axis * 6 + aside * 1.5 + along * (0.8 * j); };
        for (int j = 0; j <= 1; j++) {
            const Vec third = mouth + axis * 17 + aside * 0.9 + along * (0.8 * j);
            mirrors.push_back(mirror(mouth, first(j), second(j), mirrorHalf));
            mirrors.push_back(mirror(first(j), second(j), third, mirrorHalf));
            mirrors.push_back(mirror(second(j), third, ballCentre, mirrorHalf));
        }
        const Vec stud = onRing(turn, starRadius, starHeight),
                  next = onRing(turn + 4 * pi / sources, starRadius, starHeight);
        const Vec end = next + normalized(stud - next) * 2.5;
        mirrors.push_back(mirror(mouth, first(-1), second(-1), mirrorHalf));
        mirrors.push_back(mirror(first(-1), second(-1), stud, mirrorHalf));
        mirrors.push_back(mirror(second(-1), stud, next, studHalf));
        mirrors.push_back(mirror(stud, end, end + Vec{0, -20, 0}, endHalf));
    }
    return joined(mirrors);
}

}  // namespace

void makeRoomCollision(const char* path) {
    const Shape whole = joined({skin(wall), skin(dome), skin(ground), periscopes()});
    writeAml(path, {painted(smoothed(whole, hard), Uv{})});
}

// The dome alone: while the hall fades in the room is drawn over all that stands in it.
void makeRoom(const char* path) {
    writeAml(path, {paintedDome()});
}
