// Building meshes from triangles and writing them as AML files, which aml_format.h describes, with the
// attributes that the show's files have: index of a position, normal, texture coordinates of unit 0.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <map>
#include <vector>

struct AmlCorner {
    uint32_t point;  // names the position: corners of a mesh with the same one share it
    std::array<float, 3> position;
    std::array<float, 3> normal;
    std::array<float, 2> coordinates;
};

struct AmlVertex {
    uint32_t position;  // index
    std::array<float, 3> normal;
    std::array<float, 2> coordinates;
    auto operator<=>(const AmlVertex&) const = default;
};

struct AmlMeshData {
    std::vector<std::array<float, 3>> positions;
    std::vector<AmlVertex> vertices;
    std::vector<std::array<uint16_t, 3>> faces;
};

// Corners share a vertex where point, normal and coordinates agree. All numbers must be finite.
class AmlBuilder {
public:
    std::vector<AmlMeshData> meshes;

    // What follows goes to a new mesh; call it before the first face.
    void beginMesh();
    // A mesh that would outgrow 16-bit counts is continued in a further one.
    void addFace(const std::array<AmlCorner, 3>& corners);

private:
    uint16_t vertexOf(const AmlCorner& corner);

    std::map<uint32_t, uint32_t> positionOfPoint;
    std::map<AmlVertex, uint16_t> knownVertices;
};

// False, with the reason in errno, if the file can't be written whole.
bool writeAmlFile(const char* path, const std::vector<AmlMeshData>& meshes);
