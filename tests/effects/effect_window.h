// What tests of effects share: boxes for meshes and plain colours for textures under the keys that effects
// look up, where every mesh was drawn, and GL's feedback in the place of pixels where exact values matter.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "geometry/matrix4.h"
#include "geometry/mesh.h"
#include "tests/geometry/aml_bytes.h"
#include "tests/gl_window.h"

// Where GL would have drawn, in window coordinates.
struct FeedbackVertex {
    float x, y, z;
    float r, g, b, a;
    float s, t;
};
struct Feedback {
    std::vector<FeedbackVertex> points;
    std::vector<std::vector<FeedbackVertex>> lines, polygons;
};

inline Feedback feedbackOf(const std::function<void()>& draw) {
    std::vector<float> buffer(1 << 16);
    glFeedbackBuffer(GLsizei(buffer.size()), GL_4D_COLOR_TEXTURE, buffer.data());
    glRenderMode(GL_FEEDBACK);
    draw();
    const int count = glRenderMode(GL_RENDER);
    EXPECT_GE(count, 0) << "the feedback buffer is too small";

    Feedback feedback;
    int i = 0;
    const auto take = [&](int vertices) {
        std::vector<FeedbackVertex> taken;
        for (; vertices > 0; vertices--, i += 12) {
            const float* v = &buffer[i];
            taken.push_back({v[0], v[1], v[2], v[4], v[5], v[6], v[7], v[8], v[9]});
        }
        return taken;
    };
    while (i < count) {
        const int token = int(buffer[i++]);
        if (token == GL_POINT_TOKEN)
            feedback.points.push_back(take(1)[0]);
        else if (token == GL_LINE_TOKEN || token == GL_LINE_RESET_TOKEN)
            feedback.lines.push_back(take(2));
        else if (token == GL_POLYGON_TOKEN)
            feedback.polygons.push_back(take(int(buffer[i++])));
        else {
            ADD_FAILURE() << "feedback token " << token;
            break;
        }
    }
    return feedback;
}

class EffectWindow : public GlWindow {
public:
    inline static std::vector<Matrix4> drawn;  // the model-view matrix of each mesh

    void SetUp() override {
        GlWindow::SetUp();
        drawn.clear();
        realDraw = __glewDrawRangeElementsEXT;
        __glewDrawRangeElementsEXT = recordDraw;
    }
    void TearDown() override {
        __glewDrawRangeElementsEXT = realDraw;
        for (const auto& set : sets)
            for (Mesh& mesh : *set) mesh.releaseBuffers();
        GlWindow::TearDown();
    }

    // Music and clock, to that time in seconds.
    void goTo(float seconds) {
        music.ms = int(seconds * 1000 + 0.5f);
        demo->clock.update();
    }

    void addTextures(const std::vector<const char*>& names) {
        for (const char* name : names) addSolidTexture(name, {120, 130, 140, 255});
    }

    // A box around the origin by half its sides; faces look out, or in for something to be inside of.
    void addBox(const char* key, float x, float y, float z, bool inward = false) {
        const float half[] = {x, y, z};
        AmlMesh mesh = {{{positionAttrib, 3}, {normalAttrib, 3}, {texCoordAttrib, 2}}, {}, {}, {}};
        std::vector<float>& vertices = mesh.vertices;
        for (int axis = 0; axis < 3; axis++) {
            for (float side : {-1.f, 1.f}) {
                const auto first = uint16_t(vertices.size() / 8);
                for (int corner = 0; corner < 4; corner++) {
                    const float u = corner == 1 || corner == 2 ? 1 : -1;
                    const float v = corner >= 2 ? 1 : -1;
                    float p[3], n[3] = {};
                    p[axis] = side * half[axis];
                    p[(axis + 1) % 3] = u * half[(axis + 1) % 3];
                    p[(axis + 2) % 3] = v * half[(axis + 2) % 3];
                    n[axis] = inward ? -side : side;
                    vertices.insert(vertices.end(), {p[0], p[1], p[2], n[0], n[1], n[2], u, v});
                }
                const bool turn = (side < 0) != inward;
                for (int corner : {0, 1, 2, 0, 2, 3})
                    mesh.faces.push_back(uint16_t(first + (turn ? (4 - corner) % 4 : corner)));
            }
        }
        sets.push_back(std::make_unique<MeshSet>(meshesIn(amlFile({mesh}))));
        sets.back()->meshes[0].upload();
        demo->meshes[key] = sets.back().get();
    }

private:
    inline static PFNGLDRAWRANGEELEMENTSEXTPROC realDraw;
    std::vector<std::unique_ptr<MeshSet>> sets;

    static void GLAPIENTRY recordDraw(GLenum mode, GLuint start, GLuint end, GLsizei count, GLenum type,
                                      const void* indices) {
        glGetFloatv(GL_MODELVIEW_MATRIX, drawn.emplace_back().m);
        realDraw(mode, start, end, count, type, indices);
    }
};

// A parallel view along -z with a pixel to the unit and the origin at the window's middle, (400, 300).
struct PixelWindow : EffectWindow {
    void SetUp() override {
        EffectWindow::SetUp();
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(-screenWidth / 2, screenWidth / 2, -screenHeight / 2, screenHeight / 2, -2000, 2000);
        glMatrixMode(GL_MODELVIEW);
    }
};

inline void expectMatrixNear(const Matrix4& actual, const Matrix4& expected, float tolerance) {
    for (int i = 0; i < 16; i++) EXPECT_NEAR(actual.m[i], expected.m[i], tolerance) << "element " << i;
}
