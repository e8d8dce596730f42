// The figure of the stripes: a jellyfish. Its bell and arms are solid in blue alone, which the scene's glow
// may fill without glare; what red its paint lets through the glow spreads as pink light around heart and
// threads.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/models.h"
#include "production/models/paints.h"

using namespace model;

namespace {

constexpr int lobes = 8, threads = 16, sides = 48;

// The bell's outside from its rim to its top, radius and height; its inside is so much within.
const Outline profile = {{54, 16}, {60, 20}, {64, 30}, {64, 43}, {58, 58},
                         {47, 71}, {32, 81}, {16, 86}, {0, 87}};
constexpr double thickness = 0.4;

Outline smoothProfile(double inwards) {
    std::vector<Vec> points;
    for (const Flat& p : profile) points.push_back({p.x * (1 - inwards / 60), p.y - inwards, 0});
    Outline curve;
    for (const Vec& p : curveThrough(points, false, 2)) curve.push_back({p.x, p.y});
    return curve;
}

Uv paintAt(double across, double along) {
    // Clear of what lies beside it in the picture.
    return hull::jellyfish.at(mix(0.015, 0.985, across), 1 - along);
}

// An eighth of the bell is painted; the others mirror or repeat it.
Shape shell(double inwards) {
    const Outline curve = smoothProfile(inwards);
    Shape shape = grid(sides, int(curve.size()), true, false, [&](int c, int r) {
        const double angle = 2 * pi * c / sides, lobe = std::cos(angle * lobes);
        const double radius = curve[r].x * (1 + 0.03 * smoothstep(66.0, 20.0, curve[r].y) * lobe);
        return Vec{radius * std::cos(angle), curve[r].y - 3.5 * smoothstep(42.0, 16.0, curve[r].y) * lobe,
                   -radius * std::sin(angle)};
    });
    for (Face& face : shape.faces)
        for (Uv& uv : face.uvs) {
            const double turn = uv.x * 8;
            uv = paintAt(std::fabs(turn - 2 * std::round(turn / 2)), 0.86 * (1 - uv.y));
        }
    return smoothed(shape, pi);
}

// A thread from the rim.
Shape thread(double angle, double length, double phase) {
    Sweep how;
    std::vector<Vec> points;
    const double c = std::cos(angle), s = std::sin(angle);
    for (int i = 0; i <= 7; i++) {
        const double k = i / 7.0, out = 56 - 24 * k + 7 * std::sin(phase + 6 * k) * k,
                     aside = 6 * k * std::cos(1.7 * phase + 5 * k);
        points.push_back({out * c - aside * s, 19 - length * k, -out * s - aside * c});
    }
    how.path = curveThrough(points, false, 2);
    how.change = [&](int i, const Outline& outline) {
        Outline thin = outline;
        const double k = double(i) / double(how.path.size() - 1);
        for (Flat& p : thin) p = p * mix(1.0, 0.6, k);
        return thin;
    };
    return painted(smoothed(sweep(polygon(3, 1.3), how), pi), paintAt(0.25, 0.97));
}

// An arm about the mouth: a frilled ribbon.
Shape arm(double angle, double length) {
    constexpr int steps = 24, across = 5;
    std::vector<Shape> sheets;
    for (const double side : {0.4, -0.4}) {
        Shape sheet = grid(across, steps, false, false, [&](int c, int r) {
            const double k = double(r) / (steps - 1), w = 2.0 * c / (across - 1) - 1;
            const double width = 11 * std::sin(pi * mix(0.16, 1.0, k)) + 1,
                         out = 7 + 7 * std::sin(2.6 * k + 0.3);
            const double frill = 3.4 * w * w * std::sin(19 * k + (w > 0 ? 0 : 2)) * smoothstep(1.0, 0.7, k);
            const double x = out + frill + side, z = w * width;
            return Vec{x * std::cos(angle) + z * std::sin(angle), 62 - length * k,
                       -x * std::sin(angle) + z * std::cos(angle)};
        });
        for (Face& face : sheet.faces)
            for (Uv& uv : face.uvs)
                uv = paintAt(mix(0.55, 0.95, std::fabs(2 * uv.x - 1)), mix(0.90, 0.99, uv.y));
        sheets.push_back(smoothed(side > 0 ? sheet : insideOut(sheet), pi));
    }
    return joined(sheets);
}

}  // namespace

void makeJellyfish(const char* path) {
    std::vector<Shape> all = {shell(0), insideOut(shell(thickness))};
    for (int i = 0; i < threads; i++)
        all.push_back(thread(2 * pi * (i + 0.5) / threads, 88 + 12 * std::sin(i * 2.4), i * 1.9));
    for (int i = 0; i < 4; i++) all.push_back(arm(2 * pi * (i + 0.5) / 4, 122 + 10 * (i % 2)));
    writeAml(path, {moved(joined(all), {0, -8, 0})});
}
