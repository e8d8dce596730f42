// What single effects have that no scene draws, so that the record of the show does not hold it.

#include "effects/grower.h"
#include "effects/soft_shadow.h"
#include "effects/sweep_text.h"
#include "tests/effects/effect_window.h"

namespace {

struct SingleEffects : PixelWindow {};

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
