// The figure that is cut to stripes: a sun with a face, an open mask in a wreath of rays. The glow that the
// scene makes of it lies behind it and burns through its eyes, its smile and the cuts.
#include <map>

#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/kit/model/paints.h"
#include "production/models/models.h"
#include "production/sun_layout.h"

using namespace model;

namespace {

// Made with its face to z and y up. Laid so, the tumble that the scene gives it keeps its face to the viewer,
// and upright within 50 degrees, for three quarters of the time.
constexpr Vec upInTumble = {0.084, 0.792, 0.604}, faceInTumble = {0.778, 0.327, -0.537};

double bump(double away, double width) {
    return std::exp(-away * away / (width * width));
}

// Of the mask over the plane of its rim: a dome with nose, cheeks, lips and chin.
double relief(double x, double y) {
    const double side = std::fabs(x), away = std::hypot(x, y) / sun::radius;
    const double ridge = bump(x, mix(4.5, 8, std::clamp((14 - y) / 22, 0.0, 1.0)));
    const double nose = ridge * std::clamp((22 - y) / 28, 0.0, 1.0) * std::clamp((y + 12) / 4, 0.0, 1.0);
    return 22 * (1 - away * away) + 15 * nose + 8 * bump(std::hypot(side - 29, y + 12), 13) +
           6 * bump(sun::toMouth(x, y), 4) + 6 * bump(std::hypot(x, y + 43), 9);
}

// What of a sheet lies where `keep` is not negative, its edge drawn where `keep` crosses zero.
Shape cutOut(const Shape& sheet, const std::function<double(Vec)>& keep) {
    Shape rest{sheet.points, {}};
    std::vector<double> value;
    for (Vec point : sheet.points) value.push_back(keep(point));
    std::map<std::pair<int, int>, int> crossings;
    const auto crossing = [&](int a, int b) {
        const auto [place, isNew] = crossings.try_emplace(std::minmax(a, b), int(rest.points.size()));
        if (isNew)
            rest.points.push_back(mix(sheet.points[a], sheet.points[b], value[a] / (value[a] - value[b])));
        return place->second;
    };
    for (const Face& face : triangulated(sheet).faces) {
        std::vector<int> left;
        for (int corner = 0; corner < 3; corner++) {
            const int a = face.points[corner], b = face.points[(corner + 1) % 3];
            if (value[a] >= 0) left.push_back(a);
            if ((value[a] < 0) != (value[b] < 0)) left.push_back(crossing(a, b));
        }
        if (left.size() >= 3) addFace(rest, left);
    }
    return rest;
}

// Both halves of the mask show the same drawing, mirrored.
Shape skinned(Shape mask) {
    const Patch& skin = hull::sunFace;
    for (Face& face : mask.faces)
        for (size_t i = 0; i < face.points.size(); i++) {
            const Vec at = mask.points[face.points[i]];
            face.uvs[i] = {mix(skin.low.s, skin.high.s, std::fabs(at.x) / sun::radius),
                           mix(skin.low.t, skin.high.t, (at.y / sun::radius + 1) / 2)};
        }
    return mask;
}

Shape mask() {
    constexpr int cells = 28;  // even, as the mirrored drawing needs an edge in the middle
    constexpr double reach = sun::radius + 2;
    const Shape sheet = grid(cells + 1, cells + 1, false, false, [](int column, int row) {
        return Vec{mix(-reach, reach, double(column) / cells), mix(-reach, reach, double(row) / cells), 0};
    });
    const Shape flat = cutOut(sheet, [](Vec p) {
        return std::min({sun::radius - std::hypot(p.x, p.y), sun::toEye(p.x, p.y), sun::toMouth(p.x, p.y)});
    });
    return smoothed(bent(skinned(flat), [](Vec p) { return Vec{p.x, p.y, relief(p.x, p.y)}; }), pi);
}

// Turns back from the mask's edge, so that it is no thin plate when it is seen edge on.
Shape rim() {
    constexpr int sides = 48;
    constexpr double depth = 14, slope = 5;
    const Shape band = lathe({{sun::radius - slope, -depth}, {sun::radius, 0}}, sides);
    return turned(smoothed(band, pi), Axis::x, pi / 2);
}

struct Ray {
    double tip, halfWidth;  // units: the tip's from the sun's middle, the width at the rim
    double wave, lean;      // units: how far it winds to its sides, and how far its tip leans to z
};

// From the rim outwards along y: a roof of two slopes that tapers.
Shape ray(const Ray& how) {
    constexpr int steps = 7;
    const Shape roof = grid(3, steps + 1, false, false, [&](int column, int row) {
        const double along = double(row) / steps, width = how.halfWidth * (1 - along) * (1 + 0.5 * along);
        const double sway = how.wave * std::sin(2 * pi * along) * (1 - 0.5 * along);
        return Vec{sway + (column - 1) * width, mix(sun::radius - 3, how.tip, along),
                   how.lean * along * along + (column == 1 ? 0.6 * width : 0)};
    });
    return smoothed(roof, hard);
}

// Straight ones lean back, flames forward, so that the sun is a crown when it is seen edge on.
Shape rays() {
    constexpr int pairs = 6;
    const Shape straight = ray({100, 17, 0, -20}), flame = ray({90, 11, 6, 20});
    return joined(
        {around(straight, pairs, Axis::z), turned(around(flame, pairs, Axis::z), Axis::z, pi / pairs)});
}

// Turned as the tumble wants it, and lit: the scene's light, left by the ship's last view, comes from far
// below, so all faces down by `share` more than it does.
Shape inTumble(const Shape& shape, double share) {
    const Vec up = normalized(upInTumble), face = normalized(faceInTumble - up * dot(faceInTumble, up));
    const Vec right = cross(up, face);
    return shaded(bent(shape, [&](Vec p) { return right * p.x + up * p.y + face * p.z; }),
                  [&](Vec, Vec normal) { return normal - up * share; });
}

}  // namespace

void makeSun(const char* path) {
    // The inside is a sheet of its own, a little behind, as the light from below has to reach both.
    constexpr double thickness = 2.5;
    const Shape front = mask(), inside = insideOut(moved(front, {0, 0, -thickness}));
    const Shape wreath = painted(joined({rim(), rays()}), hull::flame);
    writeAml(path, {inTumble(front, 1.6), inTumble(inside, 1.6), inTumble(wreath, 0.7)});
}
