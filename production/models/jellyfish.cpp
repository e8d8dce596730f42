// The figure of the stripes: a sea in which jellyfish swim, closed round the far viewer, who stands 224 from
// its middle. However it turns, its up stays half a right angle off the viewer's.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/models.h"
#include "production/models/paints.h"

using namespace model;

namespace {

// A jellyfish: its paint, how finely it is cut, how thick its bell and its threads are, and its pose: how far
// that is drawn together (0 to 1), and where its swing is.
struct Kind {
    int paint;
    int sides, steps;
    int threads, arms;
    double thickness, thread;
    double drawn, swing;
};
constexpr int lobes = 8;

// The bell's outside from its rim to its top, radius and height.
const Outline profile = {{54, 16}, {60, 20}, {64, 30}, {64, 43}, {58, 58},
                         {47, 71}, {32, 81}, {16, 86}, {0, 87}};

Outline profileOf(const Kind& kind, double inwards) {
    std::vector<Vec> points;
    for (size_t i = 0; i<profile.size(); i += inwards> 0 ? 2 : 1) {
        const Flat& p = profile[i];
        const double rim = smoothstep(60.0, 16.0, p.y);
        const double radius = p.x * mix(1.12, 1 - 0.34 * rim, kind.drawn),
                     height = p.y * mix(0.86, 1.14, kind.drawn);
        // The inside ends above the outside's lip.
        const double below = mix(-1.0, 1.0, smoothstep(18.0, 34.0, p.y));
        points.push_back({radius * (1 - inwards / 60), height - inwards * below, 0});
    }
    Outline curve;
    for (const Vec& p : curveThrough(points, false, kind.steps)) curve.push_back({p.x, p.y});
    return curve;
}

// An eighth of the bell is painted; the others mirror it.
Shape bell(const Kind& kind, double inwards) {
    const Outline curve = profileOf(kind, inwards);
    Shape shape = grid(kind.sides, int(curve.size()), true, false, [&](int c, int r) {
        const double angle = 2 * pi * c / kind.sides, lobe = std::cos(angle * lobes);
        const double radius = curve[r].x * (1 + 0.03 * smoothstep(66.0, 20.0, curve[r].y) * lobe);
        return Vec{radius * std::cos(angle), curve[r].y - 3.5 * smoothstep(42.0, 16.0, curve[r].y) * lobe,
                   -radius * std::sin(angle)};
    });
    for (Face& face : shape.faces)
        for (Uv& uv : face.uvs) {
            const double turn = uv.x * 8;
            uv = hull::bell(kind.paint).at(std::fabs(turn - 2 * std::round(turn / 2)), uv.y);
        }
    return smoothed(shape, pi);
}

// A thread from the rim.
Shape thread(const Kind& kind, double angle, double length, double phase) {
    const int steps = kind.steps > 1 ? 9 : 7;
    Sweep how;
    std::vector<Vec> points;
    const double c = std::cos(angle), s = std::sin(angle), rim = mix(60.0, 40.0, kind.drawn);
    for (int i = 0; i <= steps; i++) {
        const double k = double(i) / steps, out = rim * (1 - 0.45 * k) + 9 * std::sin(phase + 6 * k) * k,
                     aside = 9 * k * std::cos(1.7 * phase + 5 * k);
        points.push_back({out * c - aside * s, 19 - length * k, -out * s - aside * c});
    }
    how.path = curveThrough(points, false, std::max(1, kind.steps - 1));
    how.capped = false;
    how.change = [&](int i, const Outline& outline) {
        Outline thin = outline;
        const double k = double(i) / double(how.path.size() - 1);
        for (Flat& p : thin) p = p * mix(1.0, 0.4, k);
        return thin;
    };
    return painted(smoothed(sweep(polygon(3, kind.thread), how), pi), hull::frill(kind.paint).at(0.95, 0.5));
}

// An arm about the mouth: a frilled ribbon.
Shape arm(const Kind& kind, double angle, double length) {
    const int steps = 8 * kind.steps, across = kind.steps > 1 ? 5 : 3;
    std::vector<Shape> sheets;
    for (const double side : {0.4, -0.4}) {
        Shape sheet = grid(across, steps, false, false, [&](int c, int r) {
            const double k = double(r) / (steps - 1), w = 2.0 * c / (across - 1) - 1;
            const double width = 13 * std::sin(pi * mix(0.16, 1.0, k)) + 1,
                         out = 7 + 7 * std::sin(2.6 * k + 0.3) + 6 * k * std::sin(4 * k + kind.swing);
            const double frill = 4.2 * w * w * std::sin(19 * k + (w > 0 ? 0 : 2)) * smoothstep(1.0, 0.7, k);
            const double x = out + frill + side, z = w * width + 5 * k * std::cos(5 * k + kind.swing);
            return Vec{x * std::cos(angle) + z * std::sin(angle), 62 - length * k,
                       -x * std::sin(angle) + z * std::cos(angle)};
        });
        for (Face& face : sheet.faces)
            for (Uv& uv : face.uvs) uv = hull::frill(kind.paint).at(std::fabs(2 * uv.x - 1), uv.y);
        sheets.push_back(smoothed(side > 0 ? sheet : insideOut(sheet), pi));
    }
    return joined(sheets);
}

Shape jellyfish(const Kind& kind) {
    std::vector<Shape> all = {bell(kind, 0), insideOut(bell(kind, kind.thickness))};
    for (int i = 0; i < kind.threads; i++)
        all.push_back(thread(kind, 2 * pi * (i + 0.5) / kind.threads,
                             104 + 24 * std::sin(i * 2.4 + kind.swing), i * 1.9 + kind.swing));
    for (int i = 0; i < kind.arms; i++)
        all.push_back(arm(kind, 2 * pi * (i + 0.5) / kind.arms, 128 + 12 * (i % 2)));
    return joined(all);
}

// A number of 0..1 for each of a row of things.
double randomOf(int which, int what) {
    return fraction(std::sin(which * 12.9898 + what * 78.233) * 43758.5453);
}

// A place between two distances from the middle.
Vec placeOf(int which, double nearest, double farthest) {
    // Evenly round the ball: the golden spiral, shaken.
    const double y = 1 - 2 * fraction(which * 0.6180339887 + 0.1 * randomOf(which, 1)),
                 angle = 2.39996323 * which + 0.5 * randomOf(which, 2), flat = std::sqrt(1 - y * y);
    return Vec{flat * std::cos(angle), y, flat * std::sin(angle)} *
           mix(nearest, farthest, randomOf(which, 3));
}

// Jellyfish all round the middle, between two distances from it.
struct Swarm {
    int count, first;
    double nearest, farthest;
    double smallest, largest;
    std::vector<int> paints;
    double fine;  // the size from which one is cut finely
    Kind kind;    // but for its paint and its pose
};

// None where the viewer passes; those beyond him are blue with distance.
const Swarm swarms[] = {
    {11, 0, 95, 165, 0.20, 0.44, {1, 2, 3, 4}, 0.26, {0, 24, 1, 6, 2, 3, 1.7, 0, 0}},
    {16, 638, 330, 560, 0.6, 1.4, {1, 2, 4}, 1.05, {0, 24, 1, 5, 2, 3, 2.2, 0, 0}},
};

Shape swarm(const Swarm& swarm) {
    std::vector<Shape> all;
    for (int i = swarm.first; i < swarm.first + swarm.count; i++) {
        const double size = mix(swarm.smallest, swarm.largest, std::pow(randomOf(i, 4), 2));
        Kind kind = swarm.kind;
        kind.paint = swarm.paints[size_t(i) % swarm.paints.size()];
        if (size > swarm.fine) kind.sides = 40, kind.steps = 2, kind.threads = 8, kind.thread = 1.3;
        kind.drawn = randomOf(i, 6), kind.swing = 6 * randomOf(i, 7);
        const Shape one = scaled(jellyfish(kind), {size, size, size});
        all.push_back(moved(
            turned(turned(one, Axis::x, 1.2 * (randomOf(i, 8) - 0.5)), Axis::z, 1.2 * (randomOf(i, 9) - 0.5)),
            placeOf(i, swarm.nearest, swarm.farthest)));
    }
    return joined(all);
}

// Points of light in the water.
Shape plankton() {
    std::vector<Shape> all;
    for (int i = 0; i < 60; i++) {
        const double size = mix(0.35, 1.1, randomOf(i, 11) * randomOf(i, 12));
        const Shape one = lathe({{0, -size}, {size, 0}, {0, size}}, 4);
        all.push_back(moved(painted(one, hull::frill(i % 5).at(0.95, 0.5)), placeOf(i + 7, 60, 175)));
    }
    return joined(all);
}

// How bright the water is in a direction, 0..1, and its hue, 0 petrol to 1 indigo.
Uv waterAt(Vec towards) {
    const double up = towards.y, angle = std::atan2(towards.z, towards.x);
    double shaft = 0;
    for (const double count : {5, 8, 13}) shaft += std::sin(count * angle + count * count + 1.5 * up);
    const double shafts = smoothstep(0.2, 2.2, shaft) * smoothstep(-0.6, 0.4, up) * smoothstep(1.0, 0.9, up);
    const double cloud =
        std::sin(3.1 * towards.x + 2 * up) * std::sin(2.7 * towards.z + 1) * std::sin(3.7 * up + towards.x);
    const double height = smoothstep(-0.7, 1.0, up);
    return {std::clamp(0.46 + 0.34 * height * height + 0.30 * shafts + 0.12 * cloud, 0.0, 1.0),
            std::clamp(0.45 - 0.7 * up + 0.5 * cloud, 0.0, 1.0)};
}

// So far away that the viewer's own way doesn't count.
Shape water() {
    constexpr int columns = 80, rows = 30;
    constexpr double radius = 6000;
    const Shape shell = insideOut(grid(columns, rows, true, false, [](int c, int r) {
        const double up = pi * (double(r) / (rows - 1) - 0.5), angle = 2 * pi * c / columns;
        return Vec{std::cos(up) * std::cos(angle), std::sin(up), -std::cos(up) * std::sin(angle)} * radius;
    }));
    return mappedBy(welded(shell, 1), [](const Face&, Vec point) {
        const Uv place = waterAt(normalized(point));
        return hull::water.at(place.x, 1 - place.y);
    });
}

// A field of vectors over directions: the same everywhere, and by how far each goes aside, up and ahead.
struct Field {
    Vec everywhere, aside, up, ahead;
};
Vec at(const Field& field, Vec towards) {
    const double half = std::sqrt(0.5);
    return field.everywhere + field.aside * towards.x + field.up * ((towards.y + towards.z) * half) +
           field.ahead * ((towards.y - towards.z) * half);
}

// Found by search over the viewer's way, which is the same each time: what is turned by these throws back
// dark parts of the sphere map and is lit well from wherever he sees it.
const Field bodies = {{0.56, -1.33, -2.00}, {-1.14, -0.06, -0.43}, {0.62, 1.31, 0.99}, {0.86, 0.09, 0.56}},
            sea = {{0.26, -0.60, -0.68}, {-0.08, -0.10, 0.10}, {0.12, -0.16, 0.04}, {0.09, 0.04, -0.01}};

}  // namespace

void makeJellyfish(const char* path) {
    const auto leaning = [](const Shape& upright) { return smoothed(turned(upright, Axis::x, pi / 4), pi); };
    const auto lit = [](Vec, Vec normal) {
        const Vec wanted = normalized(normal + at(bodies, normal));
        return wanted + normal * std::max(0.0, 0.06 - dot(wanted, normal));
    };
    const auto dark = [](Vec point, Vec normal) { return normal + at(sea, normalized(point)); };
    const auto far = [&](Vec point, Vec normal) {
        return normalized(lit(point, normal)) + dark(point, normalized(point) * -1);
    };
    const Shape hero = moved(jellyfish({0, 72, 3, 16, 4, 0.6, 1.5, 0.4, 0}), {0, 4, 0});
    writeAml(path,
             {shaded(leaning(scaled(hero, {0.8, 0.8, 0.8})), lit), shaded(leaning(swarm(swarms[0])), lit),
              shaded(leaning(swarm(swarms[1])), far), leaning(plankton()), shaded(leaning(water()), dark)});
}
