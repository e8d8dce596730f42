#include "production/kit/model/aml.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <utility>

#include "geometry/aml_format.h"

namespace model {
namespace {

struct Vertex {
    uint32_t point;
    std::array<float, 3> normal;
    std::array<float, 2> uv;
    auto operator<=>(const Vertex&) const = default;
};

struct AmlMesh {
    std::vector<std::array<float, 3>> points;
    std::vector<Vertex> vertices;
    std::vector<std::array<uint16_t, 3>> faces;
};

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
    const float rounded = static_cast<float>(std::round(value * 262144) / 262144);
    return rounded == 0 ? 0.0f : rounded;  // no minus zero
}

class MeshBuilder {
public:
    explicit MeshBuilder(const Shape& triangles) : shape(triangles), normals(triangles) {}

    std::vector<AmlMesh> meshes() {
        meshList.emplace_back();
        for (size_t f = 0; f < shape.faces.size(); f++) {
            if (meshList.back().vertices.size() + 3 > amlMostRecords ||
                meshList.back().faces.size() == amlMostRecords) {
                meshList.emplace_back();
                pointOf.clear();
                vertexOf.clear();
            }
            std::array<uint16_t, 3> face;
            for (size_t corner = 0; corner < 3; corner++) face[corner] = vertexAt(f, corner);
            meshList.back().faces.push_back(face);
        }
        return std::move(meshList);
    }

private:
    uint16_t vertexAt(size_t f, size_t corner) {
        AmlMesh& mesh = meshList.back();
        const int point = shape.faces[f].points[corner];
        const auto [place, fresh] = pointOf.try_emplace(point, static_cast<uint32_t>(mesh.points.size()));
        if (fresh) {
            const Vec p = shape.points[point];
            mesh.points.push_back({tidy(p.x), tidy(p.y), tidy(p.z)});
        }
        const Vec n = shape.faces[f].normals.empty() ? normals.at(f, corner) : shape.faces[f].normals[corner];
        const Uv uv = shape.faces[f].uvs[corner];
        const Vertex vertex = {place->second, {tidy(n.x), tidy(n.y), tidy(n.z)}, {tidy(uv.s), tidy(uv.t)}};
        const auto [known, added] = vertexOf.try_emplace(vertex, static_cast<uint16_t>(mesh.vertices.size()));
        if (added) mesh.vertices.push_back(vertex);
        return known->second;
    }

    const Shape& shape;
    CornerNormals normals;
    std::vector<AmlMesh> meshList;
    std::map<int, uint32_t> pointOf;
    std::map<Vertex, uint16_t> vertexOf;
};

class Bytes {
public:
    void put(const void* data, size_t size) {
        const uint8_t* first = static_cast<const uint8_t*>(data);
        bytes.insert(bytes.end(), first, first + size);
    }
    void putShort(size_t value) {
        const uint16_t word = static_cast<uint16_t>(value);
        put(&word, 2);
    }
    std::vector<uint8_t> bytes;
};

void putMesh(Bytes& out, const AmlMesh& mesh) {
    static_assert(sizeof(Vertex) == (1 + 3 + 2) * 4);
    constexpr uint8_t attributes[] = {3, gvertexAttrib, 1, normalAttrib, 3, texCoordAttrib, 2};
    out.putShort(mesh.points.size());
    out.putShort(mesh.vertices.size());
    out.putShort(mesh.faces.size());
    out.put(attributes, sizeof attributes);
    out.put(mesh.points.data(), mesh.points.size() * sizeof mesh.points[0]);
    out.put(mesh.vertices.data(), mesh.vertices.size() * sizeof mesh.vertices[0]);
    out.put(mesh.faces.data(), mesh.faces.size() * sizeof mesh.faces[0]);
}

}  // namespace

void writeAml(const char* path, const std::vector<Shape>& shapes) {
    std::vector<AmlMesh> meshes;
    for (const Shape& shape : shapes) {
        const Shape triangles = triangulated(welded(shape));
        for (AmlMesh& mesh : MeshBuilder(triangles).meshes()) meshes.push_back(std::move(mesh));
    }
    Bytes out;
    const uint8_t version = amlVersion;
    const uint32_t count = static_cast<uint32_t>(meshes.size());
    out.put(amlMagic, sizeof amlMagic);
    out.put(&version, sizeof version);
    out.put(&count, sizeof count);
    for (const AmlMesh& mesh : meshes) putMesh(out, mesh);

    FILE* file = fopen(path, "wb");
    const bool whole = file && fwrite(out.bytes.data(), out.bytes.size(), 1, file) == 1;
    if (!file || fclose(file) != 0 || !whole) {
        fprintf(stderr, "Can't write %s\n", path);
        exit(1);
    }
}

}  // namespace model
