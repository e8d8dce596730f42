// What every effect owes the scenes: something to see at any time, no GL error, balanced stacks (the window
// checks both), and units, matrices and writing as draws after it count on.
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

struct Row {
    const char* name;
    EffectBase* (*make)();
    const char* picture = nullptr;  // the target it draws to, if it isn't the screen
};

const Row rows[] = {
    {"Huone", []() -> EffectBase* { return new Huone(demo, "spot"); }},
    {"LaserTunnel", []() -> EffectBase* { return new LaserTunnel(demo, "spot"); }},
    {"Laser", []() -> EffectBase* { return new Laser(demo, "spot"); }},
    {"CubeHeap", []() -> EffectBase* { return new CubeHeap(demo, "laatikko"); }},
    {"FakeStripes", []() -> EffectBase* { return new FakeStripes(demo, "haromalli", "koe"); }},
    {"Grower", []() -> EffectBase* { return new Grower(demo); }},
    {"Robo", []() -> EffectBase* { return new Robo(demo); }},
    {"Probes", []() -> EffectBase* { return new Probes(demo); }},
    {"SweepText", []() -> EffectBase* { return new SweepText(demo, "start"); }},
    {"Tunnel", []() -> EffectBase* { return new Tunnel(demo); }},
    {"SampleLaser", []() -> EffectBase* { return new SampleLaser(demo, "laatikko", 0); }},
    {"SoftShadow", []() -> EffectBase* { return new SoftShadow(demo); }, "rtt6"},
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

class EveryEffect : public EffectWindow, public testing::WithParamInterface<Row> {
public:
    void SetUp() override {
        EffectWindow::SetUp();
        addTextures({"shiptex", "cubetex", "envmap", "envmap2", "envmap3", "envmap4", "lasertex", "lasertex2",
                     "roboscreen", "noise1", "spot", "koe", "start", "pinkLaser"});
        demo->loadShader("production/shaders/smoke", "smoke");
        addBox("huone", 400, 300, 400, true);
        addBox("huone2", 400, 300, 400, true);
        addBox("tunnel", 280, 280, 150, true);
        addBox("laatikko", 55, 9, 22);
        for (const char* key : {"tykki", "pallero", "pallero2", "ship", "haromalli", "block", "robo body",
                                "robo arms", "robo screen", "ring", "palikka"})
            addBox(key, 30, 30, 30);
    }

    static void setScene() {
        demo->setCameraEye(0, 60, 250);
        demo->setCameraTarget(0, 0, 0);
        demo->applyCamera(false);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glColor3f(1, 1, 1);
        for (GLenum state : {GL_LIGHTING, GL_LIGHT0, GL_CULL_FACE, GL_DEPTH_TEST, GL_TEXTURE_2D})
            glEnable(state);
        glDisable(GL_BLEND);
    }
};

TEST_P(EveryEffect, IsSeenAndLeavesWhatItShould) {
    std::unique_ptr<EffectBase> effect(GetParam().make());
    // Behind the beat, on it, across it, after a seek forwards and one backwards.
    for (float seconds : {0.f, 17.137f, 17.139f, 17.3f, 150.f, 80.f}) {
        SCOPED_TRACE(seconds);
        goTo(seconds);
        setScene();
        effect->draw();
        effect->drawAt(0.4f, 0);
        const char* picture = GetParam().picture;
        EXPECT_GT((picture ? readTexture(picture) : readScreen()).litCount(), 50);
    }
    EXPECT_EQ(stateOf(GL_ACTIVE_TEXTURE), GL_TEXTURE0);
    EXPECT_EQ(stateOf(GL_MATRIX_MODE), GL_MODELVIEW);
    EXPECT_TRUE(stateOf(GL_DEPTH_WRITEMASK));
    for (GLenum state : {GL_LINE_SMOOTH, GL_POLYGON_OFFSET_FILL, GL_ALPHA_TEST})
        EXPECT_FALSE(glIsEnabled(state));
    for (int unit : {2, 1, 0}) {
        glActiveTexture(GL_TEXTURE0 + unit);
        EXPECT_EQ(glIsEnabled(GL_TEXTURE_2D), unit == 0);
        EXPECT_FALSE(glIsEnabled(GL_TEXTURE_GEN_S) || glIsEnabled(GL_TEXTURE_GEN_T));
    }
}

INSTANTIATE_TEST_SUITE_P(, EveryEffect, testing::ValuesIn(rows),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
