#include "geometry/mesh.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cmath>

#include "tests/geometry/aml_bytes.h"

namespace {

Mesh loadMesh(const AmlMesh& source) {
    return std::move(meshesIn(amlFile({source})).meshes[0]);
}

std::vector<float> words(const Mesh& mesh, int vertex, int type, int count) {
    const float* first = mesh.vertexAttrib(vertex, type);
    return {first, first + count};
}

using Words = std::vector<float>;

TEST(Mesh, ExpandedPositionsReplaceTheIndex) {
    Mesh mesh = loadMesh(quadMesh());
    mesh.expandPositions("test");
    EXPECT_EQ(mesh.vsize, 8);
    EXPECT_EQ(mesh.gvertexCount, 0);
    EXPECT_EQ(mesh.gvertices, nullptr);
    EXPECT_EQ(words(mesh, 2, positionAttrib, 3), (Words{2, 2, 0}));
    EXPECT_EQ(words(mesh, 2, normalAttrib, 3), (Words{0, 0, 1}));
    EXPECT_EQ(words(mesh, 3, texCoordAttrib, 2), (Words{0, 1}));
}

TEST(Mesh, AddedAttributeKeepsTheOthers) {
    Mesh mesh = loadMesh(quadMesh());
    mesh.addAttrib(colorAttrib, 4);
    mesh.addAttrib(normalAttrib, 7);  // is there already
    EXPECT_EQ(mesh.vsize, 10);
    EXPECT_EQ(mesh.attribOffset(colorAttrib), 6);
    EXPECT_EQ(mesh.gvertexOf(3), 3u);
    EXPECT_EQ(words(mesh, 3, texCoordAttrib, 2), (Words{0, 1}));
    EXPECT_EQ(mesh.otherVertexOfFace(1, 0, 3), 2);
    EXPECT_EQ(mesh.otherVertexOfFace(1, 7, 7), 0);
    mesh.face(0)[2] = 1;
    EXPECT_EQ(mesh.otherVertexOfFace(0, 0, 1), 65535);
}

TEST(Mesh, FaceNormalsOfSharedVerticesAreTheLastFaces) {
    AmlMesh fold = quadMesh();
    fold.gvertices[11] = 5;  // lifts the corner that only the second face has
    Mesh mesh = loadMesh(fold);
    mesh.expandPositions("test");
    mesh.makeFaceNormals(false);
    EXPECT_EQ(words(mesh, 1, faceNormalAttrib, 3), (Words{0, 0, 1}));
    const float length = std::sqrt(216.f);  // of (10, -10, 4), upright on (2, 2, 0) and (0, 2, 5)
    for (const int vertex : {0, 2, 3}) {
        const Words normal = words(mesh, vertex, faceNormalAttrib, 3);
        EXPECT_NEAR(normal[0], 10 / length, 1e-6);
        EXPECT_NEAR(normal[1], -10 / length, 1e-6);
        EXPECT_NEAR(normal[2], 4 / length, 1e-6);
    }
    EXPECT_EQ(words(mesh, 3, normalAttrib, 3), (Words{0, 0, 1}));
    mesh.makeFaceNormals(true);
    EXPECT_EQ(words(mesh, 3, normalAttrib, 3), words(mesh, 3, faceNormalAttrib, 3));
}

TEST(MeshDeath, LayoutsThatCannotBeWorkedOnEnd) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    Mesh mesh = loadMesh(quadMesh());
    std::swap(mesh.attribType[0], mesh.attribType[1]);
    mesh.rebuildAttribs();
    EXPECT_EXIT(mesh.expandPositions("some/model.AML"), testing::ExitedWithCode(1),
                "^AML file some/model.AML: the first attribute is not the index of a position\n$");
    EXPECT_EXIT(Mesh().expandPositions("bare.AML"), testing::ExitedWithCode(1), "bare.AML");

    mesh.attribType[1] = -1;
    const auto rebuild = [&mesh] {
        dup2(STDERR_FILENO, STDOUT_FILENO);
        mesh.rebuildAttribs();
    };
    EXPECT_EXIT(rebuild(), testing::ExitedWithCode(1), "Error! Attrib type\\[1\\] = -1\n");
}

}  // namespace
