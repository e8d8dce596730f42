// The robot: lacquered shells, and what glows or is painted on it, which are its screen's mesh, since that
// alone has a picture; steel joints and frames, its body's mesh; and rubber, its arms' mesh. The picture's
// patches hold each lacquer in lights that stand still while the viewer goes round. It has a face, an engine
// that burns in its back, gauges on its calves, and a heart's beat on each flank; it stands on a plate below
// y = 0, looks along +z and down, and waves. Between hips and chest the middle is free, up to flat bellows
// behind the axis: the camera flies through.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/figures.h"
#include "production/models/models.h"
#include "production/models/paints.h"

using namespace model;

namespace {

constexpr Vec headCentre = {0, 152.5, 2};
constexpr double headSize = 1.26;
constexpr double headTilt = 0.34, headLean = 0.06;  // radians: the face towards viewers below, an ear down
constexpr double faceDepth = 15.5;                  // from the head's centre to the bezel
constexpr Vec chestLamp = {0, 109, 17.2};

// Where things lie in "roboscreen".
constexpr Patch facePicture = patchOf(atlas::robot::face), turbine = patchOf(atlas::robot::turbine),
                gauge = patchOf(atlas::robot::gauge),
                iris = patchOf(atlas::robot::iris.within(atlas::robot::margin)),
                pulsePicture = patchOf(atlas::robot::pulse.within(atlas::robot::margin));
constexpr Uv warmLamp = middleOf(atlas::robot::warmLamp), ember = middleOf(atlas::robot::ember),
             coldTube = middleOf(atlas::robot::coldTube.part(0, 0, 2.4, 1));

// A part in its two materials: lacquered shells and the steel works between them.
struct Part {
    Shape shells, works;
};

// Two lamps face each other across it, so that from wherever a viewer looks it has a side in the light and
// one in the dark: a warm key before its left shoulder, a cold one behind the other. From below shines the
// disc of light that it is born of.
constexpr Vec keyLamp = {0.66, 0.44, 0.61}, coldLamp = {-0.95, 0.14, 0.02};

// What stands in their way, and darkens what is close by.
struct Blocker {
    Vec middle;
    double radius;
};
constexpr Blocker blockers[] = {{{0, 150, 2}, 20},   {{0, 108, 0}, 19},   {{13, 112, 0}, 15},
                                {{-13, 112, 0}, 15}, {{0, 57, 0}, 15},    {{13, 45, 0}, 8},
                                {{-13, 45, 0}, 8},   {{15, 14, 0}, 9},    {{-15, 14, 0}, 9},
                                {{33.5, 116, 0}, 9}, {{-33.5, 116, 0}, 9}};

// How much of a lamp is seen from a place: 0..1.
double clearTo(Vec lamp, Vec p) {
    double clear = 1;
    for (const auto& [middle, radius] : blockers) {
        const Vec away = middle - p;
        const double ahead = dot(away, lamp);
        if (length(away) < radius * 1.2 || ahead < 0) continue;
        clear *= smoothstep(radius * 0.6, radius * 1.25, length(away - lamp * ahead));
    }
    return clear;
}

// How much a place gets of a lamp; in the shadow it gets `least`.
double litBy(Vec lamp, double least, Vec p, Vec normal) {
    const Vec to = normalized(lamp);
    return std::clamp(dot(normal, to), 0.0, 1.0) * mix(least, 1, clearTo(to, p));
}

// What the lamps' halls throw back: a faint key from all sides, so that no form sinks into the night.
double litAround(Vec normal) {
    return 0.48 * (0.55 + 0.45 * dot(normal, normalized(keyLamp)));
}

// The engine's fire shines on what is close to it.
double litByEngine(Vec p, Vec normal) {
    constexpr Vec fire = {0, 90, -66};
    constexpr double bright = 80;  // so far away it is as bright as it gets
    const Vec to = fire - p;
    return std::clamp(dot(normal, normalized(to)), 0.0, 1.0) * std::min(0.8, 0.8 * bright / length(to));
}

// In a lacquer's patch: across by the key, upwards by the cold lamp and downwards by the light from below.
Shape lacquered(const Shape& whole, const std::function<Patch(Vec)>& lacquer) {
    Shape shape = triangulated(whole);
    const std::vector<std::array<Vec, 3>> normals = cornerNormals(shape);
    for (size_t f = 0; f < shape.faces.size(); f++) {
        Face& face = shape.faces[f];
        const Patch patch = lacquer(faceCentre(shape, face));
        face.uvs.clear();
        for (size_t i = 0; i < 3; i++) {
            const Vec p = shape.points[face.points[i]], normal = normals[f][i];
            const double key = std::max(
                             {litBy(keyLamp, 0.1, p, normal), litByEngine(p, normal), litAround(normal)}),
                         side = litBy(coldLamp, 0.1, p, normal);
            const double below = litBy({0, -1, 0}, 0.3, p, normal) * smoothstep(20, 40, p.y);
            constexpr double neither = atlas::robot::neither;
            const double up = neither + (1 - neither) * side - neither * below;
            face.uvs.push_back(patch.at(key * mix(0.72, 1, smoothstep(0, 60, p.y)), up));
        }
    }
    return shape;
}

Patch coatOf(int lacquer) {
    return patchOf(atlas::robot::lacquer(lacquer).within(atlas::robot::margin));
}

// An arm on the side of x > 0, from its joints and where its open hand points.
struct Pose {
    Vec elbow, wrist, reach;
    double curl;  // of the fingers
};
constexpr Vec shoulder = {33.5, 116, 0}, shoulderTop = {0.75, 0.6, 0.05};
// One swings back, clear of the body from any side; one waves.
constexpr Pose swinging = {{43, 98, -11}, {46, 86, -32}, {0.1, -0.45, -0.85}, 0.45},
               waving = {{49, 111, -4}, {54, 135, 1}, {0.16, 0.97, 0.1}, 0.14};

// Whether a place belongs to the hand, or the forearm, of an arm on the side of x > 0.
bool isHand(Vec p, const Pose& pose) {
    return length(p - pose.wrist) < 26 && dot(p - pose.wrist, normalized(pose.reach)) > -3.2;
}
bool isForearm(Vec p, const Pose& pose) {
    const Vec bone = pose.wrist - pose.elbow;
    const double along = std::clamp(dot(p - pose.elbow, bone) / dot(bone, bone), 0.0, 1.0);
    return length(p - pose.elbow - bone * along) < 9.5;
}

// Which lacquer a shell wears.
Patch coatAt(Vec p) {
    using namespace atlas::robot;
    const double out = std::hypot(p.x, p.z);
    const Vec other = {-p.x, p.y, p.z};
    if (isHand(p, waving) || isHand(other, swinging)) return coatOf(ivory);
    if (isForearm(p, waving) || isForearm(other, swinging)) return coatOf(orange);
    if (p.y < -1) return coatOf(orange);  // boots
    const auto within = [&](double low, double high) { return p.y > low && p.y < high; };
    if (p.y < 66)
        return coatOf(within(12.2, 14.8) || within(23.4, 29) ? orange : within(4, 12.2) ? petrol : ivory);
    // Above a groove's floor, whose triangles lie to both sides of its middle.
    if (out < 36 && p.y > 81 && p.y < 130) return coatOf(p.y < 97.4 ? orange : p.y < 119.4 ? ivory : petrol);
    return coatOf(ivory);
}

Part together(const std::vector<Part>& parts) {
    std::vector<Shape> shells, works;
    for (const Part& part : parts) shells.push_back(part.shells), works.push_back(part.works);
    return {joined(shells), joined(works)};
}

Part mirrored(const Part& part) {
    return {withMirror(part.shells), withMirror(part.works)};
}

// Turns a lathe's round section into a rounded square, `depth` (a part of its width) deep.
Shape squared(const Shape& shape, double depth) {
    return bent(shape, [&](Vec p) {
        const double r = std::hypot(p.x, p.z);
        if (r == 0) return p;
        const double fourth = std::pow(std::pow(p.x / r, 4) + std::pow(p.z / r, 4), -0.25);
        const double square = mix(1, fourth, 0.7);
        return Vec{p.x * square, p.y, p.z * square * depth};
    });
}

// A disc of rings lying on the xz plane, up to `height`: the mark of all joints and lamps here.
Shape rings(double radius, double height) {
    const double r = radius, h = height;
    return lathe({{r, 0},
                  {r, h * 0.55},
                  {r * 0.96, h * 0.8},
                  {r * 0.88, h},
                  {r * 0.76, h},
                  {r * 0.7, h * 0.75},
                  {r * 0.66, h * 0.4},
                  {r * 0.5, h * 0.4},
                  {r * 0.46, h * 0.7},
                  {r * 0.36, h * 0.95},
                  {r * 0.18, h * 1.08},
                  {0, h * 1.12}},
                 20);
}

Shape bolt(double radius, double height) {
    const double r = radius, h = height;
    return lathe({{r, 0}, {r, h * 0.6}, {r * 0.6, h}, {0, h}}, 10);
}

// A round limb between two joints. `cuts` (parts of its length) divide it into plates, its radius goes from
// `start` to `end` and is fuller by `swell` half-way.
Shape limb(Vec from, Vec to, const Plates& plates, const std::vector<double>& cuts, double start, double end,
           double swell) {
    const double size = length(to - from);
    std::vector<double> heights;
    for (double cut : cuts) heights.push_back(cut * size);
    const Outline wall = platedProfile(heights, plates, [&](double y) {
        const double k = y / size;
        return mix(start, end, k) + swell * std::sin(pi * k);
    });
    const Outline profile = chained({{{0, heights.front()}}, wall, {{0, heights.back()}}});
    return placed(lathe(profile, 20), from, to - from);
}

Shape base() {
    const Outline profile = {{0, -31},      {30, -31},   {33, -29.5}, {41, -29.5}, {43.5, -28},
                             {44, -26},     {43.5, -24}, {41, -22.5}, {36, -22},   {35, -20.6},
                             {33.6, -19.6}, {31, -19.4}, {29, -20.4}, {18, -21.8}, {0, -23.2}};
    const Shape studs = around(moved(bolt(2.2, 1.4), {38.6, -22.4, 0}), 12);
    return joined({flutedLathe(profile, {12, 0.07, 1.4, -30, -23, 5}), studs});
}

Part foot() {
    const Outline side = {{-15, -20.4}, {21, -20.4}, {22, -17}, {18, -12}, {8, -7},
                          {6, -2},      {-7, -2},    {-11, -6}, {-15, -9}};
    const Shape flat = moved(turned(extrude(side, 19, 2.2), Axis::y, -pi / 2), {9.5, 0, 0});
    // Flanks that lean down and bulge, or each would flash as a whole when it meets a lamp.
    const Shape boot = bent(triangulated(flat), [](Vec p) {
        const double out = 1 + 0.02 * (p.y + 11) - 0.0006 * (p.z - 3) * (p.z - 3);
        return Vec{p.x * out, p.y, p.z};
    });
    const Shape ankle = withMirror(placed(rings(5.2, 1.6), {9.4, -12, 2}, {1, 0, 0}));
    const Shape toe = placed(rings(4.6, 2), {0, -10.6, 13}, {0, 1, 0.72});
    const Shape collar =
        moved(lathe({{0, -4}, {9, -4}, {9.6, -2.6}, {9, -1.2}, {7, 0}, {0, 0}}, 18), {0, 0, -0.5});
    return {smoothed(boot, 0.9), joined({ankle, toe, collar})};
}

Part leg() {
    const Vec ankle = {15.5, -1, 0}, knee = {14.5, 32, 1.5}, hip = {11.5, 57, 0};
    const Shape shin = limb(ankle, knee, {1, 1.2, 0.8, 4}, {0, 0.16, 0.40, 0.48, 0.74, 0.88}, 11, 6, 1.6);
    const Shape thigh = limb(knee, hip, {1, 1, 0.8, 3}, {0.16, 0.32, 0.84, 1}, 6.2, 8.4, 0.6);
    const Shape joint =
        joined({placed(rings(6.2, 6.6), knee, {1, 0, 0}), placed(rings(6.2, 6.6), knee, {-1, 0, 0})});
    const auto [boot, ankles] = foot();
    return {joined({moved(boot, {ankle.x, 0, 0}), shin, thigh}),
            joined({moved(ankles, {ankle.x, 0, 0}), joint})};
}

Shape girdle() {
    const Outline wall = platedProfile({49, 53, 64}, {1.1, 1.1, 0.9, 3}, [](double y) {
        return 20 - 0.02 * (y - 57) * (y - 57) - 3 * smoothstep(60, 65, y);
    });
    const Outline profile =
        chained({{{0, 46}, {10, 46}}, wall, {{12, 64.6}, {11, 62.5}, {7, 62.5}, {6.4, 64}, {0, 64}}});
    return squared(flutedLathe(profile, {8, 0.12, 1.2, 48, 63, 3}, pi / 8), 0.68);
}

// Seen from below while the camera looks up the robot: a hatch with bolts, the sockets of the hips and a
// plate on each side.
Shape hips() {
    const Shape bolts = around(moved(bolt(1, 0.8), {7.2, 0, 0}), 8);
    const Shape hatch = placed(joined({rings(5.5, 1.4), bolts}), {0, 46.2, 0}, {0, -1, 0});
    const Shape socket = placed(rings(8.6, 3.4), {11.6, 49.4, 0}, {0.12, -1, 0});
    const Shape hipPlate = placed(rings(6.4, 3), {18.6, 56, 0}, {1, 0.05, 0});
    return joined({hatch, withMirror(joined({socket, hipPlate}))});
}

// A hose with ribs along a curve.
Shape hose(const std::vector<Vec>& points, double radius) {
    Sweep how;
    how.path = curveThrough(points, false, 10);
    how.change = [=](int step, Outline section) {
        const double wide = radius * (step % 2 ? 1 : 0.86);
        for (Flat& p : section) p = {p.x * wide, p.y * wide};
        return section;
    };
    return smoothed(sweep(polygon(8, 1), how), 0.9);
}

// A rod that slides in a sleeve.
Shape rod(Vec from, Vec to, double radius) {
    return placed(lathe({{0, 0}, {radius, 0}, {radius, length(to - from)}, {0, length(to - from)}}, 14), from,
                  to - from);
}
Shape sleeve(Vec from, Vec to, double radius) {
    const double size = length(to - from), r = radius;
    return placed(lathe({{0, 0},
                         {r, 0},
                         {r * 1.2, 0.6},
                         {r * 1.2, 1.6},
                         {r, 2.2},
                         {r, size - 2.2},
                         {r * 1.2, size - 1.6},
                         {r * 1.2, size - 0.6},
                         {r, size},
                         {0, size}},
                        14),
                  from, to - from);
}

// What the legs have behind, for who looks up at them: two hoses to each thigh.
Shape legHoses() {
    return withMirror(
        joined({hose({{6, 49, -10.5}, {5.6, 42, -14.5}, {8.6, 35, -14}, {12, 29.5, -8.5}}, 1.25),
                hose({{17, 50, -9.5}, {20.4, 43, -13}, {20.4, 36, -12.5}, {17.4, 30, -8}}, 1.25)}));
}

constexpr double chestDepth = 0.62;  // of its width
double chestRadius(double y) {
    return 13 + 17 * smoothstep(80, 112, y) - 11 * smoothstep(115, 131, y);
}

// A lit gauge that lies on a limb, from one part of its length to another; its radius goes from `start` to
// `end`. It looks along -z, turned by `turn` radians towards +x, and is as broad as `half` radians to each
// side.
struct Gauge {
    Vec from, to;
    double low, high, start, end, swell;
    double turn, half;
};
Shape gaugeOn(const Gauge& at) {
    return painted(
        grid(7, 9, false, false,
             [&](int c, int r) {
                 const double k = mix(at.low, at.high, r / 8.0);
                 const double aside = at.turn - mix(-at.half, at.half, c / 6.0);
                 const double radius = mix(at.start, at.end, k) + at.swell * std::sin(pi * k) + 0.7;
                 return mix(at.from, at.to, k) + Vec{radius * std::sin(aside), 0, -radius * std::cos(aside)};
             }),
        gauge);
}

// On the calves, on the outside of the thighs, and across the belly.
Shape gauges() {
    const Shape calf = gaugeOn({{15.5, -1, 0}, {14.5, 32, 1.5}, 0.20, 0.70, 11, 6, 1.6, 0, 0.5});
    const Shape thigh = gaugeOn({{14.5, 32, 1.5}, {11.5, 57, 0}, 0.18, 0.53, 6.2, 8.4, 0.6, pi / 2, 0.42});
    const Shape strip = grid(9, 3, false, false, [](int c, int r) {
        const double x = mix(-5.6, 5.6, c / 8.0), y = 92.6 + 1.7 * (r - 1);
        return Vec{x, y, chestDepth * chestRadius(y) * (1 - 0.0005 * x * x) + 0.5};
    });
    const Shape belly = mappedBy(
        strip, [](const Face&, Vec p) { return gauge.at(0.5 + (p.y - 92.6) / 3.4, 0.5 - p.x / 11.2); });
    return joined({withMirror(joined({calf, thigh})), belly});
}

// The maker's plate, round the back of the pelvis.
constexpr Flat plateHalf = {11.4, 3.8};
Shape makersPlate() {
    return grid(9, 4, false, false, [](int c, int r) {
        const double x = 2 * c / 8.0 - 1, y = 2 * r / 3.0 - 1;
        return Vec{-plateHalf.x * x, 55.6 + plateHalf.y * y, -15.2 + 1.1 * x * x};
    });
}

// Bellows, broad but flat and behind the axis.
Shape waist() {
    std::vector<double> cuts;
    for (int i = 0; i <= 6; i++) cuts.push_back(61 + i * 4.4);
    const Outline wall =
        platedProfile(cuts, {1.2, 1.6, 1.4, 3}, [](double y) { return 15.5 + 0.014 * (y - 74) * (y - 74); });
    const Outline profile = chained({{{0, 60}}, wall, {{0, 88.5}}});
    return moved(scaled(lathe(profile, 28), {1, 1, 0.4}), {0, 0, -10.4});
}

// What carries the chest in front: a pair of pistons that lean apart, and hoses at the sides.
Shape waistSleeves() {
    return withMirror(sleeve({9, 62, 10.6}, {10.4, 73, 12.6}, 2.6));
}
Shape waistRods() {
    return withMirror(rod({10.4, 73, 12.6}, {12, 87, 13.4}, 1.4));
}
Shape waistHoses() {
    return withMirror(hose({{15.5, 62, -4}, {21, 69, -7}, {21, 78, -7}, {16.5, 87, -3}}, 1.7));
}

Shape torso() {
    const Outline wall = platedProfile({82, 88, 97, 119, 127.5}, {1.4, 1.3, 1.1, 3.2}, chestRadius);
    // The lamp below, that is seen from the gap over the hips.
    const Outline below = {{0, 84.5}, {4, 84.5}, {4.6, 83}, {7, 83}, {7.6, 84.5}, {9, 84.5}, {9.8, 82}};
    const Outline profile = chained({below, wall, {{15, 128.5}, {10, 129.5}, {0, 129.5}}});
    return squared(flutedLathe(profile, {8, 0.1, 1.3, 83.4, 124, 4}, pi / 8), chestDepth);
}

// The bezel's centre line: a rounded rectangle in the xy plane.
std::vector<Vec> screenOutline(double halfWidth, double halfHeight, double corner, double z) {
    std::vector<Vec> path;
    for (int quarter = 0; quarter < 4; quarter++) {
        const double x = (halfWidth - corner) * (quarter == 0 || quarter == 3 ? 1 : -1);
        const double y = (halfHeight - corner) * (quarter < 2 ? 1 : -1);
        for (int i = 0; i <= 5; i++) {
            const double angle = pi / 2 * (quarter + i / 5.0);
            path.push_back({x + corner * std::cos(angle), y + corner * std::sin(angle), z});
        }
    }
    return path;
}

// A screen's frame: `half` is the glass's half size.
Shape bezel(Flat half, double corner, double z) {
    Sweep frame;
    frame.closedPath = true;
    frame.path = screenOutline(half.x + 0.2, half.y + 0.2, corner, z);
    frame.up = {0, 0, 1};
    return sweep({{-1.7, -2}, {1.9, -2}, {1.9, 0.6}, {1.2, 1.5}, {0, 1.9}, {-1.2, 1.3}, {-1.7, 0.4}}, frame);
}

// Carries what faces +z onto the chest's flank, on the side of x > 0 or of x < 0.
Shape onFlank(const Shape& shape, double side) {
    const Vec middle = {side * 25, 99.6, 8}, out = normalized(Vec{side * 0.76, -0.54, 0.36});
    const Vec right = normalized(cross({0, 1, 0}, out)), up = cross(out, right);
    return bent(shape, [=](Vec p) { return middle + right * p.x + up * p.y + out * p.z; });
}
constexpr Flat pulseHalf = {7.4, 6.2};

// Its engine, which bursts from the back and points down at who stands behind. Built along +y from within
// the chest.
Shape onBack(const Shape& shape) {
    return placed(shape, {0, 113, -10}, {0, -0.6, -0.8});
}
constexpr double fanRadius = 14.8, lipHeight = 19.6;
Shape cowling() {
    const Outline profile = {{10, 0},   {14, 3},    {14.6, 4.4},  {14, 5.4},
                             {16, 6.4}, {17.2, 11}, {17.6, 14.6}, {16.8, 15.2}};
    const Shape fin = moved(box({5.4, 9, 1.1}, 0.4, 2), {17.4, 8.4, 0});
    return onBack(joined({lathe(profile, 40), around(fin, 18)}));
}
Shape lip() {
    return onBack(lathe({{16.8, 15},
                         {18.2, 15.6},
                         {18.6, 17.4},
                         {18, 19},
                         {17, lipHeight},
                         {16, 19.3},
                         {15.2, 18},
                         {fanRadius, 12}},
                        40));
}
Shape fan() {
    const Shape disc = grid(40, 6, true, false, [](int c, int r) {
        const double out = fanRadius * (1 - r / 5.0), turn = -2 * pi * c / 40;
        return Vec{out * std::cos(turn), 14.5 - 2 * (1 - r / 5.0), out * std::sin(turn)};
    });
    const Shape wheel = welded(mappedBy(disc, [](const Face&, Vec p) {
        return turbine.at(0.5 + 0.5 * p.x / fanRadius, 0.5 - 0.5 * p.z / fanRadius);
    }));
    const Shape lamp = moved(painted(icosphere(0.62, 1), warmLamp), {21, 11.6, 0});
    return onBack(joined({wheel, around(lamp, 18)}));
}

// The reactor in the chest, shoulder sockets.
Part torsoFittings() {
    const Shape reactor =
        placed(joined({rings(9.5, 4.2), around(moved(icosphere(1.3, 1), {11.8, 0.6, 0}), 8)}), chestLamp,
               {0, 0.02, 1});
    const Shape socket = placed(rings(9, 3), {25.5, 116, 0}, {1, 0, 0});
    const Shape frame = bezel({pulseHalf.x + 1.4, pulseHalf.y + 1.4}, 2.5, 0.4);
    return {{}, joined({reactor, onFlank(frame, 1), onFlank(frame, -1), withMirror(socket)})};
}

Shape neck() {
    const Outline wall = platedProfile({128.5, 130.7, 132.9, 135.1, 137.3}, {0.8, 1.2, 0.7, 2},
                                       [](double y) { return 8.4 - 0.1 * (y - 128); });
    const Outline profile = chained({{{0, 128}}, wall, {{0, 138}}});
    return lathe(profile, 20);
}

// Where the head's own coordinates (origin at its centre) lie on the robot.
Shape onNeck(const Shape& shape) {
    const Shape nodding = turned(scaled(shape, {headSize, headSize, headSize}), Axis::x, headTilt);
    return moved(turned(nodding, Axis::z, headLean), headCentre);
}

constexpr Flat faceHalf = {16.2, 11.8};
constexpr Vec earMiddle = {17.6, 1, -2};

// The two aerials make a V.
constexpr Vec aerialFoot = {5.5, 16.5, -3}, aerialTip = {19, 33.5, -7};

// A television's tube: wide in front, drawn in behind. Where a place of the plain box comes to lie.
Vec onShell(Vec p) {
    const double k = smoothstep(6, -16, p.z);
    return {p.x * mix(1, 0.72, k), p.y * mix(1, 0.8, k) + k * 1.5, p.z};
}

// The head's shell, which seems to swell, or each of its flat sides would mirror but one place of the sky.
Shape swelling(const Shape& shell) {
    const Vec right = {std::cos(headLean), std::sin(headLean), 0};
    const Vec ahead = {std::sin(headTilt) * std::sin(headLean), -std::sin(headTilt) * std::cos(headLean),
                       std::cos(headTilt)};
    const Vec up = cross(ahead, right);
    return shaded(shell, [=](Vec p, Vec) {
        const Vec out = (p - headCentre) * (1 / headSize);
        const auto swell = [](double part) { return part * part * part; };
        return right * swell(dot(out, right) / 20) + up * swell(dot(out, up) / 15.5) +
               ahead * swell(dot(out, ahead) / 15.5);
    });
}

Shape headShell() {
    return onNeck(bent(box({40, 31, 31}, 6, 3), onShell));
}

Shape screenFrame() {
    return onNeck(bezel(faceHalf, 5, faceDepth));
}

// The tube behind the screen, drawn in by steps to a plug, and the cable from there to the chest.
Shape tubeBehind(const Outline& profile) {
    return onNeck(placed(squared(lathe(profile, 32), 0.86), {0, 1.5, -15}, {0, 0, -1}));
}
Shape tubeSteps() {
    return tubeBehind({{13.2, 0}, {13, 1.6}, {12, 2.4}, {10.6, 2.4}, {10.4, 4.4}, {9.6, 5.2}, {7.6, 5.2}});
}
Shape tubePlug() {
    return tubeBehind({{7.6, 5}, {7.4, 7}, {6.6, 7.8}, {4.2, 8}, {4, 10.4}, {3.2, 11}, {0, 11.2}});
}
Shape cable() {
    return hose({{0, 150, -30}, {0, 145, -35}, {0, 135, -31}, {0, 126, -13}}, 1.7);
}

Shape brows() {
    const Shape over = moved(box({34, 2.6, 5}, 1.1, 2), {0, 14.6, 15});
    const Shape chin = moved(box({20, 1.6, 3}, 0.7, 2), {0, -14.6, 13.4});
    return onNeck(joined({over, chin}));
}

Shape headWorks() {
    const Shape ear = placed(rings(8.2, 5), earMiddle, {1, 0, 0});
    const double reach = length(aerialTip - aerialFoot);
    const Shape aerial =
        placed(lathe({{0, -1}, {2.2, -1}, {2.2, 1}, {1.2, 2.4}, {0.4, 5}, {0.3, reach}, {0, reach}}, 10),
               aerialFoot, aerialTip - aerialFoot);
    return onNeck(withMirror(joined({ear, aerial})));
}

// Round at its tip, thick at its root.
Shape finger(Vec knuckle, Vec out, double size, double curl) {
    Sweep how;
    const Vec palm = {0, 0, 1};
    std::vector<Vec> bones = {knuckle - out * 2};
    Vec ahead = out, at = knuckle;
    for (const double part : {0.42, 0.34, 0.24}) {
        bones.push_back(at);
        at = at + ahead * (size * part);
        ahead =
            normalized(ahead * std::cos(curl) + normalized(palm - ahead * dot(palm, ahead)) * std::sin(curl));
    }
    bones.push_back(at);
    how.path = curveThrough(bones, false, 6);
    how.up = palm;
    const double last = double(how.path.size() - 1);
    how.change = [=](int step, Outline section) {
        const double k = step / last, end = smoothstep(1, 0.84, k);
        // Drawn in where it bends, at its second and third bone.
        const double joint = std::max(bell(k - 0.5, 0.035), bell(k - 0.75, 0.03));
        const double radius = mix(2.3, 1.85, k) * (1 - 0.16 * joint) * std::sqrt(std::max(0.03, end));
        for (Flat& p : section) p = {p.x * radius, p.y * radius};
        return section;
    };
    return smoothed(sweep(polygon(16, 1), how), 1.3);
}

struct Finger {
    Vec knuckle, out;
    double size;
};
constexpr Finger fingers[] = {{{-3.7, 6.4, 0}, {-0.26, 1, 0}, 9},
                              {{0, 7.4, 0}, {0, 1, 0}, 10},
                              {{3.7, 6.4, 0}, {0.26, 1, 0}, 9},
                              {{-4.4, 1.4, 0.6}, {-0.92, 0.5, 0.2}, 8}};

Shape onWrist(const Shape& hand, const Pose& pose) {
    return placed(scaled(hand, {1.22, 1.22, 1.22}), pose.wrist, normalized(pose.reach));
}

// Rubber on a hand: a pad in the palm, and a band at the root of each finger and where it bends.
Shape grip(const Pose& pose) {
    std::vector<Shape> pads = {moved(scaled(icosphere(3.4, 2), {1, 1.05, 0.4}), {0, 3.6, 2.9})};
    for (const auto& [knuckle, out, size] : fingers)
        for (const double along : {1.4, 0.44 * size}) {
            const double r = 2.62 - 0.07 * along;
            pads.push_back(placed(lathe({{r - 0.5, -0.5}, {r, -0.3}, {r, 0.3}, {r - 0.5, 0.5}}, 14),
                                  knuckle + normalized(out) * along, out));
        }
    return onWrist(joined(pads), pose);
}

Shape upperArm(const Pose& pose) {
    return limb(shoulder, pose.elbow, {1, 1, 0.8, 4}, {0.25, 0.45, 0.85}, 6, 5, 0.4);
}

// Something of each arm, on its side.
Shape onArms(const std::function<Shape(const Pose&)>& make) {
    return joined({make(waving), reflected(make(swinging), Axis::x)});
}

Part arm(const Pose& pose) {
    const auto& [elbow, wrist, reach, curl] = pose;
    const Shape ball = moved(icosphere(8, 3), shoulder);
    const Shape joint =
        joined({placed(rings(5.4, 5.2), elbow, {1, 0, 0.2}), placed(rings(5.4, 5.2), elbow, {-1, 0, -0.2})});
    const Shape fore = limb(elbow, wrist, {1.1, 1, 0.9, 4}, {0.14, 0.3, 0.82, 0.96}, 4.6, 7.4, 0.6);
    const Shape back = smoothed(
        scaled(
            lathe({{0, -2.6}, {2.6, -2.2}, {4, -0.6}, {5.2, 2}, {5.6, 4.6}, {4.8, 6.8}, {2.6, 8}, {0, 8.3}},
                  32),
            {1, 1, 0.66}),
        1.2);
    std::vector<Shape> palm = {back};
    for (const auto& [knuckle, out, size] : fingers)
        palm.push_back(finger(knuckle, normalized(out), size, curl));
    const Shape hand = onWrist(joined(palm), pose);
    return {joined({fore, hand}), joined({ball, joint})};
}

// Where the head's own coordinates lie for a place of the picture on a screen, a domed tube inside its
// bezel: S from the viewer's left, T from the top down, and a height over the glass.
Vec onGlass(Flat half, double depth, double s, double t, double height) {
    // A square carried into a rounded one, so that the corners follow the bezel.
    const double u = 2 * s - 1, v = 1 - 2 * t;
    const double x = u * (1 - 0.06 * v * v), y = v * (1 - 0.08 * u * u);
    return {x * half.x, y * half.y, depth + 1.6 - 0.8 * (x * x + y * y) + height};
}

Shape glass(Flat half, double depth, const Patch& picture) {
    const int columns = 17, rows = 13;
    const Shape plain = grid(columns, rows, false, false, [&](int c, int r) {
        return onGlass(half, depth, double(c) / (columns - 1), 1 - double(r) / (rows - 1), 0);
    });
    return painted(plain, picture);
}

// Black but for what glows behind it: it seems to look up, where no light falls from.
Shape unlit(const Shape& shape) {
    return shaded(shape, [](Vec, Vec) { return Vec{0, 1, 0}; });
}

// A domed disc lying on the xz plane, which shows the lens.
Shape dial(double radius, double rise) {
    const int sides = 24, rings = 4;
    const Shape disc = grid(sides, rings + 1, true, false, [&](int c, int r) {
        const double out = radius * (1 - double(r) / rings), turn = -2 * pi * c / sides;
        return Vec{out * std::cos(turn), rise * (1 - out * out / (radius * radius)), out * std::sin(turn)};
    });
    return welded(mappedBy(disc, [&](const Face&, Vec p) {
        return iris.at(0.5 + 0.5 * p.x / radius, 0.5 - 0.5 * p.z / radius);
    }));
}

Shape shoulderCap() {
    const Outline dome = {{10.6, -3}, {11, -1.5}, {10.8, 0}, {10, 1},  {9.9, 3}, {8.8, 5.8},
                          {7.4, 7.6}, {6.8, 7.2}, {6, 8},    {3, 9.6}, {0, 10}};
    return placed(lathe(dome, 28), shoulder, shoulderTop);
}

// Painted parts, which take their colour from the screen's picture, and lamps, which all but glow.
Shape paintwork() {
    const Shape belt = moved(box({5, 2.2, 1.6}, 0.6, 2), {7, 57, 13.2});
    const auto garter = [](Vec from, Vec to, double at, double radius) {
        const Outline section = {{radius - 1, -1.1}, {radius, -0.8}, {radius, 0.8}, {radius - 1, 1.1}};
        return placed(lathe(section, 24), mix(from, to, at), to - from);
    };
    const Shape thigh = garter({14.5, 32, 1.5}, {11.5, 57, 0}, 0.58, 8.9);
    const Shape cuffs = joined({garter(shoulder, waving.elbow, 0.65, 6.5),
                                reflected(garter(shoulder, swinging.elbow, 0.65, 6.5), Axis::x)});
    return joined({cuffs, withMirror(joined({belt, thigh, shoulderCap()}))});
}

// A thin tube of light along a line, or one of cold light round a flat ring of a radius.
Shape tubeOf(const std::vector<Vec>& path, Uv light) {
    Sweep how;
    how.path = path;
    how.up = {0.3, 0.5, 0.8};
    return painted(sweep(polygon(4, 0.55), how), light);
}
Shape coldLine(const std::vector<Vec>& path) {
    return tubeOf(path, coldTube);
}
Shape coldHoop(double radius, int sides) {
    const double r = radius, h = 0.55;
    return painted(lathe({{r, -h}, {r + h, 0}, {r, h}, {r - h, 0}, {r, -h}}, sides), coldTube);
}

// Along the outside of a limb, from one part of its length to another; its radius goes from `start` to `end`.
Shape coldSeam(Vec from, Vec to, double low, double high, double start, double end, double swell) {
    std::vector<Vec> path;
    for (int i = 0; i <= 5; i++) {
        const double k = mix(low, high, i / 5.0);
        const double radius = mix(start, end, k) + swell * std::sin(pi * k) + 0.2;
        path.push_back(mix(from, to, k) + Vec{radius, 0, 0});
    }
    return coldLine(path);
}

// What draws its outline against the night from any side: tubes along its edges and round its plates.
Shape coldTubes() {
    const Shape shin = coldSeam({15.5, -1, 0}, {14.5, 32, 1.5}, 0.2, 0.72, 11, 6, 1.6);
    std::vector<Vec> over, under;
    for (int i = 0; i <= 4; i++) {
        const double deep = mix(10.5, -10.5, i / 4.0);
        over.push_back(onShell({18.4, 13.9, deep}));
        under.push_back(onShell({18.4, -13.9, deep}));
    }
    const Shape aerial = coldLine({mix(aerialFoot, aerialTip, 0.12), mix(aerialFoot, aerialTip, 0.92)});
    const Shape edges = onNeck(withMirror(joined({coldLine(over), coldLine(under), aerial})));
    const auto onChest = [](double y) {
        return squared(moved(coldHoop(chestRadius(y) + 0.1, 64), {0, y, 0}), chestDepth);
    };
    const Shape chest = joined({onChest(88), onChest(119)});
    // The engine's heat shows between the folds of the waist.
    std::vector<Shape> folds;
    for (double y : {65.4, 69.8, 74.2, 78.6}) {
        std::vector<Vec> fold;
        const double r = 14.6 + 0.014 * (y - 74) * (y - 74);
        for (int i = 0; i <= 28; i++)
            fold.push_back({r * std::cos(pi * i / 14), y, -10.4 - 0.4 * r * std::sin(pi * i / 14)});
        folds.push_back(tubeOf(fold, ember));
    }
    const auto cuff = [](const Pose& pose) {
        return placed(coldHoop(6.2, 16), mix(pose.elbow, pose.wrist, 0.82), pose.wrist - pose.elbow);
    };
    const Shape cuffs = onArms(cuff);
    const Shape rim = moved(coldHoop(43.9, 48), {0, -26, 0});
    return joined({withMirror(shin), edges, chest, cuffs, rim, joined(folds)});
}

// On each flank a small screen with the beat of its heart, for a viewer too near to see the face.
Shape pulse() {
    const Shape plain = grid(7, 6, false, false, [](int c, int r) {
        const double x = 2 * c / 6.0 - 1, y = 2 * r / 5.0 - 1;
        return Vec{pulseHalf.x * x, pulseHalf.y * y, 1.4 - 0.5 * (x * x + y * y)};
    });
    const Shape screen = painted(plain, pulsePicture);
    return joined({onFlank(screen, 1), onFlank(screen, -1)});
}

Shape lamps() {
    const Shape ear = onNeck(placed(dial(5.4, 0.9), earMiddle + Vec{4.6, 0, 0}, {1, 0, 0}));
    const Shape tip = onNeck(moved(painted(icosphere(3, 2), warmLamp), aerialTip));
    const Shape knee = joined({placed(dial(3.6, 0.8), {14.5, 32, 9.2}, {0, 0.1, 1}),
                               placed(dial(4.6, 0.8), {21.3, 32, 1.5}, {1, 0, 0})});
    const Shape hip = placed(dial(5.4, 0.8), {21.8, 56.1, 0}, {1, 0.05, 0});
    // Two for a viewer who looks up at it.
    const Shape below = joined(
        {placed(dial(4.6, 0.8), {0, 44.7, 0}, {0, -1, 0}), placed(dial(5.6, 0.8), {0, 82.6, 0}, {0, -1, 0})});
    return joined({placed(dial(8.4, 1.2), chestLamp + Vec{0, 0.1, 4.4}, {0, 0.02, 1}), below,
                   withMirror(joined({ear, tip, knee, hip}))});
}

Part withoutHeadShell() {
    const Part left = arm(swinging);
    return together({mirrored(leg()),
                     {{}, hips()},
                     {torso(), {}},
                     torsoFittings(),
                     {{}, headWorks()},
                     arm(waving),
                     {reflected(left.shells, Axis::x), reflected(left.works, Axis::x)}});
}

}  // namespace

