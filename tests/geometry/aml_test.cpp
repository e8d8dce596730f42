#include "geometry/aml.h"

#include <gtest/gtest.h>

#include "tests/geometry/aml_bytes.h"

namespace {

constexpr const char* name = "some/model.AML";

class AmlDeath : public testing::Test {
protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    // By both: the one that ends the process, and the one that tells its caller.
    static void expectRejected(const std::string& bytes, const std::string& reason,
                               const std::string& before = "") {
        SCOPED_TRACE(reason);
        EXPECT_EXIT(meshesIn(bytes), testing::ExitedWithCode(1), "^" + before + reason + "\n$");
        std::string problem;
        EXPECT_FALSE(readAml(bytes, &problem));
        std::string words = reason;  // not the pattern for them
        std::erase(words, '\\');
        EXPECT_EQ(problem, words);
    }
    static void expectNamed(const std::string& bytes, const std::string& reason) {
        expectRejected(bytes, reason, "AML file some/model.AML: ");
    }
};

TEST(Aml, ReadsMeshesOneAfterAnother) {
    AmlMesh colored = {{{0, 3}, {4, 4}}, {}, std::vector<float>(21, 0.5f), {2, 1, 0}};
    const std::string bytes = amlFile({quadMesh(), colored});
    std::string problem;
    const auto read = readAml(bytes, &problem);
    ASSERT_TRUE(read) << problem;
    EXPECT_EQ(read->meshes[1].vertexAttrib(2, colorAttrib)[3], 0.5f);

    const MeshSet set = meshesIn(bytes);
    ASSERT_EQ(set.count, 2);
    const Mesh& quad = set.meshes[0];
    EXPECT_EQ(quad.vertexCount, 4);
    EXPECT_EQ(quad.faceCount, 2);
    EXPECT_EQ(quad.vsize, 6);
    EXPECT_EQ(quad.attribOffset(texCoordAttrib), 4);
    EXPECT_EQ(quad.gvertexOf(2), 2u);
    EXPECT_EQ(quad.gvertexPosition(2)[1], 2);
    EXPECT_EQ(quad.vertexAttrib(3, texCoordAttrib)[1], 1);
    EXPECT_EQ(quad.face(1)[2], 3);
    EXPECT_EQ(set.meshes[1].vertexAttrib(2, colorAttrib)[3], 0.5f);
    EXPECT_EQ(set.meshes[1].face(0)[0], 2);
}

TEST(Aml, LoadingReplacesWhatTheSetHeld) {
    MeshSet set;
    set.reset(5);
    const std::string bytes = amlFile({}) + "not read";
    ResDescBytes stream(bytes);
    loadAml(set, stream, name);
    EXPECT_EQ(set.count, 0);
    EXPECT_EQ(stream.readByte(), 'n');
}

TEST(Aml, MeshesMayHaveNoAttributesOrOneTwice) {
    const AmlMesh bare = {{}, {1, 2, 3}, {}, {}};
    const AmlMesh repeated = {{{0, 3}, {6, 2}, {6, 2}}, {}, {0, 0, 0, 1, 2, 3, 4}, {}};
    std::string bytes = amlFile({bare, repeated});
    bytes[8 + 2] = 9;  // vertices
    const MeshSet set = meshesIn(bytes);
    EXPECT_EQ(set.meshes[0].vertexCount, 9);
    EXPECT_EQ(set.meshes[0].vsize, 0);
    EXPECT_EQ(set.meshes[1].vertexAttrib(0, texCoordAttrib)[0], 3) << "the last one wins";
}

TEST_F(AmlDeath, ForeignFilesEnd) {
    expectRejected("BML\2", "File is not AML file \\(or is format version 0\\)\\.");
    expectRejected("AMX\2", "File is not AML file \\(or is format version 0\\)\\.");
    expectRejected("AML\1", "AML format version != 2");
    expectRejected("AML\3", "AML format version != 2");
}

TEST_F(AmlDeath, TruncationInEveryBlockEnds) {
    const std::string whole = amlFile({quadMesh()});
    const size_t table = 8 + 7, gvertices = table + 6, vertices = gvertices + 48, faces = vertices + 96;
    ASSERT_EQ(whole.size(), faces + 12);
    for (const size_t length :
         {size_t{2}, size_t{7}, size_t{14}, table + 1, gvertices + 47, vertices + 95, faces + 11})
        expectNamed(whole.substr(0, length), "the file ends too early");
}

TEST_F(AmlDeath, CountsThatTheFileCannotHoldEnd) {
    std::string manyMeshes = amlFile({quadMesh()});
    manyMeshes.replace(4, 4, "\xff\xff\xff\xff");
    EXPECT_EXIT(meshesIn(manyMeshes), testing::ExitedWithCode(1), "the file ends too early");
    std::string problem;
    EXPECT_FALSE(readAml(manyMeshes, &problem));
    EXPECT_EQ(problem, "claims 4294967295 meshes, more than the show could draw");
    for (int count = 0; count < 3; count++) {
        std::string bytes = amlFile({quadMesh()});
        bytes.replace(8 + 2 * count, 2, "\xff\xff");
        expectNamed(bytes, "the file ends too early");
    }
}

TEST_F(AmlDeath, WhatAMeshCannotHoldEnds) {
    const auto quadWith = [](auto change) {
        AmlMesh mesh = quadMesh();
        change(mesh);
        return amlFile({mesh});
    };
    expectNamed(quadWith([](AmlMesh& m) {
                    m.attribs.assign(17, {6, 2});
                }),
                "17 attributes, where a mesh holds at most 16");
    expectNamed(quadWith([](AmlMesh& m) { m.attribs[2].first = 16; }),
                "attribute type 16, where the last is 15");
    expectNamed(quadWith([](AmlMesh& m) { m.attribs[0].second = 2; }),
                "attribute type 1 can't have a size of 2");
    expectNamed(quadWith([](AmlMesh& m) { m.faces[5] = 4; }), "a face uses vertex 4 of 4");
    expectNamed(quadWith([](AmlMesh& m) { m.vertices[6] = indexWord(4); }), "a vertex uses position 4 of 4");
    expectNamed(quadWith([](AmlMesh& m) { m.gvertices.clear(); }), "a vertex uses position 3 of 0");
}

TEST_F(AmlDeath, DumpPrintsEveryRecordAndNeedsTheWordsForIt) {
    std::string bytes;
    put(bytes, uint32_t{1});
    for (const uint16_t count : {1, 1, 1}) put(bytes, count);
    bytes += std::string("\3\1\3\3", 4);
    for (const float word : {1.5f, 2.f, -3.f}) put(bytes, word);
    for (const float word : {indexWord(0), 0.f, 0.25f, 1.f, 4.f, 5.f, 6.f}) put(bytes, word);
    for (const uint16_t index : {0, 0, 0}) put(bytes, index);

    MeshSet set;
    const auto dump = [&] {
        ResDescBytes stream(bytes);
        return dumpAml(set, stream, name);
    };
    testing::internal::CaptureStdout();
    EXPECT_EQ(dump(), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Mesh count = 1\n[0] = 1\n[1] = 3\n[2] = 3\nReading Mesh 0:\n"
              "  gvertex_count = 1\n  vertex_count = 1\n  face_count = 1\n  attrib_count = 3\n  vsize = 7\n"
              "gvertex 0: 1.500000, 2.000000, -3.000000\n"
              "vertex 0: 0: 0.000000, 0.250000, 1.000000      4.000000, 5.000000, 6.000000\n"
              "face 0: 0, 0, 0\n");
    EXPECT_EQ(set.meshes[0].attribOffset(texCoordAttrib), 4);

    bytes[4 + 6] = 2;  // attributes, so that a vertex has four words
    EXPECT_EXIT(dump(), testing::ExitedWithCode(1), "model.AML: vertices of 4 words, where 7 are printed");
}

}  // namespace
