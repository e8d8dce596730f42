// The box whose picture is blurred aside.
#include "effects/soft_shadow.h"

#include "tests/effects/effect_window.h"

namespace {

struct SoftShadowTest : PixelWindow {};

TEST_F(SoftShadowTest, IsAYellowBoxBlurredAside) {
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
