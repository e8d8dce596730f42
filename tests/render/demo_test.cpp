// The demo object itself: what it starts with, its camera, its housekeeping and the loading screen.
#include <array>
#include <cmath>
#include <cstdlib>
#include <vector>

#include "render/random.h"
#include "tests/gl_window.h"
#include "tests/scratch.h"

namespace {

class DemoObject : public GlWindow {};

using Matrix = std::array<float, 16>;

Matrix matrixOf(GLenum name) {
    Matrix m;
    glGetFloatv(name, m.data());
    return m;
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

TEST_F(DemoObject, StartsWithEmptyTargetsAndLightsInARow) {
    EXPECT_EQ(demo->textureNames.size(), 10u);
    EXPECT_EQ(demo->textureIndex("rtt0"), 90);
    EXPECT_EQ(demo->textureIndex("rtt9"), 99);
    const Texture& target = demo->textures[95];
    EXPECT_EQ(target.width, 1024);
    EXPECT_EQ(target.height, 768);
    EXPECT_EQ(target.textureWidth, 1024);
    EXPECT_EQ(readTexture("rtt5").width, 1024);
    EXPECT_EQ(readTexture("rtt5").height, 1024);
    GLint filter;
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, &filter);
    EXPECT_EQ(filter, GL_NEAREST);
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, &filter);
    EXPECT_EQ(filter, GL_LINEAR);

    EXPECT_EQ(demo->lights[7].position[1], 7);
    EXPECT_EQ(demo->lights[7].position[2], -3);
    EXPECT_EQ(demo->lights[7].position[3], 1) << "a positional light";
    using Colour = std::array<float, 4>;
    for (const Light& light : demo->lights) {
        EXPECT_EQ(std::to_array(light.ambient), (Colour{0.5f, 0.5f, 0.5f, 1}));
        EXPECT_EQ(std::to_array(light.diffuse), (Colour{0.9f, 0.9f, 0.9f, 1}));
        EXPECT_EQ(std::to_array(light.specular), (Colour{1, 1, 1, 1}));
        EXPECT_FALSE(light.enabled);
    }
    EXPECT_EQ(demo->clock.bpm, 140);
}

TEST_F(DemoObject, CameraLooksFromTheEyeAtTheTargetInASquare) {
    demo->setCameraEye(0, 0, 5);
    demo->setCameraTarget(0, 0, -5);
    demo->setFov(60);
    glMatrixMode(GL_MODELVIEW);
    glTranslatef(1, 2, 3);
    demo->applyCamera(false);

    const Matrix view = matrixOf(GL_MODELVIEW_MATRIX);
    EXPECT_FLOAT_EQ(view[0], 1);
    EXPECT_FLOAT_EQ(view[14], -5) << "what was there before is gone";
    const Matrix projection = matrixOf(GL_PROJECTION_MATRIX);
    const float cotangent = 1.7320508f;
    EXPECT_FLOAT_EQ(projection[0], cotangent) << "aspect 1 in a window of 4:3";
    EXPECT_FLOAT_EQ(projection[5], cotangent);
    EXPECT_FLOAT_EQ(projection[14], -2 * 0.1f * 10000 / (10000 - 0.1f));
    EXPECT_EQ(stateOf(GL_MATRIX_MODE), GL_MODELVIEW);

    glColorMask(0, 0, 0, 0);
    demo->applyCamera(true);
    EXPECT_EQ(matrixOf(GL_MODELVIEW_MATRIX), view) << "without stereo both eyes are one";
    EXPECT_EQ(colourMask(), (ColourMask{1, 1, 1, 1}));
}

TEST_F(DemoObject, StereoTurnsTheEyesInwardsAndSplitsTheColours) {
    demo->setCameraEye(0, 0, 2);
    demo->setCameraTarget(0, 0, 0);
    demo->setStereo(true);
    demo->setEyeSeparation(1);

    // From (-1, 0, 2) to (1, 0, 0) and the mirror image of that: each looks 45 degrees inwards.
    demo->applyCamera(true);
    const Matrix left = matrixOf(GL_MODELVIEW_MATRIX);
    EXPECT_EQ(colourMask(), (ColourMask{1, 0, 0, 1}));
    demo->applyCamera(false);
    const Matrix right = matrixOf(GL_MODELVIEW_MATRIX);
    EXPECT_EQ(colourMask(), (ColourMask{0, 1, 1, 1}));
    EXPECT_NEAR(left[8], 0.70710678f, 1e-6f);
    EXPECT_NEAR(right[8], -0.70710678f, 1e-6f);
    EXPECT_NEAR(left[12], -right[12], 1e-6f);
    demo->endFrame();
    EXPECT_EQ(colourMask(), (ColourMask{1, 1, 1, 1})) << "the next frame is cleared whole";
}

