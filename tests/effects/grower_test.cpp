// The tree of points.
#include "effects/grower.h"

#include <cstdlib>

#include "tests/effects/effect_window.h"

namespace {

struct GrowerTest : PixelWindow {};

TEST_F(GrowerTest, GrowsWithRoomForFourAndBobs) {
    Grower tree(demo);
    for (int i = 0; i < 500; i++) tree.grow();
    ASSERT_EQ(tree.nodeCount, 501);
    std::vector<int> parents(501);
    for (int i = 0; i < tree.nodeCount; i++) {
        ASSERT_LE(tree.nodes[i].childCount, 4);
        for (int c = 0; c < tree.nodes[i].childCount; c++) {
            EXPECT_GT(tree.nodes[i].children[c], i) << "children come after their parent";
            parents[tree.nodes[i].children[c]]++;
        }
    }
    EXPECT_EQ(parents[0], 0);
    for (int i = 1; i < tree.nodeCount; i++) EXPECT_EQ(parents[i], 1) << i;

    goTo(1);
    const Feedback picture = feedbackOf([&] { tree.draw(); });
    ASSERT_EQ(picture.points.size(), 501u);
    EXPECT_NEAR(picture.points[500].y, 300 + 25.2441f, 1e-3f);
    EXPECT_EQ(stateOf(GL_POINT_SIZE), 15);
}

}  // namespace
