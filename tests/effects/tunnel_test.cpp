// The endless tunnel: ten copies that take each other's places from beat to beat.
#include "effects/tunnel.h"

#include <cmath>

#include "tests/effects/effect_window.h"

namespace {

struct TunnelTest : EffectWindow {
    void SetUp() override {
        EffectWindow::SetUp();
        addTextures({"cubetex", "envmap"});
        addBox("tunnel", 200, 200, 150, true);
    }

    std::vector<MeshDraw> drawAt(float seconds) {
        demo->clock.currentTime = seconds;
        drawn.clear();
        Tunnel(demo).draw();
        return drawn;
    }
};

TEST_F(TunnelTest, StandsInARowTurnedByPointEightRadians) {
    const auto row = drawAt(0);
    ASSERT_EQ(row.size(), 10u);
    for (int i = -4; i <= 5; i++) {
        const Matrix4& m = row[i + 4].modelView;
        EXPECT_EQ(m.m[14], -150 - 300.f * float(i));
        EXPECT_NEAR(m.m[0], std::cos(0.8 * i), 1e-5);
        EXPECT_NEAR(m.m[1], std::sin(0.8 * i), 1e-5);
        EXPECT_TRUE(row[i + 4].culled);
        EXPECT_TRUE(row[i + 4].units[1].on);
        EXPECT_EQ(row[i + 4].units[1].generated, 2);
        EXPECT_EQ(row[i + 4].units[1].mode, GL_ADD);
    }
}

TEST_F(TunnelTest, IsContinuousAcrossBeats) {
    for (int beat : {1, 37, 128}) {
        SCOPED_TRACE(beat);
        const float onBeat = float(beat) / 2.1f;
        const auto before = drawAt(onBeat - 0.0005f);
        const auto after = drawAt(onBeat + 0.0005f);
        // 630 units and a fifth of a radian a second: the step takes a thousandth of it.
        for (int i = 1; i < 10; i++) expectMatrixNear(after[i - 1].modelView, before[i].modelView, 0.7f);
        for (int element : {0, 1, 4, 5})
            EXPECT_NEAR(after[3].modelView.m[element], before[4].modelView.m[element], 0.001f);
        EXPECT_GT(after[3].modelView.m[14], before[4].modelView.m[14]) << "towards the viewer";
    }
}

}  // namespace
