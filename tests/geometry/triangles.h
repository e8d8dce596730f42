// Triangles as the tests of the tracer think of them, and the mesh sets that they stand for.
#pragma once

#include <algorithm>
#include <array>
#include <memory>
#include <vector>

#include "geometry/mesh.h"
#include "geometry/vec3.h"

using Triangle = std::array<Vec3, 3>;

// A set of two meshes, the first of them empty; positions don't lie first.
inline MeshSet meshOf(const std::vector<Triangle>& triangles) {
    MeshSet set;
    set.reset(2);
    Mesh& mesh = set.meshes[1];
    mesh.attribCount = 2;
    mesh.attribType[0] = texCoordAttrib;
    mesh.attribSize[0] = 1;
    mesh.attribType[1] = positionAttrib;
    mesh.attribSize[1] = 3;
    mesh.rebuildAttribs();
    mesh.faceCount = int(triangles.size());
    mesh.vertexCount = 3 * mesh.faceCount;
    mesh.vertices = std::make_unique<float[]>(4 * mesh.vertexCount);
    mesh.faces = std::make_unique<uint16_t[]>(mesh.vertexCount);
    for (int i = 0; i < mesh.vertexCount; i++) {
        std::copy_n(&triangles[i / 3][i % 3].x, 3, mesh.vertexAttrib(i, positionAttrib));
        mesh.faces[i] = uint16_t(i);
    }
    return set;
}

// All faces of all its meshes.
inline std::vector<Triangle> trianglesOf(const MeshSet& set) {
    std::vector<Triangle> triangles;
    for (const Mesh& mesh : set) {
        for (int i = 0; i < mesh.faceCount; i++) {
            Triangle& triangle = triangles.emplace_back();
            for (int k = 0; k < 3; k++)
                std::copy_n(mesh.vertexAttrib(mesh.face(i)[k], positionAttrib), 3, &triangle[k].x);
        }
    }
    return triangles;
}