TEST_F(DemoObject, HousekeepingSwitchesLightingWithTheLights) {
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT3);
    demo->endFrame();
    EXPECT_FALSE(glIsEnabled(GL_LIGHTING));
    EXPECT_FALSE(glIsEnabled(GL_LIGHT3));

    Light& light = demo->lights[2];
    light.enabled = true;
    light.diffuse[0] = 0.25f;
    light.spotCutoff = 30;
    light.spotExponent = 4;
    glTranslatef(10, 0, 0);
    demo->endFrame();
    EXPECT_TRUE(glIsEnabled(GL_LIGHTING)) << "by one light, though the ones after it are off";
    EXPECT_TRUE(glIsEnabled(GL_LIGHT2));
    EXPECT_FALSE(glIsEnabled(GL_LIGHT0));
    float values[4];
    glGetLightfv(GL_LIGHT2, GL_POSITION, values);
    EXPECT_EQ(values[0], 12) << "seen from the model-view matrix in force";
    glGetLightfv(GL_LIGHT2, GL_DIFFUSE, values);
    EXPECT_EQ(values[0], 0.25f);
    glGetLightfv(GL_LIGHT2, GL_AMBIENT, values);
    EXPECT_EQ(values[1], 0.5f);
    glGetLightfv(GL_LIGHT2, GL_SPOT_CUTOFF, values);
    EXPECT_EQ(values[0], 30);
    glGetLightfv(GL_LIGHT2, GL_SPOT_EXPONENT, values);
    EXPECT_EQ(values[0], 4);
}

TEST_F(DemoObject, HousekeepingCountsFramesAndRunsTheBeat) {
    music.ms = 17000;
    demo->clock.update();
    demo->endFrame();
    demo->endFrame();
    EXPECT_EQ(demo->clock.frameCount, 2);
    EXPECT_EQ(demo->clock.beatCount, 1);
    EXPECT_EQ(demo->clock.beatPulse(), 1);
}

TEST_F(DemoObject, LoadingScreenIsThePictureUnderItsTintedCopy) {
    addSolidTexture("loading", Pixel{100, 100, 100, 255});
    glClearColor(1, 1, 1, 1);
    restartRandomNumbers();
    demo->drawLoadingScreen();
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
    EXPECT_FALSE(glIsEnabled(GL_BLEND));

    const Screen first = readWindow();
    // Under the start-up projection the picture takes three quarters of the width, and its copy 2 % more.
    EXPECT_EQ(first.at(50, 300), (Pixel{0, 0, 0, 255}));
    EXPECT_EQ(first.at(750, 300), (Pixel{0, 0, 0, 255}));
    const Pixel tinted = first.at(400, 300);
    const Pixel rim = first.at(97, 300);
    restartRandomNumbers();
    const float r = float(randomNumber());
    EXPECT_NEAR(tinted.r - 100, 50 * (std::sin(3 * r) + 1), 1);
    EXPECT_NEAR(tinted.g - 100, 50 * (std::sin(4 * r) + 1), 1);
    EXPECT_NEAR(tinted.b - 100, 50 * (std::sin(5 * r) + 1), 1);
    EXPECT_NEAR(tinted.r - 100, rim.r, 1) << "beyond the picture there is the copy alone";
    EXPECT_NEAR(tinted.g - 100, rim.g, 1);
    EXPECT_NEAR(tinted.b - 100, rim.b, 1);

    // 400 - 1.02 x 300 is its left edge.
    EXPECT_EQ(first.at(93, 300), (Pixel{0, 0, 0, 255}));
    EXPECT_EQ(first.at(94, 300), rim);

    demo->drawLoadingScreen();
    EXPECT_NE(readWindow().at(400, 300), tinted) << "the next item has another tint";
    restartRandomNumbers();
    demo->drawLoadingScreen();
    EXPECT_EQ(readWindow().at(400, 300), tinted) << "and every start the same ones";
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
