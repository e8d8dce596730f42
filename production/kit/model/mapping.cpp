#include "production/kit/model/mapping.h"

#include <algorithm>
#include <utility>

namespace model {
namespace {

// The shape's axes renamed so that the wanted one comes last, still right-handed.
Vec axisLast(Vec p, Axis axis) {
    if (axis == Axis::x) return {-p.z, p.y, p.x};
    if (axis == Axis::y) return {p.x, -p.z, p.y};
    return p;
}

Axis nearestAxis(Vec normal) {
    const double x = std::abs(normal.x), y = std::abs(normal.y), z = std::abs(normal.z);
    // Ties within rounding go to the earlier axis, so that mirrored faces agree.
    if (x >= y - 1e-6 && x >= z - 1e-6) return Axis::x;
    return y >= z - 1e-6 ? Axis::y : Axis::z;
}

void mapFlat(const Shape& shape, Face& face, Axis axis, double unitsPerRepeat, Uv offset) {
    const double facing = axisLast(faceNormal(shape, face), axis).z < 0 ? -1 : 1;
    for (size_t i = 0; i < face.points.size(); i++) {
        const Vec p = axisLast(shape.points[face.points[i]], axis);
        face.uvs[i] = Uv{facing * p.x / unitsPerRepeat, -p.y / unitsPerRepeat} + offset;
    }
}

}  // namespace

Shape mappedBox(Shape shape, double unitsPerRepeat, Uv offset) {
    for (Face& face : shape.faces)
        mapFlat(shape, face, nearestAxis(faceNormal(shape, face)), unitsPerRepeat, offset);
    return shape;
}

Shape mappedPlanar(Shape shape, Axis axis, double unitsPerRepeat, Uv offset) {
    for (Face& face : shape.faces) mapFlat(shape, face, axis, unitsPerRepeat, offset);
    return shape;
}

Shape mappedCylinder(Shape shape, Axis axis, int repeats, double unitsPerRepeat) {
    for (Face& face : shape.faces) {
        if (std::abs(axisLast(faceNormal(shape, face), axis).z) > 0.8) {
            mapFlat(shape, face, axis, unitsPerRepeat, {});
            continue;
        }
        const Vec centre = axisLast(faceCentre(shape, face), axis);
        const double middle = std::atan2(centre.y, centre.x);
        const Vec normal = axisLast(faceNormal(shape, face), axis);
        const double facing = normal.x * centre.x + normal.y * centre.y < 0 ? -1 : 1;
        for (size_t i = 0; i < face.points.size(); i++) {
            const Vec p = axisLast(shape.points[face.points[i]], axis);
            // A corner on the axis has no angle of its own and takes its face's.
            const bool pole = std::hypot(p.x, p.y) < 1e-6;
            const double away = pole ? 0 : std::remainder(std::atan2(p.y, p.x) - middle, 2 * pi);
            face.uvs[i] = {facing * (middle + away) / (2 * pi) * repeats, -p.z / unitsPerRepeat};
        }
    }
    return shape;
}

Shape mappedEach(Shape shape, const Patch& patch) {
    const auto& [low, high] = patch;
    for (Face& face : shape.faces) {
        if (face.points.size() == 4)
            face.uvs = {low, {high.s, low.t}, high, {low.s, high.t}};
        else if (face.points.size() == 3)
            face.uvs = {low, {high.s, low.t}, {(low.s + high.s) / 2, high.t}};
    }
    return shape;
}

Shape painted(Shape shape, const Patch& patch) {
    for (Face& face : shape.faces)
        for (Uv& uv : face.uvs)
            uv = {mix(patch.low.s, patch.high.s, uv.s), mix(patch.low.t, patch.high.t, uv.t)};
    return shape;
}

Shape painted(Shape shape, Uv place) {
    for (Face& face : shape.faces)
        for (Uv& uv : face.uvs) uv = place;
    return shape;
}

Shape uvScaled(Shape shape, double s, double t) {
    for (Face& face : shape.faces)
        for (Uv& uv : face.uvs) uv = {uv.s * s, uv.t * t};
    return shape;
}

}  // namespace model
