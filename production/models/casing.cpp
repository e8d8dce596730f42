// The casing round the robot's lower part, which sinks with the light: a bud of twelve slim petals that lets
// its guest be seen. The program squeezes it in height, so it opens like a flower that is pressed flat.
#include "effects/fitting.h"
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/models.h"

using namespace model;

namespace {

constexpr int petals = 12;
constexpr double height = fitting::pedestalHeight;

// Along +x: bellied low down, its point turned in over the edge. A keel runs along its back.
Shape petal() {
    Sweep how;
    how.path = curveThrough(
        {{50.5, 0, 0}, {54.6, 14, 0}, {57, 34, 0}, {56, 56, 0}, {52, 78, 0}, {47.6, height, 0}}, false, 5);
    how.up = {1, 0, 0};
    const double last = double(how.path.size() - 1);
    how.change = [=](int step, Outline leaf) {
        const double k = step / last;
        const double broad = 1.5 * std::sqrt(std::max(0.0, 1 - k * k)) * (0.72 + 0.5 * k) + 0.25;
        for (Flat& p : leaf) p = {p.x * broad, p.y * mix(1.3, 0.3, k)};
        return leaf;
    };
    const Outline leaf = {{-1, 0}, {-0.8, -0.5}, {0, -0.8}, {0.8, -0.5},
                          {1, 0},  {0.35, 0.45}, {0, 1.1},  {-0.35, 0.45}};
    return sweep(leaf, how);
}

// What the petals stand in.
Shape cup() {
    return lathe(
        {{47, 2.4}, {55, 2.4}, {55.8, 3}, {55, 3.6}, {47.5, 3.6}, {46.4, 3.2}, {46.4, 2.7}, {47, 2.4}}, 72);
}

Shape stud() {
    return moved(lathe({{1.5, 0}, {1.5, 1}, {1, 1.8}, {0, 2}}, 10), {51, 3.4, 0});
}

}  // namespace

void makeCasing(const char* path) {
    const Shape leaves = around(petal(), petals);
    // Exactly between the ground and the height that the program scales by.
    const Shape level = bent(leaves, [](Vec p) { return Vec{p.x, std::clamp(p.y, 0.0, height), p.z}; });
    const Shape studs = turned(around(stud(), petals), Axis::y, pi / petals);
    writeAml(path, {mappedCylinder(joined({level, cup(), studs}), 6, 48)});
}
