#include "geometry/mesh.h"

#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstdlib>

#include "geometry/vec3.h"

Mesh::Mesh() {
    std::fill_n(attribSize, maxAttribs, 0);
    std::fill_n(attribType, maxAttribs, -1);
    std::fill_n(slotOfType, maxAttribs, -1);
}

void Mesh::rebuildAttribs() {
    vsize = 0;
    for (int slot = 0; slot < attribCount; slot++) vsize += attribSize[slot];
    for (int slot = 0; slot < attribCount; slot++) {
        if (attribType[slot] == -1) {
            printf("Error! Attrib type[%d] = -1\n", slot);
            std::exit(1);
        }
        slotOfType[attribType[slot]] = slot;
    }
}

int Mesh::attribOffset(int type) const {
    int offset = 0;
    for (int slot = 0; slot < slotOfType[type]; slot++) offset += attribSize[slot];
    return offset;
}

float* Mesh::vertexAttrib(int vertex, int type) {
    return vertices.get() + size_t(vertex) * vsize + attribOffset(type);
}

const float* Mesh::vertexAttrib(int vertex, int type) const {
    return vertices.get() + size_t(vertex) * vsize + attribOffset(type);
}

uint32_t Mesh::gvertexOf(int vertex) const {
    return std::bit_cast<uint32_t>(*vertexAttrib(vertex, gvertexAttrib));
}

const float* Mesh::gvertexPosition(int vertex) const {
    return &gvertices[3 * gvertexOf(vertex)];
}

uint16_t Mesh::otherVertexOfFace(int faceIndex, uint16_t a, uint16_t b) const {
    const uint16_t* corners = face(faceIndex);
    const uint16_t* other =
        std::find_if(corners, corners + 3, [=](uint16_t vertex) { return vertex != a && vertex != b; });
    return other == corners + 3 ? 65535 : *other;
}

void Mesh::addAttrib(int type, int size) {
    if (hasAttrib(type)) return;
    if (attribCount == maxAttribs) {
        fprintf(stderr, "Error! No attribute slot is left for type %d\n", type);
        std::exit(1);
    }
    const int newSize = vsize + size;
    auto widened = std::make_unique_for_overwrite<float[]>(size_t(vertexCount) * newSize);
    for (size_t vertex = 0; vertex < size_t(vertexCount); vertex++)
        std::copy_n(&vertices[vertex * vsize], vsize, &widened[vertex * newSize]);
    vertices = std::move(widened);
    attribType[attribCount] = type;
    attribSize[attribCount] = size;
    attribCount++;
    rebuildAttribs();
}

void Mesh::makeFaceNormals(bool smooth) {
    const int type = smooth ? normalAttrib : faceNormalAttrib;
    addAttrib(type, 3);
    const auto position = [this](int vertex) {
        const float* p = vertexAttrib(vertex, positionAttrib);
        return Vec3{p[0], p[1], p[2]};
    };
    for (int i = 0; i < faceCount; i++) {
        const uint16_t* corners = face(i);
        const Vec3 p0 = position(corners[0]);
        Vec3 normal = cross(position(corners[1]) - p0, position(corners[2]) - p0);
        normal.normalize();
        for (int corner = 0; corner < 3; corner++) {
            float* target = vertexAttrib(corners[corner], type);
            target[0] = normal.x;
            target[1] = normal.y;
            target[2] = normal.z;
        }
    }
}

void Mesh::expandPositions(const char* file) {
    if (!canExpandPositions()) {
        fprintf(stderr, "AML file %s: the first attribute is not the index of a position\n", file);
        std::exit(1);
    }
    const int newSize = vsize + 2;
    auto expanded = std::make_unique_for_overwrite<float[]>(size_t(vertexCount) * newSize);
    for (int vertex = 0; vertex < vertexCount; vertex++) {
        float* target = &expanded[size_t(vertex) * newSize];
        std::copy_n(gvertexPosition(vertex), 3, target);
        std::copy_n(&vertices[size_t(vertex) * vsize] + 1, vsize - 1, target + 3);
    }
    vertices = std::move(expanded);
    gvertices.reset();
    gvertexCount = 0;
    attribType[0] = positionAttrib;
    attribSize[0] = 3;
    rebuildAttribs();
}

void MeshSet::reset(int newCount) {
    meshes = std::make_unique<Mesh[]>(newCount);
    count = newCount;
}
