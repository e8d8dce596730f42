// The figure of the stripes: jellyfish that rise through a sea at night like lanterns, closed round the far
// viewer, who stands 224 from its middle. However it turns, its up stays half a right angle off the viewer's.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/models.h"
#include "production/models/paints.h"
#include "script/show_times.h"

using namespace model;

namespace {

// All of a surface is lit as if it faced one way: light lies evenly on it, and no facet shows. Hollowed a
// little, it mirrors only a small part of the sphere map. These were found by search over the viewer's way,
// which is the same each time: lit well whenever he sees the surface, and mirroring what is dark.
struct Lightwards {
    Vec towards;
    double hollow = 0;
};
struct Lights {
    Lightwards over, flank, under, hanging;
};
const Lights heros = {{{0.51, 0.64, -0.57}, 0.4},
                      {{0.43, -0.25, -0.87}, 0.15},
                      {{0.31, -0.53, -0.79}, 0.3},
                      {{0.22, -0.53, -0.82}, 0.15}};

Shape lit(const Shape& whole, const Lightwards& light, Vec middle = {}, double radius = 1) {
    return litAs(whole, [&](Vec p) { return light.towards - (p - middle) * (light.hollow / radius); });
}

// A jellyfish of radius 1: its paint, how finely it is cut, and what hangs from it.
struct Kind {
    int paint;
    int lobes, across;  // across each
    int rows;           // of its outside
    int rings;          // of its inside: which of the vaults
    bool wavy;          // at its rim
    int threads, joints;
    int arms, frills;
    double thread;  // radius
    double reach;   // of the threads
    double swing;
};

// Radius and height, from the rim, which is cut most finely.
Outline outside(int rows) {
    Outline curve;
    for (int i = 0; i <= rows; i++) {
        const double angle = mix(-0.2, pi / 2, std::pow(double(i) / rows, 1.35)), out = std::cos(angle);
        curve.push_back({std::pow(std::max(0.0, out), 0.8), std::sin(angle) * (angle < 0 ? 0.2 : 0.61)});
    }
    curve.back().x = 0;
    return curve;
}
const Flat rim = outside(1)[0];
// Rings keep the paint's leaves whole: what tapers shears them.
const Outline vaults[] = {{rim, {0, 0.24}},
                          {rim, {0.50, 0.19}, {0, 0.24}},
                          {rim, {0.62, 0.18}, {0.34, 0.24}, {0.14, 0.26}, {0, 0.27}}};
// A small bell about the arms' roots.
const Outline lip = {{0.25, 0.07}, {0.22, 0.13}, {0.14, 0.19}, {0.07, 0.28}},
              throat = {lip[0], {0.16, 0.12}, {0, 0.15}};

// Half a lobe of the bell is painted; the others mirror it.
Shape bell(const Kind& kind, const Outline& curve, const Patch& paint) {
    std::vector<double> way = {0};
    for (size_t i = 1; i < curve.size(); i++) way.push_back(way.back() + length(curve[i] - curve[i - 1]));
    const int rows = int(curve.size()), sides = 2 * kind.lobes * kind.across;
    Shape shape = grid(sides, rows, true, false, [&](int c, int r) {
        const double angle = 2 * pi * c / sides, low = kind.wavy * smoothstep(0.3, -0.03, curve[r].y);
        return Vec{curve[r].x * std::cos(angle), curve[r].y - 0.010 * low * std::cos(angle * kind.lobes),
                   -curve[r].x * std::sin(angle)};
    });
    for (Face& face : shape.faces)
        for (Uv& uv : face.uvs) {
            const double turn = uv.x * 2 * kind.lobes;
            uv = paint.at(std::fabs(turn - 2 * std::round(turn / 2)),
                          way[size_t(std::lround(uv.y * (rows - 1)))] / way.back());
        }
    return shape;
}

// Its up is the axis that the figure turns about.
Shape rising(const Shape& upright) {
    return turned(upright, Axis::x, pi / 4);
}

const double half = std::sqrt(0.5);

// The figure turns about its up, then about y: what one of the viewer's directions is in its coordinates.
Vec turnedBack(Vec v, double time) {
    const auto back = [&v](Vec axis, double by) {
        v = v * std::cos(by) - cross(axis, v) * std::sin(by) + axis * (dot(axis, v) * (1 - std::cos(by)));
    };
    back({0, 1, 0}, degrees(180 * std::sin(0.3 * time)));
    back({0, half, half}, degrees(290 * std::cos(0.2 * time)));
    return v;
}

// Where a viewer is who stands `distance` before the point that the figure circles at `radius`.
Vec viewerAt(double time, double angle, double radius, double distance) {
    return turnedBack({-radius * std::cos(angle), -radius * std::sin(angle), distance}, time);
}

// How close the far viewer comes to a place.
double clearance(Vec place) {
    double nearest = 1e9;
    for (double time = showtime::stripes.seconds(); time < showtime::tornTunnel.seconds(); time += 0.1)
        nearest = std::min(nearest, length(place - viewerAt(time, time, 100, 200)));
    return nearest;
}

// A thread whose inside the near viewer travels: his picture is covered by the sea, and need not be
// drawn.
Shape blindfold() {
    Sweep how;
    for (double time = showtime::stripes.seconds() - 0.2; time < showtime::tornTunnel.seconds() + 0.2;
         time += 0.2)
        how.path.push_back(viewerAt(time, 0.4 * time, 40, 5));
    return painted(sweep(polygon(3, 0.8), how), hull::water.at(0.5, 0.8));
}

struct Jellyfish {
    Kind kind;
    double radius;
    Vec middle;

