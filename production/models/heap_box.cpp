// The box of the heap: a beam of ivory lacquer over a jade soffit that rises like an eave towards one end,
// lit panes on its flanks, and a crimson shaft and counterweight, so that quarter turns change the stack's
// outline. A little under one storey (20 units) high, twenty of which lie across each other.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/kit/model/paints.h"
#include "production/models/figures.h"
#include "production/models/models.h"

using namespace model;

namespace {

constexpr Vec size = {110, 18.6, 45};

// The light circles far below the heap. What is to catch it wherever it stands faces down by `share` more
// than it does.
Shape litFromBelow(const Shape& shape, double share) {
    return shaded(shape, [=](Vec, Vec normal) { return normal - Vec{0, share, 0}; });
}

// A lacquer laid on along x, over the whole length of the box.
Shape lacquered(Shape shape, const Patch& lacquer) {
    for (Face& face : shape.faces) {
        face.uvs.clear();
        for (int point : face.points) {
            const Vec p = shape.points[point];
            face.uvs.push_back({mix(lacquer.low.s, lacquer.high.s, p.x / size.x + 0.5),
                                mix(lacquer.low.t, lacquer.high.t, 0.5 + p.z / size.z)});
        }
    }
    return shape;
}

// The faces that look down, or all others.
Shape ofSoffit(const Shape& shape, bool down) {
    Shape part = shape;
    part.faces.clear();
    for (const Face& face : shape.faces)
        if ((faceNormal(shape, face).y < -0.3) == down) part.faces.push_back(face);
    return part;
}

Shape strip(Vec corner, Vec along, Vec up) {
    return grid(2, 2, false, false, [=](int c, int r) { return corner + along * c + up * r; });
}

Shape beam() {
    const Outline side = {{-31, -5}, {24, -5}, {55, 3.4}, {55, 8.6}, {-34, 8.6}, {-34, -1}};
    return moved(extrude(side, size.z, 1.2), {0, 0, -size.z / 2});
}

Shape shaftAndWeight() {
    return joined({box({36, size.y, 36}, 1.5), moved(box({11, 9, 30}, 1.2), {-49.4, 3.5, 0}),
                   moved(box({14, 4, 14}, 0.8), {-39, 4, 0})});
}

// Lamps: eight panes on either flank, four on each side of the shaft below the beam, and a strip on the end.
Shape flankPanes() {
    const double out = size.z / 2 + 0.15;
    return joined(
        {strip({-22, -2.6, out}, {58, 0, 0}, {0, 7, 0}), strip({36, -2.6, -out}, {-58, 0, 0}, {0, 7, 0})});
}

Shape shaftPanes() {
    return around(strip({-15, -8.9, 18.15}, {30, 0, 0}, {0, 3.4, 0}), 4, Axis::y);
}

Shape endLamp() {
    return strip({55.15, 4.6, 19}, {0, 0, -38}, {0, 2.8, 0});
}

}  // namespace

Shape figures::heapBox() {
    return joined({beam(), shaftAndWeight()});
}

void makeHeapBox(const char* path) {
    constexpr double lamps = 1.8, lacquer = 0.4;
    // A breath of a curve, so that a light crosses a wall instead of filling it at once.
    const Shape walls = shaded(ofSoffit(beam(), false), [](Vec p, Vec normal) {
        return normal.y > 0.5 ? normal : normal + Vec{0.6 * p.x / 55, -0.2, 0.25 * p.z / 22};
    });
    const Shape soffit = shaded(ofSoffit(beam(), true), [](Vec p, Vec normal) {
        return normal + Vec{0.3 * p.x / 55, 0, 0.2 * p.z / 22};
    });
    writeAml(path, {lacquered(walls, hull::ivory), lacquered(soffit, hull::jade),
                    lacquered(litFromBelow(shaftAndWeight(), lacquer), hull::crimson),
                    litFromBelow(painted(flankPanes(), hull::flankPanes), lamps),
                    litFromBelow(painted(shaftPanes(), hull::shaftPanes), lamps),
                    litFromBelow(painted(endLamp(), hull::warmLamp), lamps)});
}
