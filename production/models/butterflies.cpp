// The figure of the stripes: a butterfly among smaller ones, which circle as the scene turns them. Their
// wings are glass between black veins, and what little light they have themselves the scene's glow makes a
// halo of, which shines through the panes and shows everything else as outlines.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/models.h"
#include "production/models/paints.h"
#include "production/shared/wing.h"

using namespace model;

namespace {

// What the scene turns the figure about more than about anything else, clockwise for who looks along it; and
// where it is seen from, mostly.
constexpr Vec axis = {0, std::numbers::sqrt2 / 2, std::numbers::sqrt2 / 2};

// A wing has a front on either side, so far from its middle.
constexpr double halfThick = 0.35;
// From vein to vein it is pleated, so that each pane throws back another light.
constexpr double pleat = 0.7;

// One wing, spread to the right: a fan of panes from its shoulder to its outline.
Shape spreadWing(std::span<const wing::Place> outline, wing::Place shoulder) {
    constexpr int steps = 2;
    const std::vector<wing::Place> edge = wing::curved(outline, steps);
    const auto place = [&](int i) { return Vec{edge[i].x, edge[i].y, i / steps % 2 == 0 ? -pleat : pleat}; };
    std::vector<Shape> sides;
    for (const double side : {halfThick, -halfThick}) {
        Shape fan;
        for (int i = 0; i + 1 < int(edge.size()); i++) {
            const int first = int(fan.points.size());
            for (const Vec& p : {Vec{shoulder.x, shoulder.y, 0}, place(i), place(i + 1)})
                fan.points.push_back(p + Vec{0, 0, side});
            // The outline runs clockwise, seen from above.
            if (side > 0) {
                addFace(fan, {first, first + 2, first + 1});
            } else {
                addFace(fan, {first, first + 1, first + 2});
            }
        }
        sides.push_back(fan);
    }
    return mappedBy(smoothed(joined(sides), hard), [](const Face&, Vec p) {
        return hull::glass.at(wing::Picture::across(p.x), wing::Picture::up(p.y));
    });
}

Shape feeler() {
    Sweep how;
    how.path = curveThrough({{0.5, 10.5, 0.5}, {3, 17, 3}, {7.5, 22, 4}}, false, 4);
    return smoothed(sweep(polygon(5, 0.5), how), pi);
}

// Its head along y and its back along z; `raised` is each wing's angle over the level, in degrees.
Shape butterfly(double raised) {
    const auto lifted = [](const Shape& spread, double angle) {
        return turned(spread, Axis::y, -degrees(angle));
    };
    const Shape wings = joined({lifted(spreadWing(wing::fore, wing::foreShoulder), raised),
                                lifted(spreadWing(wing::hind, wing::hindShoulder), raised - 5)});
    const Shape body = moved(scaled(icosphere(1, 2), {1.5, 9.5, 1.5}), {0, -1, 0});
    const Shape head = moved(icosphere(1.7, 1), {0, 9.5, 0.3});
    return joined(
        {withMirror(wings), painted(joined({withMirror(feeler()), smoothed(body, pi), head}), hull::neon)});
}

// Where one flies: its angle round the axis, how far from it and along it; how far its wings are raised, how
// far it leans inwards and climbs along the axis; and its size. Angles are in degrees.
struct Flight {
    double angle, away, along, raised, lean, climb, size;
};
// A large one and six small ones close about it, so that they share one halo. It lies where the scene turns
// its back or its belly to the camera for most of the time, and its wings reach over a third of the picture's
// breadth; all keep mostly out of sight of the scene's other camera, 40 from the middle, before which they
// would be black shadows on the tunnel.
constexpr Flight swarm[] = {
    {331, 26, -35, 22, -5, 87, 1.93}, {324, 82, 1, 32, 0, 33, 0.75},    {267, 0, 16, 18, -60, 77, 0.85},
    {115, 36, -41, 40, 49, 97, 0.7},  {178, 23, -76, 26, -74, 97, 0.8}, {31, 16, -79, 12, -80, 107, 0.75},
    {333, 74, -28, 36, -24, 87, 0.9},
};

Shape flying(const Flight& flight) {
    const Vec start = {1, 0, 0}, aside = cross(axis, start);
    const double angle = degrees(flight.angle), lean = degrees(flight.lean), climb = degrees(flight.climb);
    const Vec outwards = start * std::cos(angle) + aside * std::sin(angle);
    const Vec head = cross(outwards, axis) * std::cos(climb) + axis * std::sin(climb);
    const Vec level = normalized(head * dot(axis, head) - axis);
    const Vec back = level * std::cos(lean) - outwards * std::sin(lean), right = cross(head, back);
    return bent(butterfly(flight.raised), [&](Vec p) {
        return outwards * flight.away + axis * flight.along +
               (right * p.x + head * p.y + back * p.z) * flight.size;
    });
}

}  // namespace

void makeButterflies(const char* path) {
    std::vector<Shape> all;
    for (const Flight& flight : swarm) all.push_back(flying(flight));
    writeAml(path, {joined(all)});
}