    Vec placeOf(Vec p) const { return Vec{p.x, (p.y - p.z) * half, (p.y + p.z) * half} * radius + middle; }
};

// A thread from the rim, as long as it keeps clear of the viewer.
Shape thread(const Jellyfish& fish, int number) {
    const Kind& kind = fish.kind;
    const double angle = 2 * pi * (number + 0.5) / kind.threads, phase = 1.9 * number + kind.swing;
    const double reach = kind.reach * (1 + 0.25 * std::sin(number * 2.4 + kind.swing));
    const auto at = [&](double k) {
        const double turn = angle + 0.5 * k * k + 0.08 * k * std::sin(phase + 3 * k);
        const double out = 0.95 + 0.10 * std::sin(3 * k) - 0.25 * k * k + 0.06 * k * std::sin(phase + 4 * k);
        return Vec{out * std::cos(turn), -0.02 - reach * k, -out * std::sin(turn)};
    };
    double length = 0.05;
    while (length < 1 && clearance(fish.placeOf(at(length + 0.05))) > 95) length += 0.05;
    if (length < 0.3) return {};
    Sweep how;
    for (int i = 0; i <= kind.joints; i++) how.path.push_back(at(length * i / kind.joints));
    how.capped = false;
    how.change = [&](int i, const Outline& outline) {
        Outline thin = outline;
        for (Flat& p : thin) p = p * mix(1.2, 0.25, double(i) / kind.joints);
        return thin;
    };
    const Patch paint = hull::thread(kind.paint);
    return mappedBy(sweep(polygon(3, kind.thread), how), [&](const Face&, Vec point) {
        return paint.at(std::clamp((-0.02 - point.y) / (reach * length), 0.0, 1.0), 0.5);
    });
}

// An arm about the mouth: a frilled ribbon, folded along its middle.
Shape arm(const Kind& kind, int number) {
    const double angle = 2 * pi * (number + 0.5) / kind.arms, reach = 0.95 + 0.2 * (number % 2);
    std::vector<Shape> sheets;
    for (const double side : {0.003, -0.003}) {
        Shape sheet = grid(3, kind.frills, false, false, [&](int c, int r) {
            const double k = double(r) / (kind.frills - 1), w = c - 1;
            const double width = 0.085 * std::sin(pi * mix(0.25, 1.0, std::sqrt(k)));
            const double turn = angle + 1.5 * k * k + 0.3 * std::sin(5 * k + kind.swing) * k;
            const double frill = std::sqrt(k) * (1 - k);
            const double out = 0.05 + 0.30 * k + 0.08 * std::sin(6 * k + angle + kind.swing) * k +
                               w * w * (0.06 + 0.09 * std::sin(14 * k + 2 * w)) * frill + side;
            const double aside = w * width * (1 + 0.35 * std::sin(16 * k + 2 * w));
            return Vec{out * std::cos(turn) + aside * std::sin(turn), 0.24 - reach * k,
                       -out * std::sin(turn) + aside * std::cos(turn)};
        });
        for (Face& face : sheet.faces)
            for (Uv& uv : face.uvs) uv = hull::arm(kind.paint).at(std::fabs(2 * uv.x - 1), 1 - uv.y);
        sheets.push_back(side > 0 ? sheet : insideOut(sheet));
    }
    return joined(sheets);
}

Shape shapeOf(const Jellyfish& fish, const Lights& lights) {
    const Kind& kind = fish.kind;
    std::vector<Shape> hung;
    for (int i = 0; i < kind.threads; i++) hung.push_back(thread(fish, i));
    for (int i = 0; i < kind.arms; i++) hung.push_back(arm(kind, i));
    if (kind.wavy) {
        Kind small = kind;
        small.across = 1;
        hung.push_back(bell(small, lip, hull::outside(kind.paint)));
        hung.push_back(insideOut(bell(small, throat, hull::inside(kind.paint))));
    }
    const Shape over = bell(kind, outside(kind.rows), hull::outside(kind.paint)),
                under = bell(kind, vaults[kind.rings], hull::inside(kind.paint));
    Shape flank = over, top = over;
    std::erase_if(flank.faces, [&](const Face& face) { return faceCentre(over, face).y > 0.12; });
    std::erase_if(top.faces, [&](const Face& face) { return faceCentre(over, face).y <= 0.12; });
    const auto placed = [&](const Shape& part, const Lightwards& light) {
        return lit(bent(part, [&](Vec p) { return fish.placeOf(p); }), light, fish.middle, fish.radius);
    };
    return joined({placed(joined(hung), lights.hanging), placed(insideOut(under), lights.under),
                   placed(flank, lights.flank), placed(top, lights.over)});
}

// Those that follow lie where they fill his picture, found by search as well.
struct Follower {
    Vec middle;
    double radius;
    int paint;
    Vec lightwards;
};
const Follower followers[] = {
    // Far below swims a giant.
    {{-903, -1038, 597}, 560, 2, {-0.05, 0.60, -0.80}}, {{-167, 19, 300}, 105, 2, {0.51, -0.42, -0.75}},
    {{-379, -39, -78}, 100, 3, {0.83, -0.27, -0.49}},   {{-62, 440, 89}, 95, 1, {0.27, -0.71, -0.65}},
    {{371, -90, 0}, 90, 2, {-0.48, 0.06, -0.87}},       {{125, 31, 258}, 80, 3, {0.16, -0.44, -0.89}},
    {{183, -348, -52}, 75, 1, {0.07, 0.58, -0.81}},     {{60, -190, 283}, 70, 1, {0.22, -0.08, -0.97}},
    {{14, -345, -185}, 70, 2, {0.55, 0.80, -0.23}},     {{-173, 101, -150}, 55, 3, {0.65, -0.61, -0.45}},
    {{-98, -266, 205}, 50, 1, {0.55, 0.10, -0.83}},     {{-280, -267, 36}, 45, 2, {0.73, 0.21, -0.65}},
    {{195, -279, 108}, 40, 3, {0.07, 0.42, -0.91}},     {{-260, -168, -262}, 80, 1, {0.20, 0.62, -0.75}},
};

// A number of 0..1 for each of a row of things.
double randomOf(int which, int what) {
    return fraction(std::sin(which * 12.9898 + what * 78.233) * 43758.5453);
}

// Points of light in the water, each a triangle that faces the middle.
Shape plankton() {
    std::vector<Shape> all;
    for (int i = 0; i < 150; i++) {
        const double y = 1 - 2 * randomOf(i, 1), angle = 2 * pi * randomOf(i, 2), flat = std::sqrt(1 - y * y);
        const Vec out = {flat * std::cos(angle), y, flat * std::sin(angle)};
        const double size = mix(0.8, 2.6, randomOf(i, 4) * randomOf(i, 5));
        Shape point{{{size, 0, 0}, {-0.5 * size, 0, -0.87 * size}, {-0.5 * size, 0, 0.87 * size}}, {}};
        addFace(point, {0, 1, 2});
        all.push_back(placed(painted(point, hull::thread(i % atlas::hull::lanterns).at(0.1, 0.5)),
                             out * mix(250.0, 520.0, randomOf(i, 3)), out * -1));
    }
    return joined(all);
}

// So far away that the viewer's own way doesn't count. Half of it is painted; the other mirrors it. What is
// near the zenith is painted finely.
Shape water() {
    constexpr int columns = 24, rows = 16;
    constexpr double radius = 6000;
    Shape shell = insideOut(grid(columns, rows, true, false, [](int c, int r) {
        const double down = pi * std::pow(1 - double(r) / (rows - 1), atlas::hull::waterDown);
        const double angle = 2 * pi * c / columns;
        return Vec{std::sin(down) * std::cos(angle), std::cos(down), -std::sin(down) * std::sin(angle)} *
               radius;
    }));
    for (Face& face : shell.faces)
        for (Uv& uv : face.uvs) uv = hull::water.at(1 - std::fabs(1 - 2 * uv.x), uv.y);
    return welded(shell, 1);
}

// A field over directions, found as those above: what is turned by it mirrors nothing of the sphere map's
// lamps.
Vec waterwards(Vec point, Vec normal) {
    const Vec to = normalized(point);
    return normal + Vec{0.27, -0.62, -0.68} + Vec{-0.10, -0.14, 0.13} * to.x +
           Vec{0.10, -0.07, 0.04} * ((to.y + to.z) * half) + Vec{0.04, 0.10, -0.01} * ((to.y - to.z) * half);
}

// Many faces look away from the far viewer whenever they are in his picture, or never are: without them it
// stays the same. What the viewer sees from both sides has a face for each.
Shape seen(Shape shape) {
    constexpr double step = 0.05,
                     edge = 1.05;  // seconds; the tangent at which his picture ends, and a little more
    struct Stand {
        Vec eye, right, up, ahead;
    };
    std::vector<Stand> way;
    for (double time = showtime::stripes.seconds(); time < showtime::tornTunnel.seconds() + step;
         time += step)
        way.push_back({viewerAt(time, time, 100, 200), turnedBack({1, 0, 0}, time),
                       turnedBack({0, 1, 0}, time), turnedBack({0, 0, -1}, time)});
    const auto sees = [&](const Stand& stand, const Face& face) {
        int beside = 15;  // which sides of the picture all of it is outside of
        for (const int point : face.points) {
            const Vec sight = shape.points[size_t(point)] - stand.eye;
            const double end = edge * dot(sight, stand.ahead), x = dot(sight, stand.right),
                         y = dot(sight, stand.up);
            beside &= (x > end) | (x < -end) << 1 | (y > end) << 2 | (y < -end) << 3;
        }
        return beside == 0 &&
               dot(areaVector(shape, face), shape.points[size_t(face.points[0])] - stand.eye) < 0;
    };
    std::erase_if(shape.faces, [&](const Face& face) {
        return std::none_of(way.begin(), way.end(), [&](const Stand& stand) { return sees(stand, face); });
    });
    return shape;
}

}  // namespace

