// The mesh registry: files by key, and what becomes of keys and units.
#include "geometry/mesh.h"
#include "tests/geometry/aml_bytes.h"
#include "tests/gl_window.h"
#include "tests/scratch.h"

namespace {

class Meshes : public GlWindow {
public:
    ScratchDirectory scratch;

    int load(const char* key, const std::vector<AmlMesh>& meshes, int flags = 1) {
        return demo->loadMesh(scratch.write("mesh.AML", amlFile(meshes)).c_str(), key, flags);
    }

    static bool readsTexCoords(const Mesh& mesh, int unit) {
        mesh.bindArrays();
        glClientActiveTexture(GL_TEXTURE0 + unit);
        const bool enabled = glIsEnabled(GL_TEXTURE_COORD_ARRAY);
        Mesh::unbindArrays();
        return enabled;
    }
};

// From (0, 0) to (2, 2) in normalised device coordinates: what is seen is the screen's upper right quarter.
int quadArea() {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glColor3f(1, 1, 1);
    demo->drawMesh("quad");
    return readScreen().litCount();
}

TEST_F(Meshes, FlagOneExpandsAndUploadsEveryMesh) {
    EXPECT_EQ(load("quad", {quadMesh(), quadMesh()}), 0);
    for (const Mesh& mesh : *demo->meshes.at("quad")) {
        EXPECT_EQ(mesh.vsize, 8);
        EXPECT_TRUE(glIsBufferARB(mesh.vertexBuffer));
        EXPECT_TRUE(glIsBufferARB(mesh.indexBuffer));
    }
    EXPECT_EQ(quadArea(), 400 * 300);

    EXPECT_EQ(load("plain", {quadMesh()}, 2), 0);
    const Mesh& plain = demo->meshes.at("plain")->meshes[0];
    EXPECT_EQ(plain.vsize, 6);
    EXPECT_EQ(plain.gvertexCount, 4);
    EXPECT_EQ(plain.vertexBuffer, ~GLuint{0});
    EXPECT_EQ(demo->meshSetCount, 2);
}

TEST_F(Meshes, AKeyLoadedAgainIsTheNewSetAndTheOldOneLivesOn) {
    load("quad", {quadMesh()});
    const MeshSet* first = demo->meshes.at("quad");
    load("quad", {});
    EXPECT_EQ(quadArea(), 0);
    EXPECT_EQ(demo->meshSetCount, 2);
    EXPECT_TRUE(glIsBufferARB(first->meshes[0].vertexBuffer));
    demo->drawMesh("nothing");
    demo->remapTexCoords("nothing", 0, 2);
    EXPECT_EQ(demo->meshes.count("nothing"), 1u);
}

TEST_F(Meshes, RemappedCoordinatesServeBothUnits) {
    AmlMesh bare = {{{1, 1}}, {0, 0, 0}, {indexWord(0)}, {0, 0, 0}};
    load("set", {quadMesh(), bare});
    MeshSet& set = *demo->meshes.at("set");
    EXPECT_TRUE(readsTexCoords(set.meshes[0], 0));
    EXPECT_FALSE(readsTexCoords(set.meshes[0], 2));
    demo->remapTexCoords("set", 0, 2);
    EXPECT_TRUE(readsTexCoords(set.meshes[0], 0));
    EXPECT_FALSE(readsTexCoords(set.meshes[0], 1));
    EXPECT_TRUE(readsTexCoords(set.meshes[0], 2));
    EXPECT_FALSE(readsTexCoords(set.meshes[1], 2)) << "a mesh without coordinates gets none";
    for (const Mesh& mesh : set) EXPECT_TRUE(glIsBufferARB(mesh.vertexBuffer));
}

TEST_F(Meshes, ReleasedBuffersAreTheMeshsOwn) {
    load("set", {quadMesh(), quadMesh()});
    MeshSet& set = *demo->meshes.at("set");
    set.meshes[0].releaseBuffers();
    EXPECT_FALSE(glIsBufferARB(set.meshes[0].vertexBuffer));
    EXPECT_FALSE(glIsBufferARB(set.meshes[0].indexBuffer));
    EXPECT_TRUE(glIsBufferARB(set.meshes[1].vertexBuffer));
    EXPECT_TRUE(glIsBufferARB(set.meshes[1].indexBuffer));
}

using MeshesDeathTest = Meshes;

TEST_F(MeshesDeathTest, AFolderIsNoMesh) {
    EXPECT_EXIT(demo->loadMesh(scratch.path.c_str(), "x", 1), testing::ExitedWithCode(1),
                "the file ends too early\n$");
}

}  // namespace
