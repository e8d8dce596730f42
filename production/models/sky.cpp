// The sky, seen from inside. Its picture is the whole ball folded into a square: an octahedron whose lower
// half is turned up over the edges, with the zenith in the middle and the nadir in the four corners, so that
// nothing is pinched and nothing is seen twice.
#include "production/kit/model/aml.h"
#include "production/models/models.h"

using namespace model;

namespace {

constexpr double radius = 2400;
constexpr int pieces = 14;           // along an edge of the octahedron
constexpr double edge = 1.5 / 1024;  // kept clear, since the picture's opposite edges are no neighbours

// Of a place on the octahedron |x| + |y| + |z| = 1, in the eighth that the three signs name.
Uv folded(Vec p, Vec signs) {
    const double u = signs.y > 0 ? p.x : (1 - std::abs(p.z)) * signs.x;
    const double v = signs.y > 0 ? p.z : (1 - std::abs(p.x)) * signs.z;
    return {0.5 + u * (0.5 - edge), 0.5 - v * (0.5 - edge)};
}

void addEighth(Shape& sky, Vec signs) {
    const auto corner = [&](int i, int k) {
        const double a = double(i) / pieces, b = double(k) / pieces;
        return Vec{signs.x * a, signs.y * (1 - a - b), signs.z * b};
    };
    const bool turned = signs.x * signs.y * signs.z > 0;
    const auto add = [&](Vec a, Vec b, Vec c) {
        if (turned) std::swap(b, c);
        const int first = int(sky.points.size());
        for (Vec p : {a, b, c}) sky.points.push_back(normalized(p) * radius);
        addFace(sky, {first, first + 1, first + 2}, {folded(a, signs), folded(b, signs), folded(c, signs)});
    };
    for (int i = 0; i < pieces; i++) {
        for (int k = 0; i + k < pieces; k++) {
            add(corner(i, k), corner(i, k + 1), corner(i + 1, k));
            if (i + k + 1 < pieces) add(corner(i + 1, k), corner(i, k + 1), corner(i + 1, k + 1));
        }
    }
}

}  // namespace

void makeSky(const char* path) {
    Shape sky;
    for (double x : {1, -1})
        for (double y : {1, -1})
            for (double z : {1, -1}) addEighth(sky, {x, y, z});
    writeAml(path, {welded(sky)});
}