Shape figures::robotShells() {
    return joined({withoutHeadShell().shells, headShell(), girdle(), onArms(upperArm)});
}

Shape figures::robotWorks() {
    return joined({withoutHeadShell().works, screenFrame(), brows(), base(), waist(), neck()});
}

Shape figures::robotScreen() {
    return onNeck(glass(faceHalf, faceDepth, facePicture));
}

Shape figures::robotTrim() {
    return joined({paintwork(), lamps()});
}

Shape figures::onRobotScreen(const Shape& picture) {
    return onNeck(bent(picture, [](Vec p) { return onGlass(faceHalf, faceDepth, p.x, p.y, p.z); }));
}

void makeRobotBody(const char* path) {
    writeAml(path, {mappedBox(joined({withoutHeadShell().works, waistRods()}), 48)});
}

void makeRobotArms(const char* path) {
    writeAml(path, {mappedBox(joined({waist(), neck(), onArms(grip)}), 48)});
}

void makeRobotScreen(const char* path) {
    const auto in = [](atlas::robot::Lacquer lacquer) { return [=](Vec) { return coatOf(lacquer); }; };
    using atlas::robot::orange, atlas::robot::petrol, atlas::robot::brass;
    const Shape lacquer =
        joined({lacquered(joined({withoutHeadShell().shells, swelling(headShell())}), coatAt),
                lacquered(joined({paintwork(), legHoses(), lip(), cable()}), in(orange)),
                lacquered(cowling(), in(atlas::robot::ivory)),
                lacquered(joined({girdle(), tubeSteps(), onArms(upperArm)}), in(petrol)),
                lacquered(tubePlug(), in(brass)), lacquered(waistSleeves(), in(petrol)),
                lacquered(joined({waistHoses(), brows()}), in(orange)), lacquered(screenFrame(), in(brass)),
                lacquered(base(), [](Vec p) {
                    return coatOf(p.y > -22.4 && std::hypot(p.x, p.z) > 36 ? brass : petrol);
                })});
    const Shape plate = unlit(painted(makersPlate(), patchOf(atlas::robot::nameplate)));
    writeAml(path, {unlit(figures::robotScreen()), lacquer, plate,
                    unlit(joined({lamps(), pulse(), coldTubes(), fan(), gauges()}))});
}
