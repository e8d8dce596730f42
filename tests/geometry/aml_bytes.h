// AML files made on the spot, in memory, and read from there.
#pragma once

#include <bit>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "geometry/aml.h"

template <typename T>
void put(std::string& bytes, T value) {
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

// The word that a vertex's index of a shared position is.
inline float indexWord(uint32_t index) {
    return std::bit_cast<float>(index);
}

struct AmlMesh {
    std::vector<std::pair<uint8_t, uint8_t>> attribs;  // type, size
    std::vector<float> gvertices;
    std::vector<float> vertices;
    std::vector<uint16_t> faces;

    int vsize() const {
        int sum = 0;
        for (const auto& [type, size] : attribs) sum += size;
        return sum;
    }
    std::string bytes() const {
        std::string out;
        put(out, uint16_t(gvertices.size() / 3));
        put(out, uint16_t(vsize() ? vertices.size() / vsize() : 0));
        put(out, uint16_t(faces.size() / 3));
        put(out, uint8_t(attribs.size()));
        for (const auto& [type, size] : attribs) {
            put(out, type);
            put(out, size);
        }
        for (float word : gvertices) put(out, word);
        for (float word : vertices) put(out, word);
        for (uint16_t index : faces) put(out, index);
        return out;
    }
};

inline std::string amlFile(const std::vector<AmlMesh>& meshes) {
    std::string out = "AML\2";
    put(out, uint32_t(meshes.size()));
    for (const AmlMesh& mesh : meshes) out += mesh.bytes();
    return out;
}

// A quad of two faces in z = 0, from (0, 0) to (2, 2): index, normal +z, texture coordinates.
inline AmlMesh quadMesh() {
    return {{{1, 1}, {2, 3}, {6, 2}},
            {0, 0, 0, 2, 0, 0, 2, 2, 0, 0, 2, 0},
            {indexWord(0), 0, 0, 1, 0, 0, indexWord(1), 0, 0, 1, 1, 0,  //
             indexWord(2), 0, 0, 1, 1, 1, indexWord(3), 0, 0, 1, 0, 1},
            {0, 1, 2, 0, 2, 3}};
}

// As the show loads them.
inline MeshSet meshesIn(const std::string& file, const char* name = "some/model.AML") {
    MeshSet set;
    ResDescBytes stream(file);
    loadAml(set, stream, name);
    return set;
}
