#include "production/kit/model/aml.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "geometry/aml_writer.h"

namespace model {
namespace {

// The normal of each corner: the face's own and those of the faces around the point that bend away by less
// than the smoothing angle, weighed by area and by the angle at the corner (Thürmer and Wüthrich 1998, with
// the area added), so that flat plates stay flat and their bevels carry the turn.
class CornerNormals {
public:
    explicit CornerNormals(const Shape& triangles) : shape(triangles), facesAt(triangles.points.size()) {
        for (size_t f = 0; f < shape.faces.size(); f++) {
            const Vec area = areaVector(shape, shape.faces[f]);
            unit.push_back(normalized(area));
            size.push_back(length(area));
            for (int point : shape.faces[f].points) facesAt[point].push_back(f);
        }
    }

    Vec at(size_t face, size_t corner) const {
        const int point = shape.faces[face].points[corner];
        Vec sum;
        for (size_t other : facesAt[point]) {
            const double limit = std::min(shape.faces[face].smoothing, shape.faces[other].smoothing);
            if (other == face || dot(unit[face], unit[other]) > std::cos(limit))
                sum += unit[other] * (size[other] * angleAt(other, point));
        }
        return normalized(sum);
    }

private:
    double angleAt(size_t face, int point) const {
        const std::vector<int>& points = shape.faces[face].points;
        const size_t i = std::find(points.begin(), points.end(), point) - points.begin();
        const Vec a = normalized(shape.points[points[(i + 1) % 3]] - shape.points[point]);
        const Vec b = normalized(shape.points[points[(i + 2) % 3]] - shape.points[point]);
        return std::acos(std::clamp(dot(a, b), -1.0, 1.0));
    }

    const Shape& shape;
    std::vector<std::vector<size_t>> facesAt;
    std::vector<Vec> unit;
    std::vector<double> size;  // twice the area
};

// Rounded so that rounding noise doesn't tell equal corners apart.
float tidy(double value) {
    const float rounded = float(std::round(value * 262144) / 262144);
    return rounded == 0 ? 0.0f : rounded;  // no minus zero
}

void addMeshes(AmlBuilder& builder, const Shape& triangles) {
    const CornerNormals normals(triangles);
    builder.beginMesh();
    for (size_t f = 0; f < triangles.faces.size(); f++) {
        std::array<AmlCorner, 3> corners;
        for (size_t i = 0; i < 3; i++) {
            const int point = triangles.faces[f].points[i];
            const Vec p = triangles.points[point];
            const Face& face = triangles.faces[f];
            const Vec n = face.normals.empty() ? normals.at(f, i) : face.normals[i];
            const Uv uv = face.uvs[i];
            corners[i] = {uint32_t(point),
                          {tidy(p.x), tidy(p.y), tidy(p.z)},
                          {tidy(n.x), tidy(n.y), tidy(n.z)},
                          {tidy(uv.s), tidy(uv.t)}};
        }
        builder.addFace(corners);
    }
}

}  // namespace

void writeAml(const char* path, const std::vector<Shape>& shapes) {
    AmlBuilder builder;
    for (const Shape& shape : shapes) addMeshes(builder, triangulated(welded(shape)));
    if (writeAmlFile(path, builder.meshes)) return;
    fprintf(stderr, "Can't write %s\n", path);
    exit(1);
}

}  // namespace model
