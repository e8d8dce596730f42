// The box of the heap: a house of one storey, a little under 20 units high, twenty of which lie across each
// other. A wide floor reaches out far beyond its rooms, with a garden at each end. What a viewer from below
// sees most of is its underside, painted like a lantern's.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/figures.h"
#include "production/models/models.h"
#include "production/models/paints.h"
#include "production/shared/house.h"

using namespace model;
using namespace house;

namespace {

constexpr double floorTop = slab - halfHeight;
constexpr double trunkDepth = 130;

// The light circles far below the heap. What is to catch it wherever it stands faces down more than it does,
// and so far that it seldom throws back the comet.
Shape litFromBelow(const Shape& shape) {
    return shaded(shape, [](Vec, Vec normal) { return normal - Vec{0, 2, 0}; });
}

// Front where `along` points to the right and `up` upwards.
Shape sheet(Vec corner, Vec along, Vec up) {
    return grid(2, 2, false, false, [=](int c, int r) { return corner + along * c + up * r; });
}

// The floor's outline, counter-clockwise from above.
constexpr int sides = 2 * ends * corners;
Vec atOutline(int i, double y) {
    constexpr int each = sides / ends;
    const int end = i / each % ends, k = i % each;
    const bool beyond = k >= corners;
    const auto& [along, aside] = outline[end][beyond ? each - 1 - k : k];
    const double to = end == 0 ? 1 : -1;
    return {to * along, y, to * (beyond ? -aside : aside)};
}

Shape floorTopFace() {
    Shape shape;
    std::vector<int> round;
    for (int i = 0; i < sides; i++) {
        shape.points.push_back(atOutline(i, floorTop));
        round.push_back(i);
    }
    addFace(shape, round);
    return shape;
}

// The slab's edges, whose lines of light draw every storey.
Shape edges() {
    constexpr double longest = 2 * halfLength;
    std::vector<Shape> all;
    for (int i = 0; i < sides; i++) {
        const Vec from = atOutline(i, -halfHeight), along = atOutline(i + 1, -halfHeight) - from;
        const Patch whole = hull::edge(along.z == 0 ? 0 : along.x == 0 ? 1 : 2);
        all.push_back(
            painted(sheet(from, along, {0, slab, 0}), {whole.low, whole.at(length(along) / longest, 1)}));
    }
    return joined(all);
}

// Under the floor, looking outwards just so much that what it throws back is dark: less, and it is the glow
// beyond the heap; more, and it is the comet.
Shape soffit() {
    constexpr double tilt = 0.085, y = -halfHeight;
    std::vector<Shape> all;
    for (int end = 0; end < ends; end++)
        for (const double side : {1.0, -1.0}) {
            const double to = end == 0 ? 1 : -1;
            const auto flat = [&](const std::vector<Place>& round) {
                Shape shape;
                std::vector<int> corners;
                for (const auto& [along, aside] : round) {
                    corners.push_back(int(shape.points.size()));
                    shape.points.push_back({to * along, y, side * aside});
                }
                addFace(shape, corners);
                return to * side > 0 ? shape : insideOut(shape);
            };
            const auto& [first, second, last] = outline[end];
            const Shape half = joined(
                {flat({{0, 0}, {paintedFrom, 0}, {paintedFrom, halfWidth}, {0, halfWidth}}),
                 flat({{paintedFrom, 0}, {halfLength, 0}, last, second, first, {paintedFrom, halfWidth}})});
            all.push_back(mappedBy(half, [=](const Face&, Vec p) {
                const double along = std::max(0.0, std::fabs(p.x) - paintedFrom);
                return hull::soffit(end).at(along / (halfLength - paintedFrom), std::fabs(p.z) / halfWidth);
            }));
        }
    Shape lit = triangulated(joined(all));
    for (Face& face : lit.faces) {
        const Vec middle = faceCentre(lit, face);
        face.normals.assign(3, normalized(Vec{middle.x > 0 ? tilt : -tilt, -1, 0}));
    }
    return lit;
}

Shape core() {
    return moved(box({2 * glassLength, roomHeight, 2 * glassWidth}, 0), {0, slab / 2, 0});
}

// A stretch of rooms, each behind a pane that leans and bulges in its own way. Most face down so far that
// they are lit wherever the light circles below; the others so little that they throw nothing back. Between
// the two lies the comet. `along` is of length 1.
Shape stretch(Vec from, Vec along, int number) {
    constexpr struct {
        double aside, down;
    } leanings[] = {{0, 2.0}, {0.25, 1.8}, {-0.1, 0.45}, {0.12, 2.1}, {0.1, 0.45}};
    constexpr double bulge = 0.2;
    const double breadth = lengthOf(number);
    const Patch rooms = patchOf(atlas::hull::rooms[number]);
    std::vector<Shape> all;
    double left = 0;
    for (int i = 0; i < mostRooms && shares[number][i] > 0; i++) {
        const double right = left + shares[number][i];
        const Vec corner = from + along * (left * breadth), step = along * ((right - left) * breadth);
        const Vec middle = corner + step * 0.5;
        const auto& [aside, down] = leanings[(i + number) % 5];
        const Shape pane =
            painted(sheet(corner, step, {0, roomHeight, 0}), {rooms.at(left, 0), rooms.at(right, 1)});
        all.push_back(shaded(pane, [&](Vec p, Vec normal) {
            const Vec off = {p.x - middle.x, 0, p.z - middle.z};
            return normal + off * (bulge / length(step)) + along * aside - Vec{0, down, 0};
        }));
        left = right;
    }
    return joined(all);
}

Shape glass() {
    constexpr double out = 0.3;
    return joined({stretch({-glassLength, floorTop, glassWidth + out}, {1, 0, 0}, 0),
                   stretch({glassLength, floorTop, -glassWidth - out}, {-1, 0, 0}, 1),
                   stretch({glassLength + out, floorTop, glassWidth}, {0, 0, -1}, 2),
                   stretch({-glassLength - out, floorTop, -glassWidth}, {0, 0, 1}, 3)});
}

// Cypresses in ragged tiers.
Shape cypress(double size, int seed) {
    std::vector<Shape> tiers;
    for (int i = 0; i < 4; i++) {
        const double r = size * (0.9 - 0.17 * i), y = size * 0.95 * i;
        tiers.push_back(
            moved(turned(lathe({{r, 0}, {0.25 * r, 1.5 * size}, {0, 1.9 * size}}, 5), Axis::y, seed + i),
                  {0, y, 0}));
    }
    return joined(tiers);
}
Shape garden() {
    constexpr struct {
        double x, z, size;
    } trees[] = {{76, -27, 3.0}, {84, -14, 2.4}, {86, 5, 3.2},   {79, 20, 2.6},  {72, 30, 2.2},
                 {-82, 26, 3.0}, {-85, 6, 2.4},  {-85, -4, 3.2}, {-80, -30, 2.7}};
    std::vector<Shape> all;
    for (const auto& [x, z, size] : trees) all.push_back(moved(cypress(size, int(x + z)), {x, floorTop, z}));
    return joined(all);
}

// What carries all, which the storeys hide but below the lowest.
Shape trunk() {
    return lathe({{11, -trunkDepth}, {11, -70}, {14, -40}, {21, -22}, {33, -halfHeight}}, 16);
}
Shape rings() {
    std::vector<Shape> all;
    for (const Flat at : {Flat{11.4, -112}, {11.4, -92}, {11.4, -72}, {14.8, -41}, {22, -23}})
        all.push_back(lathe({at, at + Flat{0, 2}}, 16));
    return joined(all);
}

}  // namespace

Shape figures::heapBox() {
    return joined({edges(), floorTopFace(), soffit(), core()});
}

void makeHeapBox(const char* path) {
    const Shape dark = painted(joined({floorTopFace(), core()}), hull::shade);
    const Shape lit = joined({painted(garden(), hull::leaves), painted(trunk(), hull::dark), edges(),
                              painted(rings(), hull::warmLamp)});
    writeAml(path, {dark, soffit(), glass(), litFromBelow(lit)});
}
