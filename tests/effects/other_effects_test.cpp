// Stripes, sweep text, the growing tree and the soft shadow.
#include <cmath>
#include <cstdlib>

#include "effects/fake_stripes.h"
#include "effects/grower.h"
#include "effects/soft_shadow.h"
#include "effects/sweep_text.h"
#include "tests/effects/effect_window.h"

namespace {

struct OtherEffects : EffectWindow {
    void SetUp() override {
        EffectWindow::SetUp();
        usePixelProjection();
    }
};

TEST_F(OtherEffects, StripesAreCutByHeightOnTheScreen) {
    addTextures({"shiptex", "envmap"});
    // A hole in the lower half of every 500 units.
    addTexture("koe", 1, 2, {{255, 255, 255, 0}, {255, 255, 255, 255}});
    demo->textures[demo->textureIndex("koe")].textureHeight = 2;
    addBox("haromalli", 150, 150, 150);
    FakeStripes stripes(demo, "haromalli", "koe");
    for (float seconds : {0.f, 40.f}) {
        goTo(seconds);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        stripes.drawAt(0, 0);
        const Screen screen = readScreen();
        int above = 0, below = 0;
        for (int y = 0; y < 600; ++y)
            for (int x = 0; x < 800; ++x) (y < 300 ? below : above) += screen.at(x, y).r > 0;
        EXPECT_EQ(above, 0) << "0 to 250 units up is the first row of the texture";
        EXPECT_GT(below, 30000);
    }
    ASSERT_EQ(drawn.size(), 2u);
    EXPECT_EQ(drawn[1].units[2].generation, GL_EYE_LINEAR);
    EXPECT_TRUE(drawn[1].lit);
    stripes.drawAt(1.5707964f, 40);
    EXPECT_NEAR(drawn[2].modelView.m[12], 0, 1e-4f);
    EXPECT_NEAR(drawn[2].modelView.m[13], 40, 1e-4f);
}

// How bright the picture is in the row at `y`, at its left edge, where the rays are a few pixels high.
float revealed(float y) {
    return readPixel(301, 300 + static_cast<int>(y)).g / 255.f;
}

TEST_F(OtherEffects, SweepRevealsThePictureDownToItsSoftEdge) {
    addSolidTexture("start", {255, 255, 255, 255});
    SweepText sweep(demo, "start");
    for (float seconds : {2.f, 5.f, 7.f}) {
        goTo(seconds);
        glClear(GL_COLOR_BUFFER_BIT);
        sweep.draw();
        const double middle = 0.5 * std::sin(0.3 * seconds + 36.52) + 0.5;
        const auto heightOf = [](double row) { return static_cast<float>(100 - 200 * row); };
        EXPECT_GT(revealed(heightOf(middle - 0.06)), 0.97f) << seconds;
        EXPECT_NEAR(revealed(heightOf(middle)), 0.5f, 0.15f) << seconds;
        EXPECT_LT(revealed(heightOf(middle + 0.07)), 0.05f) << seconds;
    }
    goTo(0.2f);  // the edge is at the very top
    glClear(GL_COLOR_BUFFER_BIT);
    sweep.draw();
    EXPECT_NEAR(readPixel(400, 370).g, 128, 4) << "all sixteen rays, on their way to a height of 50";
    glClear(GL_COLOR_BUFFER_BIT);
    sweep.drawRow(0.5f, 0.25f, 0.6f);
    EXPECT_NEAR(revealed(80), 0.6f, 0.02f);
    EXPECT_NEAR(revealed(-45), 0.6f, 0.02f);
    EXPECT_LT(revealed(-55), 0.35f);
}

TEST_F(OtherEffects, TreeGrowsWithRoomForFourAndBobs) {
    Grower tree(demo);
    for (int i = 0; i < 500; ++i) tree.grow();
    ASSERT_EQ(tree.nodeCount, 501);
    std::vector<int> parents(501);
    for (int i = 0; i < tree.nodeCount; ++i) {
        ASSERT_LE(tree.nodes[i].childCount, 4);
        for (int c = 0; c < tree.nodes[i].childCount; ++c) {
            EXPECT_GT(tree.nodes[i].children[c], i) << "children come after their parent";
            parents[tree.nodes[i].children[c]]++;
        }
    }
    EXPECT_EQ(parents[0], 0);
    for (int i = 1; i < tree.nodeCount; ++i) EXPECT_EQ(parents[i], 1) << i;

    goTo(1);
    const Feedback picture = feedbackOf([&] { tree.draw(); });
    ASSERT_EQ(picture.points.size(), 501u);
    EXPECT_NEAR(picture.points[500].y, 300 + 25.2441f, 1e-3f);
    EXPECT_EQ(stateOf(GL_POINT_SIZE), 15);
}

TEST_F(OtherEffects, ShadowIsAYellowBoxBlurredAside) {
    addBox("laatikko", 40, 40, 40);
    goTo(0.5f);
    SoftShadow(demo).draw();
    const Screen sharp = readTexture("rtt5");
    EXPECT_EQ(sharp.at(400, 400), (Pixel{255, 255, 0, 255}));
    const Screen soft = readTexture("rtt6");
    EXPECT_EQ(soft.width, 256);
    EXPECT_EQ(readScreen().litCount(), 0);
    // Half way up the blurred edge there are colours that the box doesn't have.
    int between = 0;
    for (const Pixel& p : soft.pixels) between += p.r > 20 && p.r < 235 && p.b == 0;
    EXPECT_GT(between, 50);
}

}  // namespace
