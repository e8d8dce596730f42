// The hall round the ball: the copy that beams are traced against, and what is drawn over it. A drum carries
// a dome; on the wall of each quarter hangs a picture of light, before which its figure stands.
#include <algorithm>
#include <span>

#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/ball.h"
#include "production/models/hall.h"
#include "production/models/models.h"
#include "production/models/paints.h"
#include "production/models/stage.h"
#include "production/models/viewer.h"
#include "script/show_times.h"

using namespace model;
using namespace hall;

namespace {

constexpr int columns = 48;
constexpr double quarter = pi / 2;

// Profiles from the outside of the hall's axis in: distance from the axis, height.
constexpr Flat wall[] = {{wallRadius, 0}, {wallRadius, wallHeight}};
constexpr Flat dome[] = {{wallRadius, wallHeight}, {440, 690}, {320, 754}, {160, 790}, {0, 802}};
constexpr Flat ground[] = {{0, 0}, {wallRadius, 0}};

// A skin between the profile's points; columns run clockwise seen from above, so that a rising front faces
// the axis.
Shape skin(std::span<const Flat> profile) {
    return welded(grid(columns, int(profile.size()), true, false, [&](int c, int r) {
        return onRing(pillarTurn + 2 * pi * c / columns, profile[r].x, profile[r].y);
    }));
}

// Each piece of the profile cut into `along` pieces.
Shape fineSkin(std::span<const Flat> profile, int along) {
    Outline fine = {profile[0]};
    for (size_t i = 0; i + 1 < profile.size(); i++)
        for (int k = 1; k <= along; k++) fine.push_back(mix(profile[i], profile[i + 1], double(k) / along));
    return skin(fine);
}

// Where a face lies: its quarter (0 is the pillar's, then ship, probes, colossus), and for a place of it how
// far it is from the quarter's middle, 0..1 to either side.
struct Bearing {
    int quarter;
    double middle;
};
Bearing bearingOf(const Shape& shape, const Face& face) {
    const Vec centre = faceCentre(shape, face);
    const double turn = std::atan2(centre.z, centre.x) - pillarTurn;
    const int index = int(std::floor(turn / quarter + 0.5) + 4) % 4;
    return {index, pillarTurn + index * quarter};
}
double aside(Vec p, double middle) {
    return std::abs(std::remainder(std::atan2(p.z, p.x) - middle, 2 * pi)) / (quarter / 2);
}

// The wall of each quarter shows its own picture, mirrored about its middle. It lights up as a whole when the
// viewer is right across.
Shape paintedWall() {
    const Shape plain = fineSkin(wall, 14);
    Shape shape = mappedBy(plain, [&](const Face& face, Vec p) {
        const auto [index, middle] = bearingOf(plain, face);
        return walls::tile(atlas::walls::Tile(index)).at(aside(p, middle), p.y / wallHeight);
    });
    for (Face& face : shape.faces) {
        const double middle = bearingOf(shape, face).middle;
        for (int point : face.points)
            face.normals.push_back(viewer::inLampLight(viewer::standingAt(middle + pi), shape.points[point]));
    }
    return shape;
}

// While the hall fades in, it is drawn over all that stands in it, and its second light goes with the viewer,
// over his right shoulder. The viewer so many seconds before that is over.
viewer::View entering(double before) {
    return viewer::at(showtime::room.seconds() - before);
}

// What a place must face for him then to see that light in it.
Vec onEntering(Vec p) {
    const viewer::View view = entering(0.4);
    const Vec light = view.eye + view.right * 100 + view.up * 130 + view.back * 80;
    return normalized(light - p) + view.back;  // GL takes every place to be seen from straight ahead
}

// Floor and dome: over the part's breadth from the axis to the wall, over its height half a bay. Where the
// stage will stand, only who enters sees the floor.
Shape paintedDisc(std::span<const Flat> profile, int along, const Patch& patch) {
    const Shape plain = fineSkin(profile, along);
    const Shape shape = mappedBy(plain, [&](const Face& face, Vec p) {
        const Vec centre = faceCentre(plain, face);
        const double bay = quarter / 2, turn = std::atan2(centre.z, centre.x) - pillarTurn;
        const double middle = pillarTurn + bay * std::round(turn / bay);
        const double out = std::hypot(p.x, p.z) / wallRadius;
        return patch.at(out, out > 1e-6 ? std::min(1.0, 2 * aside(p, middle)) : 0.5);
    });
    return shaded(shape, [](Vec p, Vec) {
        if (p.y == 0 && std::hypot(p.x, p.z) < terraces[0].radius) return onEntering(p);
        return viewer::inLampLight(viewer::standingAt(std::atan2(-p.z, -p.x)), p);
    });
}

Uv swatch(atlas::walls::Swatch which) {
    return middleOf(atlas::walls::swatch(which));
}

// A number of 0..1 for a place, scattered.
double lotAt(Vec p) {
    return fraction(std::abs(std::sin(41 * p.x + 97 * p.y + 13 * p.z)) * 437);
}

// For who enters, too: a ball that the one of mirrors hides later, each mirror looking its own way.
Shape ballToCome() {
    constexpr double within = 0.92;
    const Shape plain = ball::plainMirrors();
    Shape mirrors = moved(scaled(moved(plain, ballCentre * -1), {within, within, within}), ballCentre);
    constexpr atlas::walls::Swatch swatches[] = {atlas::walls::orange, atlas::walls::blue,
                                                 atlas::walls::shade,  atlas::walls::orange,
                                                 atlas::walls::steel,  atlas::walls::pale};
    for (Face& face : mirrors.faces) {
        const int which = int(lotAt(faceCentre(mirrors, face)) * std::size(swatches));
        face.uvs.assign(face.points.size(), swatch(swatches[which]));
    }
    return shaded(smoothed(mirrors, hard), [](Vec p, Vec normal) {
        return normalized(onEntering(p)) + normal * (0.6 * lotAt(normal));
    });
}

// Also for who enters: what stands in the hall as he sees it, thrown from his eye beyond floor and wall,
// which hide it later, and laid so that what is nearer covers the rest. What is smaller to him than `least`
// (steradians) is left out.
Shape toCome(const Shape& whole, double least) {
    constexpr double under = 10, around = 60,
                     farthest = 990;   // units; the sun is flat, its middle farthest in
    constexpr double halfSight = 0.4;  // cosine, to where he looks while he comes
    const viewer::View view = entering(0);
    const Vec eye = view.eye;
    Shape shape;
    std::vector<std::pair<double, Face>> seen;
    for (const Face& face : whole.faces) {
        const Vec centre = faceCentre(whole, face);
        const double far = length(centre - eye);
        if (dot(areaVector(whole, face), eye - centre) > 2 * least * far * far * far &&
            dot(eye - centre, view.back) > halfSight * far)
            seen.push_back({far, face});
    }
    std::stable_sort(seen.begin(), seen.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    for (const auto& [distance, face] : seen) shape.faces.push_back(face);
    // How often `sight` fits between the eye and a ball round the origin, or (`upright` is 0) a drum.
    const auto reaching = [&](double radius, Vec sight, double upright) {
        const Vec from = {eye.x, eye.y * upright, eye.z}, way = {sight.x, sight.y * upright, sight.z};
        const double a = dot(way, way), b = dot(way, from), c = dot(from, from) - radius * radius;
        return (std::sqrt(b * b - a * c) - b) / a;
    };
    for (const Vec& p : whole.points) {
        const Vec sight = p - eye;
        const double toFloor = sight.y < 0 ? -(eye.y + under) / sight.y : 1e9;
        shape.points.push_back(eye + sight * std::min({toFloor, reaching(wallRadius + around, sight, 0),
                                                       reaching(farthest, sight, 1)}));
    }
    for (Face& face : shape.faces) face.normals.clear();
    return shape;
}

// Blue on his left and orange on his right, as the plates will be, none as bright as the next.
Shape platesToCome() {
    const viewer::View view = entering(0);
    Shape plates = toCome(stage::plates(), 1e-5);
    for (Face& face : plates.faces) {
        const Vec p = faceCentre(plates, face);
        const bool left = dot(p, view.right) < -0.2 * length(p);
        face.uvs.assign(face.points.size(), swatch(left ? atlas::walls::blue : atlas::walls::orange));
    }
    return shaded(plates, [](Vec p, Vec normal) {
        return onEntering(p) + normal * (0.5 * lotAt({std::round(p.x / 12), 0, std::round(p.z / 12)}));
    });
}

Shape shipToCome() {
    const Shape plain = stage::ship();
    Shape ship = toCome(plain, 5e-5);
    const Vec lamp = normalized(entering(0).up + entering(0).back * 0.6 - entering(0).right * 0.4);
    for (Face& face : ship.faces) {
        const double lit = dot(faceNormal(plain, face), lamp);
        face.uvs.assign(face.points.size(), swatch(lit > 0.55   ? atlas::walls::steel
                                                   : lit > 0.15 ? atlas::walls::blue
                                                                : atlas::walls::shade));
    }
    return shaded(ship, [](Vec p, Vec) { return onEntering(p); });
}

Shape pillarsToCome() {
    const viewer::View view = entering(0);
    const Shape plain = stage::pillars();
    Shape pillars = toCome(plain, 2e-5);
    for (Face& face : pillars.faces) {
        const bool left = dot(faceCentre(plain, face), view.right) < 0;
        const bool lit = dot(faceNormal(plain, face), view.right) * (left ? -1 : 1) > 0.3;
        face.uvs.assign(face.points.size(), swatch(!lit   ? atlas::walls::shade
                                                   : left ? atlas::walls::steel
                                                          : atlas::walls::orange));
    }
    return shaded(pillars, [](Vec p, Vec) { return onEntering(p); });
}

Shape sunToCome() {
    return shaded(painted(toCome(stage::sun(), 0), swatch(atlas::walls::orange)),
                  [](Vec p, Vec) { return onEntering(p); });
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

void makeRoom(const char* path) {
    writeAml(path, {paintedWall(), paintedDisc(ground, 12, walls::tile(atlas::walls::floor)),
                    paintedDisc(dome, 3, walls::tile(atlas::walls::dome)), sunToCome(), pillarsToCome(),
                    shipToCome(), platesToCome(), ballToCome()});
}
