// What single effects have of their own beside what the record of the show holds: the third texture unit, and
// what no scene draws.
#include <cmath>

#include "effects/fake_stripes.h"
#include "effects/grower.h"
#include "effects/robo.h"
#include "effects/soft_shadow.h"
#include "effects/sweep_text.h"
#include "tests/effects/effect_window.h"

namespace {

struct SingleEffects : PixelWindow {};

TEST_F(SingleEffects, StripesAreCutByHeightOnTheScreen) {
    addTextures({"shiptex", "envmap"});
    // A hole in the lower half of every 500 units.
    addTexture("koe", 1, 2, {{255, 255, 255, 0}, {255, 255, 255, 255}});
    addBox("haromalli", 150, 150, 150);
    goTo(40);
    FakeStripes(demo, "haromalli", "koe").drawAt(0, 0);
    const Screen screen = readScreen();
    int above = 0, below = 0;
    for (int y = 0; y < screenHeight; y++)
        for (int x = 0; x < screenWidth; x++) (y < 300 ? below : above) += screen.at(x, y).r > 0;
    EXPECT_EQ(above, 0) << "0 to 250 units up is the first row of the texture";
    EXPECT_GT(below, 30000);
}

TEST_F(SingleEffects, OnlyTheRobotsScreenShowsItsFace) {
    addTextures({"envmap2", "envmap3", "lasertex2", "roboscreen", "noise1"});
    for (const char* key : {"robo body", "robo arms", "robo screen", "ring"}) addBox(key, 30, 30, 30);
    demo->loadShader("production/shaders/smoke", "smoke");
    Robo(demo).drawAt(0, 1);
    ASSERT_EQ(drawn.size(), 4u);
    for (const MeshDraw& draw : drawn) EXPECT_EQ(draw.third.on, draw.key == "robo screen") << draw.key;
    EXPECT_EQ(drawn[2].third.texture, GLint(demo->texture("roboscreen")));
    EXPECT_EQ(drawn[2].third.mode, GL_ADD);
    EXPECT_EQ(unitState(2).mode, GL_MODULATE);
}

TEST_F(SingleEffects, AGrowerIsATreeWithRoomForFourThatBobs) {
    Grower tree(demo);
    for (int i = 0; i < 500; i++) tree.grow();
    ASSERT_EQ(tree.nodeCount, 501);
    std::vector<int> parents(501);
    for (int i = 0; i < tree.nodeCount; i++) {
        ASSERT_LE(tree.nodes[i].childCount, 4);
        for (int c = 0; c < tree.nodes[i].childCount; c++) parents[tree.nodes[i].children[c]]++;
    }
    EXPECT_EQ(parents[0], 0);
    EXPECT_EQ(std::count(parents.begin() + 1, parents.end(), 1), 500);

    goTo(1);
    const Feedback picture = feedbackOf([&] { tree.draw(); });
    ASSERT_EQ(picture.points.size(), 501u);
    EXPECT_NEAR(picture.points[500].y, 300 + 25.2441f, 1e-3f);
}

TEST_F(SingleEffects, ASoftShadowIsABoxBlurredAside) {
    addBox("laatikko", 40, 40, 40);
    goTo(0.5f);
    SoftShadow(demo).draw();
    EXPECT_EQ(readTexture("rtt5").at(400, 400), (Pixel{255, 255, 0, 255}));
    EXPECT_EQ(readTexture("rtt6").width, 256);
    EXPECT_EQ(readScreen().litCount(), 0);
}

TEST_F(SingleEffects, ARowOfSweptTextHasAHardEdge) {
    addSolidTexture("start", {255, 255, 255, 255});
    SweepText(demo, "start").drawRow(0.5f, 0.25f, 0.6f);
    // At the left edge, where the rays are a few pixels high.
    EXPECT_NEAR(readPixel(301, 380).g, 0.6 * 255, 5);
    EXPECT_NEAR(readPixel(301, 255).g, 0.6 * 255, 5);
    EXPECT_LT(readPixel(301, 245).g, 0.35 * 255);
}

}  // namespace
