// The robot: lacquered shells, and what glows on it, which are its screen's mesh, since that alone has a
// picture; steel joints and frames, its body's mesh; and rubber, its arms' mesh. The picture's patches hold
// each lacquer in lights that stand still while the viewer goes round. A toy: a small dark body, and a head
// of four screens that lean out over it, each with another face, so that one looks at whoever goes round
// below. It stands on a plate below y = 0, and waves. Between chest and head the middle is free, up to a
// flat neck behind the axis: the camera flies through.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/figures.h"
#include "production/models/models.h"
#include "production/models/paints.h"

using namespace model;

namespace {

// How it holds its head where it stands as a colossus with a single face, an ear down (radians).
constexpr Vec headMiddle = {0, 152.5, 2};
constexpr double headSize = 1.26, headNod = 0.34, headLean = 0.06;
// Its own parts are made as tall as the colossus', and what is below the head is then made a toy's.
constexpr Vec toySize = {0.66, 0.575, 0.7};
constexpr double sole = -20.4;
constexpr double faceDepth = 15.5;  // from the head's centre to the bezel
constexpr Vec chestLamp = {0, 109, 17.2};

// Where things lie in "roboscreen".
constexpr Patch iris = patchOf(atlas::robot::iris.within(atlas::robot::margin));
constexpr Uv warmLamp = middleOf(atlas::robot::warmLamp), coldTube = middleOf(atlas::robot::coldTube);

// A part in its two materials: lacquered shells and the steel works between them.
struct Part {
    Shape shells, works;
};

// Two lamps face each other across it, so that from wherever a viewer looks it has a side in the light and
// one in the dark: a warm key before its left shoulder, a cold one behind the other. A third draws head,
// shoulders and arms for who looks at its back from its own height. From below shines the disc of light that
// it is born of.
constexpr Vec keyLamp = {0.66, 0.44, 0.61}, coldLamp = {-0.95, 0.14, 0.02}, backLamp = {-0.5, 0.5, -0.7};

// What stands in their way, and darkens what is close by.
struct Blocker {
    Vec middle;
    double radius, own = 1.2 * radius;  // within which its own surface lies
};
constexpr Blocker blockers[] = {{{0, 148, 0}, 22, 50}, {{0, 108, 0}, 19},   {{13, 112, 0}, 15},
                                {{-13, 112, 0}, 15},   {{0, 57, 0}, 15},    {{13, 45, 0}, 8},
                                {{-13, 45, 0}, 8},     {{15, 14, 0}, 9},    {{-15, 14, 0}, 9},
                                {{33.5, 116, 0}, 9},   {{-33.5, 116, 0}, 9}};

// How much of a lamp is seen from a place: 0..1.
double clearTo(Vec lamp, Vec p) {
    double clear = 1;
    for (const auto& [middle, radius, own] : blockers) {
        const Vec away = middle - p;
        const double ahead = dot(away, lamp);
        if (length(away) < own || ahead < 0) continue;
        clear *= smoothstep(radius * 0.6, radius * 1.25, length(away - lamp * ahead));
    }
    return clear;
}

// How much a place gets of a lamp; in the shadow it gets `least`.
double litBy(Vec lamp, double least, Vec p, Vec normal) {
    const Vec to = normalized(lamp);
    return std::clamp((dot(normal, to) + 0.25) / 1.25, 0.0, 1.0) * mix(least, 1, clearTo(to, p));
}

// What the lamps' halls throw back: a faint key from all sides, so that no form sinks into the night.
double litAround(Vec normal) {
    return 0.48 * (0.55 + 0.45 * dot(normal, normalized(keyLamp)));
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
            const double key = std::max({litBy(keyLamp, 0.1, p, normal), litBy(backLamp, 0.1, p, normal),
                                         litAround(normal)}),
                         side = litBy(coldLamp, 0.1, p, normal);
            const double below = litBy({0, -1, 0}, 0.3, p, normal) * smoothstep(20, 40, p.y);
            constexpr double neither = atlas::robot::neither;
            const double up = neither + (1 - neither) * side - neither * below;
            face.uvs.push_back(patch.at(key * mix(0.72, 1, smoothstep(0, 60, p.y)), up));
        }
    }
    return shape;
}

