#include "geometry/aml_writer.h"

#include <cstdio>

#include "geometry/aml_format.h"

namespace {

void writeMesh(const AmlMeshData& mesh, FILE* file) {
    static_assert(sizeof(AmlVertex) == (1 + 3 + 2) * 4);
    constexpr uint8_t attributes[] = {3, gvertexAttrib, 1, normalAttrib, 3, texCoordAttrib, 2};
    const uint16_t counts[] = {uint16_t(mesh.positions.size()), uint16_t(mesh.vertices.size()),
                               uint16_t(mesh.faces.size())};
    fwrite(counts, 1, sizeof counts, file);
    fwrite(attributes, 1, sizeof attributes, file);
    fwrite(mesh.positions.data(), sizeof mesh.positions[0], mesh.positions.size(), file);
    fwrite(mesh.vertices.data(), sizeof mesh.vertices[0], mesh.vertices.size(), file);
    fwrite(mesh.faces.data(), sizeof mesh.faces[0], mesh.faces.size(), file);
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
    FILE* file = fopen(path, "wb");
    if (!file) return false;
    const uint32_t count = uint32_t(meshes.size());
    fwrite(amlMagic, 1, sizeof amlMagic, file);
    fputc(amlVersion, file);
    fwrite(&count, sizeof count, 1, file);
    for (const AmlMeshData& mesh : meshes) writeMesh(mesh, file);
    const bool whole = !ferror(file);
    return fclose(file) == 0 && whole;
}
