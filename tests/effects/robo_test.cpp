// The robot's parts, the pedestal that sinks, and the disc of light.
#include "effects/robo.h"

#include <cmath>
#include <fstream>

#include "tests/effects/effect_window.h"

namespace {

struct RoboTest : PixelWindow {
    void SetUp() override {
        PixelWindow::SetUp();
        addTextures({"envmap2", "envmap3", "lasertex", "lasertex2", "roboscreen", "noise1"});
        for (const char* key : {"block", "robo body", "robo arms", "robo screen", "ring"})
            addBox(key, 30, 30, 30);
        const std::string smoke = testing::TempDir() + "robo_test_smoke";
        std::ofstream(smoke + ".vs")
            << "uniform float time, time2;\n"
               "void main() { gl_Position = ftransform() + vec4(1e-9 * (time + time2)); }";
        std::ofstream(smoke + ".fs") << "uniform vec4 color;\nvoid main() { gl_FragColor = color; }";
        ASSERT_TRUE(demo->loadShader(smoke.c_str(), "smoke"));
    }

    Feedback drawAt(float rise, float mode) {
        drawn.clear();
        return feedbackOf([&] { Robo(demo).drawAt(rise, mode); });
    }

    std::vector<float> uniform(const char* name) {
        const GLhandleARB program = demo->shaders["smoke"];
        float values[4] = {};
        glGetUniformfvARB(program, glGetUniformLocationARB(program, name), values);
        return {values, values + 4};
    }

    static std::vector<std::string> keysDrawn() {
        std::vector<std::string> keys;
        for (const MeshDraw& draw : drawn) keys.push_back(draw.key);
        return keys;
    }

    static GLint textureOf(const char* name) { return GLint(demo->texture(name)); }
};

using Keys = std::vector<std::string>;

TEST_F(RoboTest, PedestalSinksWithTheDiscAndGoes) {
    drawAt(0.85f, 0);
    EXPECT_EQ(keysDrawn(), (Keys{"block", "robo body", "robo arms", "robo screen", "ring"}));
    EXPECT_EQ(drawn[0].modelView.m[5], 1) << "its own size above its 94 units";
    EXPECT_EQ(drawn[0].modelView.m[10], 1);
    drawAt(0.25f, 0);
    EXPECT_NEAR(drawn[0].modelView.m[5], 45.f / 94, 1e-5f);
    EXPECT_EQ(drawn[0].modelView.m[10], 1.02f);
    EXPECT_EQ(drawn[4].modelView.m[13], 45) << "the ring rides at the disc's height";
    for (float rise : {0.f, -0.0124f}) {
        drawAt(rise, 0);
        EXPECT_EQ(keysDrawn()[0], "robo body") << rise;
    }
    drawAt(0.25f, 1);
    EXPECT_EQ(keysDrawn()[0], "robo body");
}

TEST_F(RoboTest, PartsWearTheirTextures) {
    for (const auto& [mode, laser] : {std::pair{0.f, "lasertex"}, std::pair{1.f, "lasertex2"}}) {
        drawAt(0, mode);
        ASSERT_EQ(keysDrawn(), (Keys{"robo body", "robo arms", "robo screen", "ring"}));
        const char* reflections[] = {"envmap2", "envmap3", "envmap3", "envmap3"};
        for (int i = 0; i < 4; i++) {
            EXPECT_EQ(drawn[i].units[0].texture, textureOf(reflections[i]));
            EXPECT_EQ(drawn[i].units[0].generation, GL_SPHERE_MAP);
            EXPECT_EQ(drawn[i].units[1].texture, textureOf(laser));
            EXPECT_EQ(drawn[i].units[1].generation, GL_OBJECT_LINEAR);
            EXPECT_EQ(drawn[i].units[1].mode, GL_ADD);
            EXPECT_EQ(drawn[i].units[2].on, i == 2) << "only the screen shows its face";
        }
        EXPECT_EQ(drawn[2].units[2].texture, textureOf("roboscreen"));
        EXPECT_EQ(drawn[2].units[2].mode, GL_ADD);
        EXPECT_EQ(unitState(2).mode, GL_MODULATE);
    }
}

TEST_F(RoboTest, DiscIsAHexagonWithAHundredRays) {
    goTo(100);
    const Feedback picture = drawAt(0.5f, 0);
    EXPECT_EQ(uniform("color"), (std::vector{0.8f, 0.1f, 0.1f, 1.f}));
    EXPECT_FLOAT_EQ(uniform("time")[0], 0.9f);
    EXPECT_FLOAT_EQ(uniform("time2")[0], 40);
    ASSERT_EQ(picture.lines.size(), 100u);
    for (int i = 0; i < 100; i++) {
        EXPECT_NEAR(picture.lines[i][1].x, 400 + 100 * std::cos(i * 0.0628318531), 1e-3);
        EXPECT_NEAR(picture.lines[i][1].y, 390, 1e-3);
    }
    drawAt(0.5f, 0.5f);
    EXPECT_EQ(uniform("color"), (std::vector{0.f, 0.8f, 0.3f, 1.f})) << "any mode but 0 is active";

    // Seen from above: a corner at the top, flat sides left and right.
    glRotatef(90, 1, 0, 0);
    const Feedback above = drawAt(0.5f, 1);
    float right = 0, top = 0;
    for (const auto& polygon : above.polygons) {
        for (const auto& vertex : polygon) {
            right = std::max(right, vertex.x - 400);
            top = std::max(top, vertex.y - 300);
        }
    }
    EXPECT_NEAR(top, 100, 1e-3f) << "a corner";
    EXPECT_NEAR(right, 86.6025f, 1e-3f) << "a flat side";
}

}  // namespace
