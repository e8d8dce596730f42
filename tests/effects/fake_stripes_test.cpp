// The model that a texture cuts into stripes.
#include "effects/fake_stripes.h"

#include "tests/effects/effect_window.h"

namespace {

struct FakeStripesTest : PixelWindow {};

TEST_F(FakeStripesTest, IsCutByHeightOnTheScreen) {
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
        for (int y = 0; y < 600; y++)
            for (int x = 0; x < 800; x++) (y < 300 ? below : above) += screen.at(x, y).r > 0;
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

}  // namespace
