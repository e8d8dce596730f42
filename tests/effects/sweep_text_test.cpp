// The lettering that a soft edge reveals, and the rays from the edge.
#include "effects/sweep_text.h"

#include <cmath>

#include "tests/effects/effect_window.h"

namespace {

struct SweepTextTest : PixelWindow {};

// How bright the picture is in the row at `y`, at its left edge, where the rays are a few pixels high.
float revealed(float y) {
    return readPixel(301, 300 + int(y)).g / 255.f;
}

TEST_F(SweepTextTest, RevealsThePictureDownToItsSoftEdge) {
    addSolidTexture("start", {255, 255, 255, 255});
    SweepText sweep(demo, "start");
    for (float seconds : {2.f, 5.f, 7.f}) {
        goTo(seconds);
        glClear(GL_COLOR_BUFFER_BIT);
        sweep.draw();
        const double middle = 0.5 * std::sin(0.3 * seconds + 36.52) + 0.5;
        const auto heightOf = [](double row) { return float(100 - 200 * row); };
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

}  // namespace
