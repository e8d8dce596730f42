#include "geometry/mesh.h"
#include "tests/geometry/aml_bytes.h"
#include "tests/gl_window.h"

namespace {

class MeshGl : public GlWindow {
protected:
    MeshSet set;

    // Normalised device coordinates are what the meshes' positions mean.
    void SetUp() override {
        GlWindow::SetUp();
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glMatrixMode(GL_MODELVIEW);
    }
    void load(const std::vector<AmlMesh>& meshes) {
        set = meshesIn(amlFile(meshes));
        for (Mesh& mesh : set) {
            if (mesh.attribType[0] == gvertexAttrib) mesh.expandPositions("test");
            mesh.upload();
        }
    }
};

// A quad in one colour from x = left to right, over the screen's whole height.
AmlMesh coloredQuad(float left, float right, const std::vector<float>& color, uint8_t type = colorAttrib) {
    AmlMesh mesh = {{{0, 3}, {type, uint8_t(color.size())}}, {}, {}, {0, 1, 2, 0, 2, 3}};
    for (const auto& [x, y] : {std::pair{left, -1.f}, {right, -1.f}, {right, 1.f}, {left, 1.f}}) {
        for (float word : {x, y, 0.f}) mesh.vertices.push_back(word);
        mesh.vertices.insert(mesh.vertices.end(), color.begin(), color.end());
    }
    return mesh;
}

bool arrayEnabled(int unit) {
    glClientActiveTexture(GL_TEXTURE0 + unit);
    const bool enabled = glIsEnabled(GL_TEXTURE_COORD_ARRAY);
    glClientActiveTexture(GL_TEXTURE0);
    return enabled;
}

TEST_F(MeshGl, DrawsTheMeshesInOrderFromTheirOwnBuffers) {
    glDepthFunc(GL_ALWAYS);
    glEnable(GL_COLOR_SUM);
    load({coloredQuad(-1, 0.5f, {1, 0, 0}), coloredQuad(0, 0.7f, {0, 1, 0, 1}),
          coloredQuad(0.6f, 1, {0, 1, 0.2f}, secondaryColorAttrib)});
    for (const Mesh& mesh : set) {
        glColor3f(1, 0, 0.2f);  // what the secondary colour is added to
        mesh.draw();
    }
    EXPECT_EQ(readPixel(200, 300), (Pixel{255, 0, 0, 255}));
    EXPECT_EQ(readPixel(450, 300), (Pixel{0, 255, 0, 255}));
    EXPECT_EQ(readPixel(750, 300), (Pixel{255, 255, 102, 255}));
}

TEST_F(MeshGl, PointersFollowTheAttributeTableUntilItIsUnbound) {
    load({quadMesh()});
    const Mesh& mesh = set.meshes[0];
    mesh.bindArrays();
    EXPECT_EQ(stateOf(GL_VERTEX_ARRAY_SIZE), 3);
    EXPECT_EQ(stateOf(GL_VERTEX_ARRAY_STRIDE), 32);
    EXPECT_EQ(stateOf(GL_NORMAL_ARRAY_STRIDE), 32);
    EXPECT_EQ(stateOf(GL_TEXTURE_COORD_ARRAY_SIZE), 2);
    void* offset = nullptr;
    glGetPointerv(GL_NORMAL_ARRAY_POINTER, &offset);
    EXPECT_EQ(offset, reinterpret_cast<void*>(12));
    glGetPointerv(GL_TEXTURE_COORD_ARRAY_POINTER, &offset);
    EXPECT_EQ(offset, reinterpret_cast<void*>(24));
    EXPECT_TRUE(glIsEnabled(GL_NORMAL_ARRAY));
    EXPECT_FALSE(glIsEnabled(GL_COLOR_ARRAY));
    EXPECT_TRUE(arrayEnabled(0));
    EXPECT_FALSE(arrayEnabled(1));

    mesh.draw();
    for (const GLenum array : {GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_COLOR_ARRAY, GL_SECONDARY_COLOR_ARRAY})
        EXPECT_FALSE(glIsEnabled(array));
    EXPECT_EQ(stateOf(GL_CLIENT_ACTIVE_TEXTURE), GL_TEXTURE0);
    EXPECT_FALSE(arrayEnabled(0));
    EXPECT_EQ(stateOf(GL_ARRAY_BUFFER_BINDING), 0);
    EXPECT_EQ(stateOf(GL_ELEMENT_ARRAY_BUFFER_BINDING), 0);
}

}  // namespace