using enum atlas::robot::Lacquer;
Patch coatOf(atlas::robot::Lacquer lacquer) {
    return patchOf(atlas::robot::lacquer(int(lacquer)).within(atlas::robot::margin));
}

// An arm on the side of x > 0, from its joints and where its open hand points.
struct Pose {
    Vec elbow, wrist, reach;
    double curl;  // of the fingers
};
constexpr Vec shoulder = {33.5, 116, 0}, shoulderTop = {0.75, 0.6, 0.05};
// Of the robot, for who looks up from close by, one hangs beside the chest and not before it, and one waves
// away from it, so that it leaves the faces free. The colossus greets the hall before it, since the arcade is
// close behind.
struct Arms {
    Pose waving, hanging;
};
constexpr Arms robotArms = {{{44, 95, -2}, {52, 85, 15}, {0.76, 0.56, 0.28}, 0.14},
                            {{46, 99, -11}, {46, 81, -22}, {0.15, -1, -0.1}, 0.3}},
               colossusArms = {{{47, 99, 14}, {50, 112, 34}, {0.3, 0.9, 0.3}, 0.14},
                               {{41, 98, 8}, {44, 79, 18}, {0.15, -1, 0.2}, 0.45}};

// Whether a place belongs to the hand, or the forearm, of an arm on the side of x > 0.
bool isHand(Vec p, const Pose& pose) {
    return length(p - pose.wrist) < 26 && dot(p - pose.wrist, normalized(pose.wrist - pose.elbow)) > -0.7;
}
bool isForearm(Vec p, const Pose& pose) {
    const Vec bone = pose.wrist - pose.elbow;
    const double along = std::clamp(dot(p - pose.elbow, bone) / dot(bone, bone), 0.0, 1.0);
    return length(p - pose.elbow - bone * along) < 9.5;
}

bool isAnyHand(Vec p) {
    return isHand(p, robotArms.waving) || isHand({-p.x, p.y, p.z}, robotArms.hanging);
}
bool isAnyForearm(Vec p) {
    return isForearm(p, robotArms.waving) || isForearm({-p.x, p.y, p.z}, robotArms.hanging);
}

