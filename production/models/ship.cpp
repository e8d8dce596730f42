// The ship of the laser corridor: a firebird that flies down the tunnel, its head towards -z, since the
// tunnel streams to +z. All its viewers look at it from 24 to 55 degrees off its axis, from ahead or from
// behind, and it rolls; so its wings are spread across the axis, and its tail is a sheaf about it, and from
// none of them is it ever seen edge on. Six beams leave the axis at z = 52 and at z = -52: feathers hide
// where they meet.
#include <algorithm>

#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/figures.h"
#include "production/models/models.h"
#include "production/models/paints.h"

using namespace model;
using atlas::hull::Feather;

namespace {

// Half its breadth from its root to its tip, as a share of the most.
struct Cut {
    double along, half;
};
const std::vector<Cut> blade = {{0, 0.35}, {0.35, 0.82}, {0.72, 1}, {0.92, 0.66}, {1, 0.04}},
                       finger = {{0, 0.5}, {0.3, 1}, {0.76, 0.8}, {0.94, 0.4}, {1, 0.03}},
                       scale = {{0, 0.7}, {0.42, 1}, {0.74, 0.8}, {0.92, 0.38}, {1, 0.02}},
                       eyed = {{0, 0.12}, {0.5, 0.3}, {0.7, 0.75}, {0.82, 1}, {0.93, 0.74}, {1, 0.04}};

enum class Sides { front, back, both };

struct Quill {
    Feather kind;
    const std::vector<Cut>& cuts;
    Vec root, along, front;  // where it grows, where it points, where its front looks
    double length, half;
    double aside = 0, backwards = 0;  // how far its tip is bent
    Sides sides = Sides::both;
};

Shape feather(const Quill& quill) {
    const Vec along = normalized(quill.along), aside = normalized(cross(along, quill.front)),
              front = cross(aside, along);
    Shape sheet = grid(3, int(quill.cuts.size()), false, false, [&](int c, int r) {
        const auto [k, half] = quill.cuts[r];
        return quill.root + along * (k * quill.length) +
               aside * (k * k * quill.aside + (c - 1) * half * quill.half) -
               front * (k * k * quill.backwards);
    });
    const auto side = [&](bool back) {
        Shape shape = sheet;
        for (Face& face : shape.faces)
            for (Uv& uv : face.uvs) {
                const int cut = int(std::lround(uv.y * double(quill.cuts.size() - 1)));
                uv = hull::feather(quill.kind, back && quill.kind < atlas::hull::feathersWithBacks)
                         .at(quill.cuts[cut].along, 1 - std::fabs(2 * uv.x - 1));
            }
        return (dot(faceNormal(shape, shape.faces[0]), front) > 0) == back ? insideOut(shape) : shape;
    };
    if (quill.sides == Sides::both) return joined({side(false), side(true)});
    return side(quill.sides == Sides::back);
}

// The right wing lies on a plane of its own: outwards, towards its leading edge, and out of its front.
const Vec shoulder = {10, 8, -4};
const double lean = degrees(80);  // of the plane, from along the axis to across it
Vec onWing(double out, double up, double before = 0) {
    const double swept = before - 26 * out * out / 40000;
    return shoulder + Vec{out, up * std::sin(lean) - swept * std::cos(lean),
                          -up * std::cos(lean) - swept * std::sin(lean)};
}
Vec wingwards(double angle) {
    return onWing(std::cos(angle), std::sin(angle)) - onWing(0, 0);
}
const Vec wingFront = {0, -std::cos(lean), -std::sin(lean)};

// Of the arm: from the shoulder over the elbow to the wrist, and on to the hand's tip.
const std::vector<Flat> arm = {{-4, -6}, {16, 14}, {48, 36}, {90, 52}, {122, 62}, {144, 66}};

Flat armAt(double k) {
    const double at = k * double(arm.size() - 1);
    const size_t i = std::min(size_t(at), arm.size() - 2);
    return arm[i] + (arm[i + 1] - arm[i]) * (at - double(i));
}

// A row of feathers along the arm, from its tip to the body.
struct Row {
    Feather kind;
    const std::vector<Cut>& cuts;
    int count;
    double from, to;          // along the arm, 1 at its tip
    double fromTurn, toTurn;  // degrees
    double fromLength, toLength, half, before;
};

Shape row(const Row& row, Sides sides) {
    std::vector<Shape> all;
    for (int number = 0; number < row.count; number++) {
        const int i = sides == Sides::back ? row.count - 1 - number : number;
        const double k = double(i) / (row.count - 1), s = sides == Sides::back ? -1 : 1;
        const Flat root = armAt(mix(row.from, row.to, k));
        all.push_back(
            feather({row.kind, row.cuts, onWing(root.x, root.y - 2, s * (row.before - 0.25 * i * s)),
                     wingwards(degrees(mix(row.fromTurn, row.toTurn, k))), wingFront,
                     mix(row.fromLength, row.toLength, k), row.half, 0, 6, sides}));
    }
    return joined(all);
}

Shape wing() {
    // From what lies uppermost to what it covers.
    std::vector<Shape> parts;
    for (const Sides sides : {Sides::front, Sides::back}) {
        parts.push_back(row({atlas::hull::lesser, scale, 13, 0.95, 0.04, 14, -96, 26, 22, 9, 4.5}, sides));
        parts.push_back(row({atlas::hull::covert, scale, 15, 0.97, 0.05, 26, -96, 54, 40, 11.5, 2.5}, sides));
    }
    parts.push_back(
        row({atlas::hull::primary, finger, 10, 1, 0.62, 38, -46, 122, 128, 11.5, 0}, Sides::both));
    parts.push_back(
        row({atlas::hull::secondary, blade, 9, 0.60, 0.06, -52, -98, 124, 70, 14, -1}, Sides::both));
    Sweep how;
    for (const Flat& p : arm) how.path.push_back(onWing(p.x, p.y));
    how.path = curveThrough(how.path, false, 3);
    const double last = double(how.path.size() - 1);
    how.change = [=](int i, const Outline& outline) {
        Outline thin = outline;
        for (Flat& p : thin) p = p * mix(1.0, 0.3, i / last);
        return thin;
    };
    parts.push_back(mappedBy(sweep(polygon(6, 6), how), [](const Face&, Vec p) {
        return hull::feather(atlas::hull::covert, false).at(std::clamp(p.x / 160, 0.1, 0.6), 0);
    }));
    return joined(parts);
}

// Round and along the axis, from the beak's root to the rump; the neck is raised.
struct Station {
    double z, radius, up;
};
const Station stations[] = {{-113, 3, 13}, {-109, 12, 14}, {-102, 19, 15}, {-93, 22, 15}, {-84, 20, 13},
                            {-76, 16, 9},  {-66, 15, 5},   {-54, 19, 2},   {-38, 26, 0},  {-20, 30, 0},
                            {0, 29, 0},    {20, 25, 0},    {38, 19, 0},    {54, 14, 0},   {70, 5, 0}};

Shape body() {
    std::vector<Vec> line;
    for (const Station& s : stations) line.push_back({s.radius, s.up, s.z});
    line = curveThrough(line, false, 3);
    const int rows = int(line.size()), sides = 24;
    Shape shape = insideOut(grid(sides, rows, true, false, [&](int c, int r) {
        const double angle = 2 * pi * c / sides;
        const Vec s = line[r];
        return Vec{s.x * std::sin(angle), s.y + s.x * std::cos(angle), s.z};
    }));
    for (Face& face : shape.faces)
        for (Uv& uv : face.uvs) uv = hull::body.at(1 - std::fabs(2 * uv.x - 1), 1 - uv.y);
    return shape;
}

Shape beak() {
    Sweep how;
    how.path = curveThrough(
        {{0, 13, -98}, {0, 16, -107}, {0, 14, -116}, {0, 8, -122.5}, {0, 0, -125}, {0, -8, -123.5}}, false,
        3);
    const double last = double(how.path.size() - 1);
    how.change = [=](int i, const Outline& outline) {
        Outline thin = outline;
        for (Flat& p : thin) p = p * mix(13.5, 0.3, std::pow(i / last, 0.8));
        return thin;
    };
    Shape shape = sweep(polygon(16, 1), how);
    // Narrow for its depth. It is mapped by how far ahead it is, and where it is a hook, by how far down.
    for (Vec& p : shape.points) p.x *= 0.75;
    return mappedBy(shape, [](const Face&, Vec p) {
        const double down = (9 - p.y) / 40 * smoothstep(-110, -118, p.z);
        return hull::beak.at(std::clamp(std::fabs(p.x) / 10, 0.0, 1.0),
                             std::clamp((-100 - p.z) / 34 + down, 0.0, 1.0));
    });
}

Shape eye() {
    Shape dome = lathe({{9, 0}, {7, 2.2}, {4, 3.6}, {0, 4.2}}, 16);
    dome = mappedBy(dome, [](const Face&, Vec p) { return hull::eye.at(std::hypot(p.x, p.z) / 9, 0.5); });
    return withMirror(placed(dome, {17.5, 20, -99}, {0.86, 0.3, -0.42}));
}

// A whorl of feathers about the axis, from one radius and place to another.
Shape whorl(Feather kind, const std::vector<Cut>& cuts, int count, Flat from, Flat to, double half,
            double turn = 0) {
    std::vector<Shape> all;
    for (int i = 0; i < count; i++) {
        const double angle = 2 * pi * (i + turn) / count;
        const Vec out = {std::sin(angle), std::cos(angle), 0};
        const Vec along = out * (to.x - from.x) + Vec{0, 0, to.y - from.y};
        all.push_back(feather({kind, cuts, out * from.x + Vec{0, 0, from.y + 0.15 * (i % 3)}, along,
                               cross(Vec{-out.y, out.x, 0}, along), length(along), half}));
    }
    return joined(all);
}

Shape crest() {
    std::vector<Shape> all;
    for (int i = -2; i <= 2; i++) {
        const double up = degrees(62 - 24 * std::abs(i)), aside = degrees(16 * i);
        const Vec along = {std::sin(aside), std::sin(up) * std::cos(aside), std::cos(up) * std::cos(aside)};
        all.push_back(feather({atlas::hull::crest,
                               eyed,
                               {2.0 * i, 32, -88},
                               along,
                               {0, -along.z, along.y},
                               52 - 3.0 * std::abs(i),
                               7,
                               0,
                               -8}));
    }
    return joined(all);
}

// Plumes that trail from the rump.
Shape tail() {
    std::vector<Shape> all;
    for (int i = 0; i < 5; i++) {
        const double angle = 2 * pi * i / 5, reach = i == 0 ? 138 : 112 + 22 * (i % 2);
        const Vec out = {std::sin(angle), std::cos(angle), 0};
        all.push_back(feather({atlas::hull::plume, eyed, out * 7 + Vec{0, 0, 56}, out * 0.26 + Vec{0, 0, 1},
                               out, reach, 11, 9, -9}));
    }
    return joined(all);
}

Shape bird() {
    const Shape right = wing();
    return joined({body(), beak(), eye(), crest(),
                   whorl(atlas::hull::covert, scale, 13, {14, -70}, {60, -57}, 14),
                   whorl(atlas::hull::lesser, scale, 11, {13, -75}, {38, -65}, 11, 0.5),
                   whorl(atlas::hull::covert, scale, 13, {18, -47}, {56, -40}, 14, 0.5),
                   whorl(atlas::hull::secondary, blade, 11, {10, 48}, {45, 94}, 14),
                   whorl(atlas::hull::covert, scale, 9, {11, 56}, {30, 80}, 10, 0.5), right,
                   reflected(right, Axis::x), tail()});
}

// The corridor's light stands far astern. Lit as if all of it faced there, it is as bright for those ahead as
// for those behind, however it has rolled, and no facet shows. Fronts of wings lean outwards, their backs
// aside and the trunk inwards, by as much as makes them mirror dark places of the picture of reflections to
// whoever sees them: found by search.
Shape litFromAstern(const Shape& whole) {
    Shape shape = triangulated(whole);
    for (Face& face : shape.faces) {
        const bool front = faceNormal(shape, face).z < 0;
        face.normals.clear();
        for (const int point : face.points) {
            const Vec& p = shape.points[point];
            const double round = std::hypot(p.x, p.y);
            const double trunk = smoothstep(60, 35, round),
                         bare = smoothstep(75, 50, p.z) * smoothstep(-114, -104, p.z);
            const double wing = front ? 0.75e-3 * round : -mix(0.0, 0.20, smoothstep(45, 120, round));
            const double outwards = mix(wing, -mix(0.25, 0.4, smoothstep(-40, -80, p.z)), trunk) * bare;
            const double aside = front ? 0 : 0.33 * bare;
            const Vec out = Vec{p.x, p.y, 0} * (1 / std::max(round, 1.0));
            face.normals.push_back(normalized(out * outwards + Vec{-out.y, out.x, 0} * aside + Vec{0, 0, 1}));
        }
    }
    return shape;
}

}  // namespace

Shape figures::ship() {
    return bird();
}

void makeShip(const char* path) {
    writeAml(path, {litFromAstern(bird())});
}
