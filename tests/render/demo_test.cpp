// The demo object itself: what its camera and its lights do that no scene makes them do.
#include <cstdlib>
#include <vector>

#include "geometry/matrix4.h"
#include "render/random.h"
#include "tests/gl_window.h"

namespace {

class DemoObject : public GlWindow {};

Matrix4 viewOf(bool leftEye) {
    Matrix4 view;
    demo->applyCamera(leftEye);
    glGetFloatv(GL_MODELVIEW_MATRIX, view.m);
    return view;
}

struct ColourMask {
    GLboolean r, g, b, a;
    bool operator==(const ColourMask&) const = default;
};

ColourMask colourMask() {
    GLboolean mask[4];
    glGetBooleanv(GL_COLOR_WRITEMASK, mask);
    return {mask[0], mask[1], mask[2], mask[3]};
}

TEST_F(DemoObject, StereoTurnsTheEyesInwardsAndSplitsTheColours) {
    EXPECT_EQ(viewOf(true).m[12], 0) << "without stereo both eyes are one";
    EXPECT_EQ(colourMask(), (ColourMask{1, 1, 1, 1}));
    demo->setStereo(true);
    demo->setEyeSeparation(1);

    // From (-1, 0, 2) to (1, 0, 0) and the mirror image of that: each looks 45 degrees inwards.
    const Matrix4 left = viewOf(true);
    EXPECT_EQ(colourMask(), (ColourMask{1, 0, 0, 1}));
    const Matrix4 right = viewOf(false);
    EXPECT_EQ(colourMask(), (ColourMask{0, 1, 1, 1}));
    EXPECT_NEAR(left.m[8], 0.70710678f, 1e-6f);
    EXPECT_NEAR(right.m[8], -0.70710678f, 1e-6f);
    EXPECT_NEAR(left.m[12], -right.m[12], 1e-6f);
    demo->endFrame();
    EXPECT_EQ(colourMask(), (ColourMask{1, 1, 1, 1})) << "the next frame is cleared whole";
}

TEST_F(DemoObject, OneLightSwitchesLightingOnWithAllThatItIs) {
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT3);
    demo->endFrame();
    EXPECT_FALSE(glIsEnabled(GL_LIGHTING));
    EXPECT_FALSE(glIsEnabled(GL_LIGHT3));

    Light& light = demo->lights[2];
    light.enabled = true;
    light.spotCutoff = 30;
    light.spotExponent = 4;
    glTranslatef(10, 0, 0);
    demo->endFrame();
    EXPECT_TRUE(glIsEnabled(GL_LIGHTING)) << "by one light, though the ones after it are off";
    EXPECT_TRUE(glIsEnabled(GL_LIGHT2));
    const auto valueOf = [](GLenum property) {
        float values[4];
        glGetLightfv(GL_LIGHT2, property, values);
        return values[0];
    };
    EXPECT_EQ(valueOf(GL_POSITION), 12) << "seen from the model-view matrix in force";
    EXPECT_EQ(valueOf(GL_SPOT_CUTOFF), 30);
    EXPECT_EQ(valueOf(GL_SPOT_EXPONENT), 4);
}

// Whatever else is drawn from the process's own sequence, as drivers do.
TEST(RandomNumbers, AreThoseOfAnUnseededRand) {
    srand(1);
    std::vector<int> expected(1000), numbers(1000);
    for (int& number : expected) number = rand();
    restartRandomNumbers();
    for (int& number : numbers) {
        number = randomNumber();
        rand();
    }
    EXPECT_EQ(numbers, expected);
}

}  // namespace
