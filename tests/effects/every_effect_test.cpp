// What every effect owes the scenes: something to see at any time, no GL error, balanced stacks (the window
// checks both), and exactly the state behind it that draws after it count on.
#include <cstdlib>

#include "effects/cube_heap.h"
#include "effects/fake_stripes.h"
#include "effects/grower.h"
#include "effects/huone.h"
#include "effects/laser.h"
#include "effects/laser_tunnel.h"
#include "effects/probes.h"
#include "effects/robo.h"
#include "effects/sample_laser.h"
#include "effects/soft_shadow.h"
#include "effects/sweep_text.h"
#include "effects/tunnel.h"
#include "tests/effects/effect_window.h"

namespace {

// What an effect leaves of the state it is drawn from: as the defaults here, where it touches nothing.
struct Row {
    const char* name;
    EffectBase* (*make)();
    bool culled = true;
    bool lit = true;
    bool blended = false;
    bool depthTested = true;
    bool twoSided = false;
    GLint unit1Mode = GL_MODULATE;
    float lineWidth = 2;  // pixels
    // Textures of units 0 to 2; nullptr: as it found them.
    const char* textures[3] = {};
    const char* picture = nullptr;  // the target it draws to, if it isn't the screen
};

const Row rows[] = {
    {.name = "Huone",
     .make = []() -> EffectBase* { return new Huone(demo, "spot"); },
     .culled = false,
     .lit = false,
     .unit1Mode = GL_ADD,
     .lineWidth = 8,
     .textures = {"spot", "envmap4"}},
    {.name = "LaserTunnel",
     .make = []() -> EffectBase* { return new LaserTunnel(demo, "spot"); },
     .culled = false,
     .lit = false,
     .unit1Mode = GL_ADD,
     .lineWidth = 8,
     .textures = {"spot", "envmap"}},
    {.name = "Laser",
     .make = []() -> EffectBase* { return new Laser(demo, "spot"); },
     .culled = false,
     .lit = false,
     .lineWidth = 4,
     .textures = {"spot"}},
    {.name = "CubeHeap",
     .make = []() -> EffectBase* { return new CubeHeap(demo, "laatikko"); },
     .unit1Mode = GL_ADD,
     .textures = {"shiptex", "envmap"}},
    {.name = "FakeStripes",
     .make = []() -> EffectBase* { return new FakeStripes(demo, "haromalli", "koe"); },
     .lit = false,
     .twoSided = true,
     .unit1Mode = GL_ADD,
     .textures = {"shiptex", "envmap", "koe"}},
    {.name = "Grower", .make = []() -> EffectBase* { return new Grower(demo); }},
    {.name = "Robo",
     .make = []() -> EffectBase* { return new Robo(demo); },
     .blended = true,
     .textures = {"noise1", "lasertex", "roboscreen"}},
    {.name = "Probes",
     .make = []() -> EffectBase* { return new Probes(demo); },
     .lit = false,
     .lineWidth = 6,
     .textures = {"shiptex", "envmap"}},
    {.name = "SweepText",
     .make = []() -> EffectBase* { return new SweepText(demo, "start"); },
     .depthTested = false,
     .textures = {"start"}},
    {.name = "Tunnel",
     .make = []() -> EffectBase* { return new Tunnel(demo); },
     .culled = false,
     .unit1Mode = GL_ADD,
     .textures = {"cubetex", "envmap"}},
    {.name = "SampleLaser",
     .make = []() -> EffectBase* { return new SampleLaser(demo, "laatikko", 0); },
     .lit = false,
     .textures = {"pinkLaser"}},
    {.name = "SoftShadow",
     .make = []() -> EffectBase* { return new SoftShadow(demo); },
     .textures = {"rtt6"},
     .picture = "rtt6"},
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

class EveryEffect : public EffectWindow, public testing::WithParamInterface<Row> {
public:
    void SetUp() override {
        EffectWindow::SetUp();
        addTextures({"shiptex", "cubetex", "envmap", "envmap2", "envmap3", "envmap4", "lasertex", "lasertex2",
                     "roboscreen", "noise1", "spot", "koe", "start", "pinkLaser", "before"});
        demo->loadShader("production/shaders/smoke", "smoke");
        addBox("huone", 400, 300, 400, true);
        addBox("huone2", 400, 300, 400, true);
        addBox("tunnel", 280, 280, 150, true);
        addBox("laatikko", 55, 9, 22);
        for (const char* key : {"tykki", "pallero", "pallero2", "ship", "haromalli", "block", "robo body",
                                "robo arms", "robo screen", "ring", "palikka"})
            addBox(key, 30, 30, 30);
    }

    static std::string nameOf(GLint texture) {
        for (const auto& [name, record] : demo->textureNames)
            if (GLint(demo->textures[record].texture) == texture) return name;
        return "none";
    }

    static void setScene() {
        demo->setCameraEye(0, 60, 250);
        demo->setCameraTarget(0, 0, 0);
        demo->applyCamera(false);
        for (GLenum unit : {GL_TEXTURE2, GL_TEXTURE1, GL_TEXTURE0}) {
            glActiveTexture(unit);
            glBindTexture(GL_TEXTURE_2D, demo->texture("before"));
        }
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glColor3f(1, 1, 1);
        glLineWidth(2);
        for (GLenum state : {GL_LIGHTING, GL_LIGHT0, GL_CULL_FACE, GL_DEPTH_TEST, GL_TEXTURE_2D})
            glEnable(state);
        glDisable(GL_BLEND);
    }
};

TEST_P(EveryEffect, IsSeenAndLeavesWhatItShould) {
    const Row& row = GetParam();
    std::unique_ptr<EffectBase> effect(row.make());
    // Behind the beat, on it, across it, after a seek forwards and one backwards.
    for (float seconds : {0.f, 17.137f, 17.139f, 17.3f, 150.f, 80.f}) {
        SCOPED_TRACE(seconds);
        goTo(seconds);
        setScene();
        effect->draw();
        effect->drawAt(0.4f, 0);
        EXPECT_GT((row.picture ? readTexture(row.picture) : readScreen()).litCount(), 50);
    }
    EXPECT_EQ(glIsEnabled(GL_CULL_FACE), row.culled);
    EXPECT_EQ(glIsEnabled(GL_LIGHTING), row.lit);
    EXPECT_EQ(glIsEnabled(GL_BLEND), row.blended);
    EXPECT_EQ(glIsEnabled(GL_DEPTH_TEST), row.depthTested);
    EXPECT_EQ(stateOf(GL_LIGHT_MODEL_TWO_SIDE), row.twoSided);
    EXPECT_EQ(stateOf(GL_LINE_WIDTH), row.lineWidth);
    EXPECT_EQ(unitState(1).mode, row.unit1Mode);
    for (int unit : {0, 1, 2})
        EXPECT_EQ(nameOf(unitState(unit).texture), row.textures[unit] ? row.textures[unit] : "before")
            << unit;
    for (GLenum face : {GL_FRONT, GL_BACK}) {
        std::vector<float> emission(4);
        glGetMaterialfv(face, GL_EMISSION, emission.data());
        EXPECT_EQ(emission, std::vector<float>({0, 0, 0, 1}));
    }

    EXPECT_EQ(stateOf(GL_ACTIVE_TEXTURE), GL_TEXTURE0);
    EXPECT_EQ(stateOf(GL_MATRIX_MODE), GL_MODELVIEW);
    EXPECT_TRUE(stateOf(GL_DEPTH_WRITEMASK));
    for (GLenum state : {GL_LINE_SMOOTH, GL_POLYGON_OFFSET_FILL, GL_ALPHA_TEST})
        EXPECT_FALSE(glIsEnabled(state));
    EXPECT_TRUE(unitState(0).on);
    EXPECT_EQ(unitState(0).mode, GL_MODULATE);
    EXPECT_EQ(unitState(0).generated, 0);
    for (int unit : {1, 2}) {
        EXPECT_FALSE(unitState(unit).on);
        EXPECT_EQ(unitState(unit).generated, 0);
    }
}

INSTANTIATE_TEST_SUITE_P(, EveryEffect, testing::ValuesIn(rows),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
