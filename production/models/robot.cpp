// The robot: lacquered shells, and what glows on it, which are its screen's mesh, since that alone has a
// picture; steel joints and frames, its body's mesh; and rubber, its arms' mesh. The picture's patches hold
// each lacquer in lights that stand still while the viewer goes round. Legs and hips are plain and dark, so
// that the eye climbs to what shines: a face, and its heart's beat on each flank and on its back. It stands
// on a plate below y = 0, looks along +z and down, and waves. Between hips and chest the middle is free, up
// to flat bellows behind the axis: the camera flies through.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/figures.h"
#include "production/models/models.h"
#include "production/models/paints.h"

using namespace model;

namespace {

// How it holds its head: the face towards viewers below, an ear down (radians). In its own scene it bows to
// them; who sees it as a colossus stands farther off.
struct Neck {
    Vec centre;
    double size, tilt;
};
constexpr Neck bowed = {{0, 149, 11}, 1.34, 0.5}, upright = {{0, 152.5, 2}, 1.26, 0.34};
constexpr double headLean = 0.06;
constexpr double faceDepth = 15.5;  // from the head's centre to the bezel
constexpr Vec chestLamp = {0, 109, 17.2};

// Where things lie in "roboscreen".
constexpr Patch facePicture = patchOf(atlas::robot::face),
                iris = patchOf(atlas::robot::iris.within(atlas::robot::margin)),
                pulsePicture = patchOf(atlas::robot::pulse.within(atlas::robot::margin));
constexpr Uv warmLamp = middleOf(atlas::robot::warmLamp), ember = middleOf(atlas::robot::ember),
             coldTube = middleOf(atlas::robot::coldTube.part(0, 0, 2.4, 1));

// A part in its two materials: lacquered shells and the steel works between them.
struct Part {
    Shape shells, works;
};

// Two lamps face each other across it, so that from wherever a viewer looks it has a side in the light and
// one in the dark: a warm key before its left shoulder, a cold one behind the other. A third draws head,
// shoulders and arms for who looks at its back from its own height. From below shines the disc of light that
// it is born of.
constexpr Vec keyLamp = {0.66, 0.44, 0.61}, coldLamp = {-0.95, 0.14, 0.02}, backLamp = {0.35, 0.6, -0.72};

// What stands in their way, and darkens what is close by.
struct Blocker {
    Vec middle;
    double radius, own = 1.2 * radius;  // within which its own surface lies
};
constexpr Blocker blockers[] = {{bowed.centre, 22, 42}, {{0, 108, 0}, 19},   {{13, 112, 0}, 15},
                                {{-13, 112, 0}, 15},    {{0, 57, 0}, 15},    {{13, 45, 0}, 8},
                                {{-13, 45, 0}, 8},      {{15, 14, 0}, 9},    {{-15, 14, 0}, 9},
                                {{33.5, 116, 0}, 9},    {{-33.5, 116, 0}, 9}};

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
    return std::clamp(dot(normal, to), 0.0, 1.0) * mix(least, 1, clearTo(to, p));
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
            const double key = std::max({litBy(keyLamp, 0.1, p, normal),
                                         0.85 * litBy(backLamp, 0.1, p, normal), litAround(normal)}),
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
    const double out = std::hypot(p.x, p.z);
    const Vec other = {-p.x, p.y, p.z};
    if (isHand(p, waving) || isHand(other, swinging)) return coatOf(ivory);
    if (isForearm(p, waving) || isForearm(other, swinging)) return coatOf(orange);
    if (p.y < -1) return coatOf(orange);  // boots
    if (p.y < 66) return coatOf(petrol);
    // Above a groove's floor, whose triangles lie to both sides of its middle.
    if (out < 36 && p.y > 81 && p.y < 130) return coatOf(p.y < 88.4 || p.y > 119.4 ? petrol : ivory);
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
constexpr Limb shin = {{15.5, -1, 0}, {14.5, 32, 1.5}, 11, 6, 1.6},
               thigh = {{14.5, 32, 1.5}, {11.5, 57, 0}, 6.2, 8.4, 0.6};
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

constexpr double chestDepth = 0.62;  // of its width
double chestRadius(double y) {
    return 13 + 17 * smoothstep(80, 112, y) - 11 * smoothstep(115, 131, y);
}

// Bellows, broad but flat and behind the axis.
constexpr double waistMiddle = -10.4, waistDepth = 0.4;
double waistRadius(double y) {
    return 15.5 + 0.014 * (y - 74) * (y - 74);
}
Shape waist() {
    std::vector<double> cuts;
    for (int i = 0; i <= 6; i++) cuts.push_back(61 + i * 4.4);
    const Outline wall = platedProfile(cuts, {1.2, 1.6, 1.4, 3}, waistRadius);
    const Outline profile = chained({{{0, 60}}, wall, {{0, 88.5}}});
    return moved(scaled(lathe(profile, 28), {1, 1, waistDepth}), {0, 0, waistMiddle});
}

// What carries the chest in front: a pair of pistons that lean apart.
Shape waistSleeves() {
    return withMirror(sleeve({9, 62, 10.6}, {10.4, 73, 12.6}, 2.6));
}
Shape waistRods() {
    return withMirror(rod({10.4, 73, 12.6}, {12, 87, 13.4}, 1.4));
}
Shape torso() {
    const Outline wall = platedProfile({82, 88, 97, 119, 127.5}, {1.4, 1.3, 1.1, 3.2}, chestRadius);
    const Outline profile =
        chained({{{0, 84}, {9, 83.6}, {9.8, 82}}, wall, {{15, 128.5}, {10, 129.5}, {0, 129.5}}});
    return squared(lathe(profile, 40), chestDepth);
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

// Its heart's screens: one on each flank of the chest, and a large one on its back.
struct Screen {
    Vec middle, out;
    Flat half;
};
constexpr Screen screens[] = {{{25, 99.6, 8}, {0.76, -0.54, 0.36}, {7.4, 6.2}},
                              {{-25, 99.6, 8}, {-0.76, -0.54, 0.36}, {7.4, 6.2}},
                              {{0, 108, -25}, {0, -0.5, -0.87}, {14.5, 12.1}}};
constexpr Screen backScreen = screens[2];

// Carries what faces +z there.
Shape on(const Screen& screen, const Shape& shape) {
    const Vec out = normalized(screen.out), right = normalized(cross({0, 1, 0}, out)), up = cross(out, right);
    return bent(shape, [&](Vec p) { return screen.middle + right * p.x + up * p.y + out * p.z; });
}
Shape onScreens(const std::function<Shape(Flat half)>& make) {
    std::vector<Shape> all;
    for (const Screen& screen : screens) all.push_back(on(screen, make(screen.half)));
    return joined(all);
}

// What carries the one on its back.
Shape backpack() {
    const auto [x, y] = backScreen.half;
    return on(backScreen, moved(box({2 * x + 7, 2 * y + 7, 14}, 4, 3), {0, 0, -7.4}));
}

// The reactor in the chest, shoulder sockets.
Part torsoFittings() {
    const Shape reactor =
        placed(joined({rings(9.5, 4.2), around(moved(icosphere(1.3, 1), {11.8, 0.6, 0}), 8)}), chestLamp,
               {0, 0.02, 1});
    const Shape socket = placed(rings(9, 3), {25.5, 116, 0}, {1, 0, 0});
    const Shape frames = onScreens([](Flat half) { return bezel({half.x + 1.4, half.y + 1.4}, 2.5, 0.4); });
    return {{}, joined({reactor, frames, withMirror(socket)})};
}

Shape neck() {
    const Outline wall = platedProfile({128.5, 130.7, 132.9, 135.1, 137.3}, {0.8, 1.2, 0.7, 2},
                                       [](double y) { return 8.4 - 0.1 * (y - 128); });
    const Outline profile = chained({{{0, 128}}, wall, {{0, 138}}});
    return lathe(profile, 20);
}

// Where the head's own coordinates (origin at its centre) lie on the robot.
Shape onNeck(const Neck& neck, const Shape& shape) {
    const Shape nodding = turned(scaled(shape, {neck.size, neck.size, neck.size}), Axis::x, neck.tilt);
    return moved(turned(nodding, Axis::z, headLean), neck.centre);
}

constexpr Flat faceHalf = {16.2, 11.8};
constexpr Vec earMiddle = {17.6, 1, -2};

// The two aerials make a V.
constexpr Vec aerialFoot = {5.5, 16.5, -3}, aerialTip = {16, 29, -5};

// The head's shell, which seems to swell, or each of its flat sides would mirror but one place of the sky.
Shape swelling(const Neck& neck, const Shape& shell) {
    const double tilt = neck.tilt;
    const Vec right = {std::cos(headLean), std::sin(headLean), 0};
    const Vec ahead = {std::sin(tilt) * std::sin(headLean), -std::sin(tilt) * std::cos(headLean),
                       std::cos(tilt)};
    const Vec up = cross(ahead, right);
    return shaded(shell, [=](Vec p, Vec) {
        const Vec out = (p - neck.centre) * (1 / neck.size);
        const auto swell = [](double part) { return part * part * part; };
        return right * swell(dot(out, right) / 20) + up * swell(dot(out, up) / 15.5) +
               ahead * swell(dot(out, ahead) / 15.5);
    });
}

Shape headShell(const Neck& neck) {
    // A television's tube: wide in front, drawn in behind. How deep each ring of it lies, and how wide it is.
    constexpr Flat rings[] = {{-16, 0.01},   {-15.9, 0.2},  {-15.7, 0.38}, {-15.1, 0.54}, {-13.6, 0.65},
                              {-11.2, 0.73}, {-8, 0.81},    {-3, 0.925},   {2, 0.99},     {6, 1},
                              {12.4, 1},     {14.4, 0.985}, {15.3, 0.94},  {15.5, 0.86}};
    const int sides = 56;
    return onNeck(
        neck, grid(sides, int(std::size(rings)), true, false, [&](int c, int r) {
            const double turn = 2 * pi * c / sides, x = std::cos(turn), y = std::sin(turn);
            const double out = rings[r].y * std::pow(std::pow(x, 8) + std::pow(y, 8), -1 / 8.0);
            return Vec{20 * out * x, 15.5 * out * y + 1.5 * smoothstep(6, -16, rings[r].x), rings[r].x};
        }));
}

Shape screenFrame(const Neck& neck) {
    return onNeck(neck, bezel(faceHalf, 5, faceDepth));
}

Shape brows(const Neck& neck) {
    const Shape over = moved(box({34, 2.6, 5}, 1.1, 2), {0, 14.6, 15});
    const Shape chin = moved(box({20, 1.6, 3}, 0.7, 2), {0, -14.6, 13.4});
    return onNeck(neck, joined({over, chin}));
}

Shape headWorks(const Neck& neck) {
    const Shape ear = placed(rings(8.2, 5), earMiddle, {1, 0, 0});
    const double reach = length(aerialTip - aerialFoot);
    const Shape aerial =
        placed(lathe({{0, -1}, {2.2, -1}, {2.2, 1}, {1.2, 2.4}, {0.4, 5}, {0.3, reach}, {0, reach}}, 10),
               aerialFoot, aerialTip - aerialFoot);
    return onNeck(neck, withMirror(joined({ear, aerial})));
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
    return smoothed(sweep(polygon(12, 1), how), 1.3);
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

Shape upperArmShell(const Pose& pose) {
    return shellOf(upperArm(pose), {1, 1, 0.8, 4}, {0.25, 0.85});
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
    const Shape fore = shellOf(forearm(pose), {1.1, 1, 0.9, 4}, {0.14, 0.96});
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
Vec onGlass(double s, double t, double height) {
    // A square carried into a rounded one, so that the corners follow the bezel.
    const double u = 2 * s - 1, v = 1 - 2 * t;
    const double x = u * (1 - 0.06 * v * v), y = v * (1 - 0.08 * u * u);
    return {x * faceHalf.x, y * faceHalf.y, faceDepth + 1.6 - 0.8 * (x * x + y * y) + height};
}

Shape screen(const Neck& neck) {
    const int columns = 17, rows = 13;
    const Shape plain = grid(columns, rows, false, false, [&](int c, int r) {
        return onGlass(double(c) / (columns - 1), 1 - double(r) / (rows - 1), 0);
    });
    return onNeck(neck, painted(plain, facePicture));
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

Shape shoulderCaps() {
    const Outline dome = {{10.6, -3}, {11, -1.5}, {10.8, 0}, {10, 1},  {9.9, 3}, {8.8, 5.8},
                          {7.4, 7.6}, {6.8, 7.2}, {6, 8},    {3, 9.6}, {0, 10}};
    return withMirror(placed(lathe(dome, 28), shoulder, shoulderTop));
}

// A thin tube of light along a line, or one of cold light round a flat ring of a radius.
Shape tubeOf(const std::vector<Vec>& path, Uv light) {
    Sweep how;
    how.path = path;
    how.up = {0.3, 0.5, 0.8};
    return painted(sweep(polygon(4, 0.4), how), light);
}
Shape coldLine(const std::vector<Vec>& path) {
    return tubeOf(path, coldTube);
}
Shape coldHoop(double radius, int sides) {
    const double r = radius, h = 0.4;
    return painted(lathe({{r, -h}, {r + h, 0}, {r, h}, {r - h, 0}, {r, -h}}, sides), coldTube);
}

Shape hoopOn(const Limb& limb, double part) {
    return placed(coldHoop(limb.radius(part) + 0.2, 24), limb.at(part), limb.to - limb.from);
}

// What draws its outline against the night from any side: tubes along its edges and round its plates.
Shape coldTubes() {
    const Shape legs = joined({hoopOn(shin, 0.04), hoopOn(shin, 0.84), hoopOn(thigh, 0.22)});
    const Shape aerial = coldLine({mix(aerialFoot, aerialTip, 0.12), mix(aerialFoot, aerialTip, 0.92)});
    const Shape aerials = onNeck(bowed, withMirror(aerial));
    const auto onTrunk = [](double y, double radius, double depth) {
        return squared(moved(coldHoop(radius + 0.1, 64), {0, y, 0}), depth);
    };
    const Shape trunk =
        joined({onTrunk(88, chestRadius(88), chestDepth), onTrunk(119, chestRadius(119), chestDepth)});
    const Shape cuffs = onArms([](const Pose& pose) { return hoopOn(forearm(pose), 0.9); });
    // Between the folds of the waist, in front.
    std::vector<Shape> folds;
    for (double y : {65.4, 69.8, 74.2, 78.6, 83.0}) {
        std::vector<Vec> fold;
        for (int i = 0; i <= 16; i++) {
            const double turn = mix(-0.5, pi + 0.5, i / 16.0);
            fold.push_back({waistRadius(y) * std::cos(turn), y,
                            waistMiddle + waistDepth * waistRadius(y) * std::sin(turn)});
        }
        folds.push_back(tubeOf(fold, ember));
    }
    const Shape rim = moved(coldHoop(43.9, 48), {0, -26, 0});
    return joined({withMirror(legs), aerials, trunk, cuffs, rim, joined(folds)});
}

// The beat of its heart, for a viewer too near to see the face, or behind.
Shape pulse() {
    return onScreens([](Flat half) {
        const Shape plain = grid(7, 6, false, false, [=](int c, int r) {
            const double x = 2 * c / 6.0 - 1, y = 2 * r / 5.0 - 1;
            return Vec{half.x * x, half.y * y, 1.4 - 0.5 * (x * x + y * y)};
        });
        return painted(plain, pulsePicture);
    });
}

Shape lamps(const Neck& neck) {
    const Shape ear = placed(dial(5.4, 0.9), earMiddle + Vec{4.6, 0, 0}, {1, 0, 0});
    const Shape tip = moved(painted(icosphere(3, 2), warmLamp), aerialTip);
    return joined({placed(dial(8.4, 1.2), chestLamp + Vec{0, 0.1, 4.4}, {0, 0.02, 1}),
                   onNeck(neck, withMirror(joined({ear, tip})))});
}

Part withoutHeadShell(const Neck& neck) {
    const Part left = arm(swinging);
    return together({mirrored(leg()),
                     {{}, hips()},
                     {torso(), {}},
                     torsoFittings(),
                     {{}, headWorks(neck)},
                     arm(waving),
                     {reflected(left.shells, Axis::x), reflected(left.works, Axis::x)}});
}

}  // namespace

Shape figures::robotShells() {
    return joined({withoutHeadShell(upright).shells, headShell(upright), girdle(), onArms(upperArmShell)});
}

Shape figures::robotWorks() {
    return joined(
        {withoutHeadShell(upright).works, screenFrame(upright), brows(upright), base(), waist(), neck()});
}

Shape figures::robotScreen() {
    return screen(upright);
}

Shape figures::robotTrim() {
    return joined({shoulderCaps(), lamps(upright)});
}

Shape figures::onRobotScreen(const Shape& picture) {
    return onNeck(upright, bent(picture, [](Vec p) { return onGlass(p.x, p.y, p.z); }));
}

void makeRobotBody(const char* path) {
    writeAml(path, {mappedBox(joined({withoutHeadShell(bowed).works, waistRods()}), 48)});
}

void makeRobotArms(const char* path) {
    writeAml(path, {mappedBox(joined({waist(), neck(), onArms(grip)}), 48)});
}

void makeRobotScreen(const char* path) {
    const auto in = [](atlas::robot::Lacquer lacquer) { return [=](Vec) { return coatOf(lacquer); }; };
    const Shape lacquer = joined(
        {lacquered(joined({withoutHeadShell(bowed).shells, swelling(bowed, headShell(bowed))}), coatAt),
         lacquered(joined({shoulderCaps(), backpack(), brows(bowed)}), in(orange)),
         lacquered(joined({girdle(), waistSleeves(), onArms(upperArmShell)}), in(petrol)),
         lacquered(screenFrame(bowed), in(brass)), lacquered(base(), [](Vec p) {
             return coatOf(p.y > -22.4 && std::hypot(p.x, p.z) > 36 ? brass : petrol);
         })});
    writeAml(path, {unlit(screen(bowed)), lacquer, unlit(joined({lamps(bowed), pulse(), coldTubes()}))});
}
