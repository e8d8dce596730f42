#include "production/kit/model/mapping.h"

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

void mapFlat(const Shape& shape, Face& face, Axis axis, double unitsPerRepeat) {
    const double facing = axisLast(faceNormal(shape, face), axis).z < 0 ? -1 : 1;
    for (size_t i = 0; i < face.points.size(); i++) {
        const Vec p = axisLast(shape.points[face.points[i]], axis);
        face.uvs[i] = {facing * p.x / unitsPerRepeat, -p.y / unitsPerRepeat};
    }
}

}  // namespace

Shape mappedBox(Shape shape, double unitsPerRepeat) {
    for (Face& face : shape.faces) mapFlat(shape, face, nearestAxis(faceNormal(shape, face)), unitsPerRepeat);
    return shape;
}

Shape mappedCylinder(Shape shape, int repeats, double unitsPerRepeat) {
    for (Face& face : shape.faces) {
        const Vec normal = faceNormal(shape, face), centre = faceCentre(shape, face);
        if (std::abs(normal.y) > 0.8) {
            mapFlat(shape, face, Axis::y, unitsPerRepeat);
            continue;
        }
        const double middle = std::atan2(-centre.z, centre.x);
        const double facing = normal.x * centre.x + normal.z * centre.z < 0 ? -1 : 1;
        for (size_t i = 0; i < face.points.size(); i++) {
            const Vec p = shape.points[face.points[i]];
            // A corner on the axis has no angle of its own and takes its face's.
            const bool pole = std::hypot(p.x, p.z) < 1e-6;
            const double away = pole ? 0 : std::remainder(std::atan2(-p.z, p.x) - middle, 2 * pi);
            face.uvs[i] = {facing * (middle + away) / (2 * pi) * repeats, -p.y / unitsPerRepeat};
        }
    }
    return shape;
}

Shape mappedBy(Shape shape, const std::function<Uv(const Face& face, Vec point)>& place) {
    for (Face& face : shape.faces)
        for (size_t i = 0; i < face.points.size(); i++)
            face.uvs[i] = place(face, shape.points[face.points[i]]);
    return shape;
}

Shape painted(Shape shape, const Patch& patch) {
    for (Face& face : shape.faces)
        for (Uv& uv : face.uvs) uv = patch.at(uv.x, uv.y);
    return shape;
}

Shape painted(Shape shape, Uv place) {
    for (Face& face : shape.faces)
        for (Uv& uv : face.uvs) uv = place;
    return shape;
}

}  // namespace model