// Which lacquer a shell wears.
Patch coatAt(Vec p) {
    const double out = std::hypot(p.x, p.z);
    if (isAnyHand(p)) return coatOf(ivory);
    if (isAnyForearm(p)) return coatOf(orange);
    if (p.y < -1) return coatOf(orange);  // boots
    if (p.y < 66) return coatOf(petrol);
    // Above a groove's floor, whose triangles lie to both sides of its middle.
    if (out < 36 && p.y > 81 && p.y < 130) return coatOf(p.y < 88.4 || p.y > 119.4 ? ivory : petrol);
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

// A round limb between two joints: its radius goes from `start` to `end` and is fuller by `swell` half-way.
struct Limb {
    Vec from, to;
    double start, end, swell;

    Vec at(double part) const { return mix(from, to, part); }
    double radius(double part) const { return mix(start, end, part) + swell * std::sin(pi * part); }
};
constexpr Limb shin = {{22, -1, 0}, {19, 32, 1.5}, 11, 6, 1.6},
               thigh = {{19, 32, 1.5}, {12.5, 57, 0}, 6.2, 8.4, 0.6};
Limb upperArm(const Pose& pose) {
    return {shoulder, pose.elbow, 6, 5, 0.4};
}
Limb forearm(const Pose& pose) {
    return {pose.elbow, pose.wrist, 4.6, 7.4, 0.6};
}

// `cuts` (parts of its length) divide it into plates.
Shape shellOf(const Limb& limb, const Plates& plates, const std::vector<double>& cuts) {
    const double size = length(limb.to - limb.from);
    std::vector<double> heights;
    for (double cut : cuts) heights.push_back(cut * size);
    const Outline wall = platedProfile(heights, plates, [&](double y) { return limb.radius(y / size); });
    const Outline profile = chained({{{0, heights.front()}}, wall, {{0, heights.back()}}});
    return placed(lathe(profile, 20), limb.from, limb.to - limb.from);
}

Shape base() {
    constexpr double size = 0.78;  // of its width
    const Outline profile = {{0, -31},      {30, -31},   {33, -29.5}, {41, -29.5}, {43.5, -28},
                             {44, -26},     {43.5, -24}, {41, -22.5}, {36, -22},   {35, -20.6},
                             {33.6, -19.6}, {31, -19.4}, {29, -20.4}, {18, -21.8}, {0, -23.2}};
    const Shape studs = around(moved(bolt(2.2, 1.4), {38.6, -22.4, 0}), 12);
    return scaled(joined({flutedLathe(profile, {12, 0.07, 1.4, -30, -23, 5}), studs}), {size, 1, size});
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
    const Shape shells =
        joined({shellOf(shin, {1, 1.2, 0.8, 4}, {0, 0.88}), shellOf(thigh, {1, 1, 0.8, 3}, {0.16, 1})});
    const Shape joint =
        joined({placed(rings(6.2, 6.6), shin.to, {1, 0, 0}), placed(rings(6.2, 6.6), shin.to, {-1, 0, 0})});
    const auto [boot, ankles] = foot();
    return {joined({moved(boot, {shin.from.x, 0, 0}), shells}),
            joined({moved(ankles, {shin.from.x, 0, 0}), joint})};
}

constexpr double girdleDepth = 0.68;  // of its width
double girdleRadius(double y) {
    return 20 - 0.02 * (y - 57) * (y - 57) - 3 * smoothstep(60, 65, y);
}
Shape girdle() {
    const Outline wall = platedProfile({49, 53, 64}, {1.1, 1.1, 0.9, 3}, girdleRadius);
    const Outline profile =
        chained({{{0, 46}, {10, 46}}, wall, {{12, 64.6}, {11, 62.5}, {7, 62.5}, {6.4, 64}, {0, 64}}});
    return squared(lathe(profile, 40), girdleDepth);
}

Shape hips() {
    const Shape socket = placed(rings(8.6, 3.4), {11.6, 49.4, 0}, {0.12, -1, 0});
    const Shape hipPlate = placed(rings(6.4, 3), {18.6, 56, 0}, {1, 0.05, 0});
    return withMirror(joined({socket, hipPlate}));
}

constexpr double chestDepth = 0.62;  // of its width
double chestRadius(double y) {
    return 13 + 17 * smoothstep(80, 112, y) - 11 * smoothstep(115, 131, y);
}

// Bellows, flat in depth: of the waist, and of the neck, which is slim and stands behind the axis.
struct Bellows {
    double from, to, fold, middle, depth, width;

    double radius(double y) const {
        const double aside = (y - (from + to) / 2) / (to - from) * 2;
        return width * (1 + 0.18 * aside * aside);
    }
};
constexpr Bellows waist = {61, 88.5, 4.4, 0, 0.8, 14}, neck = {62, 87, 4, -9.5, 0.5, 9};
Shape shellOf(const Bellows& bellows) {
    std::vector<double> cuts;
    for (double y = bellows.from + 1; y < bellows.to; y += bellows.fold) cuts.push_back(y);
    const Outline wall = platedProfile(cuts, {1.2, 1.6, 1.4, 3}, [&](double y) { return bellows.radius(y); });
    const Outline profile = chained({{{0, bellows.from}}, wall, {{0, bellows.to}}});
    return moved(scaled(lathe(profile, 28), {1, 1, bellows.depth}), {0, 0, bellows.middle});
}

Shape torso() {
    const Outline wall = platedProfile({82, 88, 97, 119, 127.5}, {1.4, 1.3, 1.1, 3.2}, chestRadius);
    const Outline profile =
        chained({{{0, 84}, {9, 83.6}, {9.8, 82}}, wall, {{15, 128.5}, {10, 129.5}, {0, 129.5}}});
    return squared(lathe(profile, 40), chestDepth);
}

// On the edge of a rounded rectangle in the xy plane, the rounder the lower `power` is.
Vec onRectangle(double turn, Flat half, double power, double z) {
    const double x = std::cos(turn), y = std::sin(turn);
    const double out = std::pow(std::pow(std::abs(x), power) + std::pow(std::abs(y), power), -1 / power);
    return {half.x * out * x, half.y * out * y, z};
}
constexpr Flat faceHalf = figures::robotScreenHalf, shellHalf = {20, 15.5};
constexpr double shellPower = 8;

// A screen's frame.
Shape bezel() {
    Sweep frame;
    frame.closedPath = true;
    constexpr int steps = 56;
    for (int i = 0; i < steps; i++)
        frame.path.push_back(
            onRectangle(2 * pi * i / steps, {faceHalf.x + 0.2, faceHalf.y + 0.2}, 6, faceDepth));
    frame.up = {0, 0, 1};
    return sweep({{-1.7, -2}, {1.9, -2}, {1.2, 1.5}, {0, 1.9}, {-1.2, 1.3}, {-1.7, 0.4}}, frame);
}

// The reactor in the chest, shoulder sockets.
Part torsoFittings() {
    const Shape reactor =
        placed(joined({rings(9.5, 4.2), around(moved(icosphere(1.3, 1), {11.8, 0.6, 0}), 8)}), chestLamp,
               {0, 0.02, 1});
    const Shape socket = placed(rings(9, 3), {25.5, 116, 0}, {1, 0, 0});
    return {{}, joined({reactor, withMirror(socket)})};
}

Shape collar() {
    const Outline wall = platedProfile({128.5, 130.7, 132.9, 135.1, 137.3}, {0.8, 1.2, 0.7, 2},
                                       [](double y) { return 8.4 - 0.1 * (y - 128); });
    const Outline profile = chained({{{0, 128}}, wall, {{0, 138}}});
    return lathe(profile, 20);
}

// Where the head's own coordinates (origin at its centre) lie on the colossus.
Shape upright(const Shape& shape) {
    const Shape nodding = turned(scaled(shape, {headSize, headSize, headSize}), Axis::x, headNod);
    return moved(turned(nodding, Axis::z, headLean), headMiddle);
}

// A head of its own on each side of the robot, narrower at its chin: the one in front first, then to its
// left and on round.
constexpr int sides = 4;
Shape onSide(int side, const Shape& shape) {
    constexpr double lean = 0.48, out = 17, height = 152;
    const Shape tapered = bent(shape, [](Vec p) {
        return Vec{1.1 * p.x * (1 + 0.25 * p.y / 15.5), 1.55 * p.y, 0.7 * p.z};
    });
    return turned(moved(turned(tapered, Axis::x, lean), {0, height, out}), Axis::y, pi / 2 * side);
}
Shape onSides(const Shape& shape) {
    std::vector<Shape> all;
    for (int side = 0; side < sides; side++) all.push_back(onSide(side, shape));
    return joined(all);
}

// Below the head, as it is worn by the robot; and its heads, which sink after their shoulders.
Shape toy(const Shape& shape) {
    return moved(scaled(moved(shape, {0, -sole, 0}), toySize), {0, sole, 0});
}
Vec beforeToy(Vec p) {
    return {p.x / toySize.x, sole + (p.y - sole) / toySize.y, p.z / toySize.z};
}
Shape lowered(const Shape& head) {
    constexpr double chin = 128, size = 1.04;
    return moved(scaled(moved(head, {0, -chin, 0}), {size, size, size}), {0, chin - 47, 0});
}

constexpr Vec earMiddle = {17.6, 1, -2};

// The two aerials make a V.
struct Aerial {
    Vec foot, tip;
};
constexpr Aerial aerial = {{5.5, 16.5, -3}, {16, 29, -5}}, robotAerial = {{8, 175, 0}, {16, 202, 0}};

// A television's tube: wide in front, drawn in behind.
Shape headShell() {
    // How deep each ring of it lies, and how wide it is.
    constexpr Flat rings[] = {{-16, 0.01}, {-15.7, 0.38}, {-13.6, 0.65}, {-8, 0.81},   {-3, 0.925}, {2, 0.99},
                              {6, 1},      {12.4, 1},     {14.4, 0.985}, {15.3, 0.94}, {15.5, 0.86}};
    const int around = 48;
    return grid(around, int(std::size(rings)), true, false, [&](int c, int r) {
        const auto [depth, out] = rings[r];
        const Vec edge = onRectangle(2 * pi * c / around, shellHalf, shellPower, depth);
        return Vec{edge.x * out, edge.y * out + 1.5 * smoothstep(6, -16, depth), depth};
    });
}

Shape brows() {
    return joined({moved(box({34, 2.6, 5}, 1.1, 2), {0, 14.6, 15}),
                   moved(box({20, 1.6, 3}, 0.7, 2), {0, -14.6, 13.4})});
}

Shape rodOf(const Aerial& aerial, double radius, int sides) {
    const auto& [foot, tip] = aerial;
    const double reach = length(tip - foot);
    const Outline profile = {
        {0, -1},   {2.2, -1}, {2.2, 1}, {std::max(1.2, radius), 2.4}, {radius, 5}, {0.75 * radius, reach},
        {0, reach}};
    return withMirror(placed(lathe(profile, sides), foot, tip - foot));
}

// What the robot's heads lean on, and the dome over them.
Shape headCore() {
    return squared(lathe({{0, 130}, {9, 130}, {13, 134}, {27, 168}, {25, 171}, {0, 171}}, 40), 1);
}
Shape headDome() {
    return lathe({{28, 168}, {29, 170}, {28, 172}, {22, 175.5}, {12, 178}, {0, 179}}, 40);
}

struct Finger {
    Vec knuckle, out;
    double size, girth;  // girth: its radius at its root
};
constexpr Finger fingers[] = {{{-3.7, 6.2, 0}, {-0.28, 1, 0}, 10, 2.2},
                              {{0, 7.2, 0}, {0, 1, 0}, 11.5, 2.3},
                              {{3.7, 6.2, 0}, {0.28, 1, 0}, 10, 2.2},
                              {{-3.6, 1.2, 0.6}, {-0.92, 0.6, 0.3}, 8, 2.6}};

// Round at its tip, thick at its root.
Shape finger(const Finger& which, double curl) {
    const auto& [knuckle, direction, size, girth] = which;
    const Vec out = normalized(direction);
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
    how.path = curveThrough(bones, false, 8);
    how.up = palm;
    const double last = double(how.path.size() - 1);
    how.change = [=](int step, Outline section) {
        const double k = step / last, end = std::max(0.0, (k - 0.88) / 0.12);
        const double radius = mix(girth, 1.1, std::min(1.2 * k, 1.0)) * std::sqrt(1 - 0.99 * end * end);
        for (Flat& p : section) p = {p.x * radius, p.y * radius};
        return section;
    };
    return smoothed(sweep(polygon(9, 1), how), 1.3);
}

Shape onWrist(const Shape& hand, const Pose& pose) {
    return placed(scaled(hand, {1.22, 1.22, 1.22}), pose.wrist, normalized(pose.reach));
}

Shape upperArmShell(const Pose& pose) {
    return shellOf(upperArm(pose), {1, 1, 0.8, 4}, {0.25, 0.85});
}

// Something of each arm, on its side.
Shape onArms(const Arms& arms, const std::function<Shape(const Pose&)>& make) {
    return joined({make(arms.waving), reflected(make(arms.hanging), Axis::x)});
}

Part arm(const Pose& pose) {
    const auto& [elbow, wrist, reach, curl] = pose;
    const Shape ball = moved(icosphere(8, 3), shoulder);
    const Shape joint =
        joined({placed(rings(5.4, 5.2), elbow, {1, 0, 0.2}), placed(rings(5.4, 5.2), elbow, {-1, 0, -0.2})});
    const Shape fore = shellOf(forearm(pose), {1.1, 1, 0.9, 4}, {0.14, 0.96});
    const Shape back = smoothed(
        scaled(
            lathe({{0, -2.6}, {2.6, -2.2}, {4, -0.6}, {5.2, 2}, {5.6, 4.6}, {4.8, 6.8}, {2.6, 8}, {0, 8.3}},
                  32),
            {1, 1, 0.66}),
        1.2);
    std::vector<Shape> palm = {back};
    for (const Finger& which : fingers) palm.push_back(finger(which, curl));
    const Shape hand = onWrist(joined(palm), pose);
    return {joined({fore, hand}), joined({ball, joint})};
}

// Where the head's own coordinates lie for a place of the picture on a screen, a domed tube inside its
// bezel: S from the viewer's left, T from the top down, and a height over the glass.
Vec onGlass(double s, double t, double height) {
    // A square carried into a rounded one, so that the corners follow the bezel.
    const double u = 2 * s - 1, v = 1 - 2 * t;
    const double x = u * (1 - 0.06 * v * v), y = v * (1 - 0.08 * u * u);
    return {x * faceHalf.x, y * faceHalf.y, faceDepth + 1.6 - 0.8 * (x * x + y * y) + height};
}

Shape screen(int which) {
    const int columns = 13, rows = 11;
    const Shape plain = grid(columns, rows, false, false, [&](int c, int r) {
        return onGlass(double(c) / (columns - 1), 1 - double(r) / (rows - 1), 0);
    });
    return painted(plain, patchOf(atlas::robot::face(which)));
}

// Black but for what glows behind it: it seems to look up, where no light falls from.
Shape unlit(const Shape& shape) {
    return shaded(shape, [](Vec, Vec) { return Vec{0, 1, 0}; });
}

// Of the toy, what the lamps that move with the viewer would burn.
bool gathersLess(Vec p) {
    const Vec own = beforeToy(p);
    return isAnyHand(own) || isAnyForearm(own) || own.y > 119.4;
}

// Gathers less light, by how much each place seems to look up.
Shape dimmed(const Shape& shape, const std::function<double(Vec)>& upwards) {
    return shaded(shape, [&](Vec p, Vec normal) { return normal + Vec{0, upwards(p), 0}; });
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

Shape shoulderCaps() {
    const Outline dome = {{10.6, -3}, {11, -1.5}, {10.8, 0}, {10, 1},  {9.9, 3}, {8.8, 5.8},
                          {7.4, 7.6}, {6.8, 7.2}, {6, 8},    {3, 9.6}, {0, 10}};
    return withMirror(placed(lathe(dome, 28), shoulder, shoulderTop));
}

// A thin tube of cold light along a line, or round a closed one; or one round a flat ring of a radius.
Shape coldLine(const std::vector<Vec>& path, bool closed = false) {
    Sweep how;
    how.path = path;
    how.closedPath = closed;
    how.up = {0.3, 0.5, 0.8};
    return painted(sweep(polygon(closed ? 8 : 4, closed ? 0.4 : 0.5), how), coldTube);
}
Shape coldHoop(double radius, int sides) {
    const double r = radius, h = 0.5;
    return painted(lathe({{r, -h}, {r + h, 0}, {r, h}, {r - h, 0}, {r, -h}}, sides), coldTube);
}

Shape headTubes() {
    // Round the front of each head, which no other head hides a part of.
    Shape edge;
    constexpr int steps = 96;
    for (int i = 0; i < steps; i++)
        edge.points.push_back(onRectangle(2 * pi * i / steps, {18.7, 14.5}, 6, 15.25));
    std::vector<Shape> loops;
    for (int side = 0; side < sides; side++) loops.push_back(coldLine(onSide(side, edge).points, true));
    const auto& [foot, tip] = robotAerial;
    return joined({joined(loops), withMirror(coldLine({mix(foot, tip, 0.15), mix(foot, tip, 0.92)}))});
}
Shape chestDial() {
    return placed(dial(8.4, 1.2), chestLamp + Vec{0, 0.1, 4.4}, {0, 0.02, 1});
}
Shape lampOf(const Aerial& aerial) {
    return withMirror(moved(painted(icosphere(3, 2), warmLamp), aerial.tip));
}

Part belowHead(const Arms& arms) {
    const Part left = arm(arms.hanging);
    return together({mirrored(leg()),
                     {{}, hips()},
                     {torso(), {}},
                     torsoFittings(),
                     arm(arms.waving),
                     {reflected(left.shells, Axis::x), reflected(left.works, Axis::x)}});
}

}  // namespace

Shape figures::robotShells() {
    return joined({belowHead(colossusArms).shells, upright(joined({headShell(), rodOf(aerial, 1.3, 6)})),
                   girdle(), onArms(colossusArms, upperArmShell)});
}

Shape figures::robotWorks() {
    const Shape ears = withMirror(placed(rings(8.2, 5), earMiddle, {1, 0, 0}));
    return joined({belowHead(colossusArms).works, upright(joined({ears, bezel(), brows()})), base(),
                   shellOf(waist), collar()});
}

Shape figures::robotScreen() {
    return upright(screen(0));
}

Shape figures::robotTrim() {
    const Shape ears = withMirror(placed(dial(5.4, 0.9), earMiddle + Vec{4.6, 0, 0}, {1, 0, 0}));
    return joined({shoulderCaps(), chestDial(), upright(joined({ears, lampOf(aerial)}))});
}

Shape figures::onRobotScreen(const Shape& picture) {
    return upright(bent(picture, [](Vec p) { return onGlass(p.x, p.y, p.z); }));
}

void makeRobotBody(const char* path) {
    writeAml(path, {mappedBox(joined({toy(belowHead(robotArms).works), lowered(rodOf(robotAerial, 0.4, 10))}),
                              48)});
}

void makeRobotArms(const char* path) {
    writeAml(path, {mappedBox(toy(shellOf(waist)), 48)});
}

void makeRobotScreen(const char* path) {
    const auto in = [](atlas::robot::Lacquer lacquer) { return [=](Vec) { return coatOf(lacquer); }; };
    const Shape body =
        joined({lacquered(belowHead(robotArms).shells, coatAt), lacquered(shoulderCaps(), in(orange)),
                lacquered(joined({girdle(), onArms(robotArms, upperArmShell)}), in(petrol))});
    const Shape head = joined({lacquered(onSides(headShell()), in(orange)), lacquered(headDome(), in(ivory)),
                               lacquered(headCore(), in(petrol))});
    const Shape frames = lacquered(onSides(bezel()), in(brass));
    const Shape plate = lacquered(
        base(), [](Vec p) { return coatOf(p.y > -22.4 && std::hypot(p.x, p.z) > 28 ? brass : petrol); });
    std::vector<Shape> faces;
    for (int side = 0; side < sides; side++) faces.push_back(onSide(side, screen(side)));
    const Shape lights = joined({toy(chestDial()), moved(coldHoop(34.3, 48), {0, -26, 0}),
                                 lowered(joined({lampOf(robotAerial), headTubes()}))});
    writeAml(path, {unlit(lowered(joined(faces))),
                    joined({dimmed(toy(body), [](Vec p) { return gathersLess(p) ? 0.5 : 0; }),
                            lacquered(shellOf(neck), in(brass)), lowered(head),
                            dimmed(lowered(frames), [](Vec) { return 0.8; }), plate}),
                    unlit(lights)});
}
