#include "production/kit/model/aml.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "geometry/aml_writer.h"

namespace model {
namespace {

// Rounded so that rounding noise doesn't tell equal corners apart.
float tidy(double value) {
    const float rounded = float(std::round(value * 262144) / 262144);
    return rounded == 0 ? 0.0f : rounded;  // no minus zero
}

void addMeshes(AmlBuilder& builder, const Shape& triangles) {
    const std::vector<std::array<Vec, 3>> normals = cornerNormals(triangles);
    builder.beginMesh();
    for (size_t f = 0; f < triangles.faces.size(); f++) {
        std::array<AmlCorner, 3> corners;
        for (size_t i = 0; i < 3; i++) {
            const int point = triangles.faces[f].points[i];
            const Vec p = triangles.points[point];
            const Face& face = triangles.faces[f];
            const Vec n = face.normals.empty() ? normals[f][i] : face.normals[i];
            const Uv uv = face.uvs[i];
            corners[i] = {uint32_t(point),
                          {tidy(p.x), tidy(p.y), tidy(p.z)},
                          {tidy(n.x), tidy(n.y), tidy(n.z)},
                          {tidy(uv.x), tidy(uv.y)}};
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
