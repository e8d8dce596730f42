#include "geometry/aml_writer.h"

#include <cstdio>

#include "geometry/aml_format.h"

namespace {

class Bytes {
public:
    void put(const void* data, size_t size) {
        const uint8_t* first = static_cast<const uint8_t*>(data);
        bytes.insert(bytes.end(), first, first + size);
    }
    void putShort(size_t value) {
        const uint16_t word = uint16_t(value);
        put(&word, 2);
    }
    bool moveTo(FILE* file) {
        const bool whole = fwrite(bytes.data(), bytes.size(), 1, file) == 1;
        bytes.clear();
        return whole;
    }

private:
    std::vector<uint8_t> bytes;
};

void putMesh(Bytes& out, const AmlMeshData& mesh) {
    static_assert(sizeof(AmlVertex) == (1 + 3 + 2) * 4);
    constexpr uint8_t attributes[] = {3, gvertexAttrib, 1, normalAttrib, 3, texCoordAttrib, 2};
    out.putShort(mesh.positions.size());
    out.putShort(mesh.vertices.size());
    out.putShort(mesh.faces.size());
    out.put(attributes, sizeof attributes);
    out.put(mesh.positions.data(), mesh.positions.size() * sizeof mesh.positions[0]);
    out.put(mesh.vertices.data(), mesh.vertices.size() * sizeof mesh.vertices[0]);
    out.put(mesh.faces.data(), mesh.faces.size() * sizeof mesh.faces[0]);
}

}  // namespace

void AmlBuilder::beginMesh() {
    meshes.emplace_back();
    positionOfPoint.clear();
    knownVertices.clear();
}

void AmlBuilder::addFace(const std::array<AmlCorner, 3>& corners) {
    if (meshes.back().vertices.size() + 3 > amlMostRecords || meshes.back().faces.size() == amlMostRecords)
        beginMesh();
    const uint16_t a = vertexOf(corners[0]), b = vertexOf(corners[1]), c = vertexOf(corners[2]);
    meshes.back().faces.push_back({a, b, c});
}

uint16_t AmlBuilder::vertexOf(const AmlCorner& corner) {
    AmlMeshData& mesh = meshes.back();
    const auto [place, fresh] = positionOfPoint.try_emplace(corner.point, uint32_t(mesh.positions.size()));
    if (fresh) mesh.positions.push_back(corner.position);
    const AmlVertex vertex = {place->second, corner.normal, corner.coordinates};
    const auto [known, added] = knownVertices.try_emplace(vertex, uint16_t(mesh.vertices.size()));
    if (added) mesh.vertices.push_back(vertex);
    return known->second;
}

bool writeAmlFile(const char* path, const std::vector<AmlMeshData>& meshes) {
    Bytes out;
    const uint8_t version = amlVersion;
    const uint32_t count = uint32_t(meshes.size());
    out.put(amlMagic, sizeof amlMagic);
    out.put(&version, sizeof version);
    out.put(&count, sizeof count);

    FILE* file = fopen(path, "wb");
    if (!file) return false;
    bool whole = out.moveTo(file);
    // One after the other: a model may just fit into memory.
    for (const AmlMeshData& mesh : meshes) {
        putMesh(out, mesh);
        whole = whole && out.moveTo(file);
    }
    return fclose(file) == 0 && whole;
}