void makeLanterns(const char* path) {
    const Kind large = {0, 8, 5, 7, 2, true, 8, 12, 4, 17, 0.005, 1.6, 0};
    // What lies all round the viewer is not hollowed: it would face him instead of the light.
    const Lightwards evenly = {heros.hanging.towards};
    std::vector<Shape> swarm = {shapeOf({large, 130, {-21, -45, 55}}, heros)};
    for (const Follower& f : followers) {
        const bool near = f.radius > 80;
        const Kind kind = f.radius > 200 ? Kind{f.paint, 8, 3, 8, 1, false, 6, 6, 5, 6, 0.004, 1.2, f.radius}
                          : near         ? Kind{f.paint, 8, 3, 4, 1, false, 3, 10, 3, 9, 0.007, 1.3, f.radius}
                                         : Kind{f.paint, 6, 3, 3, 0, false, 2, 8, 2, 6, 0.010, 1.0, f.radius};
        const Lightwards light = {f.lightwards, 0.1};
        swarm.push_back(shapeOf({kind, f.radius, f.middle}, {light, light, light, light}));
    }
    swarm.push_back(lit(plankton(), evenly));
    writeAml(path,
             {joined({lit(blindfold(), evenly), seen(joined(swarm))}), shaded(rising(water()), waterwards)});
}
