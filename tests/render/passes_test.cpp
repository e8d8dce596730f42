// What the screen passes leave on the screen and in the targets, pixel by pixel.
#include "tests/gl_window.h"

namespace {

constexpr Pixel black{0, 0, 0, 0};
constexpr Pixel red{255, 0, 0, 255};
constexpr Pixel green{0, 255, 0, 255};
constexpr Pixel blue{0, 0, 255, 255};
constexpr Pixel white{255, 255, 255, 255};

class Passes : public GlWindow {
public:
    void SetUp() override {
        GlWindow::SetUp();
        placeCamera();
        glColor3f(1, 1, 1);
    }

    struct Viewport {
        int x, y, width, height;
        bool operator==(const Viewport&) const = default;
    };

    static Viewport viewport() {
        GLint v[4];
        glGetIntegerv(GL_VIEWPORT, v);
        return {v[0], v[1], v[2], v[3]};
    }
};

TEST_F(Passes, ViewportFitsItsAspectByWidthFromOneOn) {
    demo->setViewportAspect(4, 3);
    EXPECT_EQ(viewport(), (Viewport{0, 0, 800, 600}));
    demo->setViewportAspect(2, 1);
    EXPECT_EQ(viewport(), (Viewport{0, 100, 800, 400}));
    demo->setViewportAspect(1, 1);
    EXPECT_EQ(viewport(), (Viewport{0, -100, 800, 800})) << "taller than the screen below 4:3";
    demo->setViewportAspect(1, 2);
    EXPECT_EQ(viewport(), (Viewport{250, 0, 300, 600}));
    demo->setViewportAspect(800, 333);
    EXPECT_EQ(viewport(), (Viewport{0, 133, 800, 333})) << "133.5 is cut, not rounded";
    demo->setViewportAspect(0, 0);
    EXPECT_EQ(viewport().width, 800) << "not a number goes by width";
}

TEST_F(Passes, ScreenQuadScalesAboutTheCentreAndCountsItsTriangles) {
    addSolidTexture("red", red);
    glEnable(GL_LIGHTING);
    glTranslatef(5, 5, 5);
    demo->drawScreenQuad("red", 0.5f);
    EXPECT_TRUE(glIsEnabled(GL_LIGHTING));
    EXPECT_EQ(readPixel(200, 150), red);
    EXPECT_EQ(readPixel(599, 449), red);
    EXPECT_EQ(readPixel(199, 300), black);
    EXPECT_EQ(readPixel(400, 450), black);
    EXPECT_EQ(readScreen().litCount(), 400 * 300);

    demo->drawScreenQuad("red", 0.5f);
    EXPECT_EQ(demo->quadCount, 4);
    demo->endFrame();
    EXPECT_EQ(demo->previousQuadCount, 4);
    EXPECT_EQ(demo->quadCount, 0);
}

TEST_F(Passes, ScreenQuadMapsThePictureInTheTextureAndTheFlagTurnsIt) {
    // Four rows of one colour each; the picture is said to be the lower two by two of them.
    const std::vector<Pixel> row[] = {{4, red}, {4, green}, {4, blue}, {4, white}};
    std::vector<Pixel> pixels;
    for (const auto& r : row) pixels.insert(pixels.end(), r.begin(), r.end());
    addTexture("rows", 4, 4, pixels);
    demo->setTextureSize("rows", 2, 2);

    demo->drawScreenQuad("rows", 1);
    EXPECT_EQ(readPixel(400, 10), red);
    EXPECT_EQ(readPixel(400, 590), green);
    demo->textures[demo->textureIndex("rows")].flipped = true;
    demo->drawScreenQuad("rows", 1);
    EXPECT_EQ(readPixel(400, 10), green);
    EXPECT_EQ(readPixel(400, 590), red);
}

TEST_F(Passes, BlurLeavesAClearedScreenAndTheSourcesViewport) {
    demo->copyScreen("rtt0");
    fillRect(0, 0, 800, 600, red);
    glEnable(GL_LIGHTING);
    glEnable(GL_BLEND);
    glViewport(1, 2, 3, 4);
    glPushMatrix();
    demo->blur("rtt0", "rtt1", {.iterations = 0, .xOffset = 1, .yOffset = 1});
    EXPECT_EQ(demo->textures[91].width, 800);
    EXPECT_EQ(demo->textures[91].height, 600);
    EXPECT_EQ(readTexture("rtt1").width, 1024) << "without iterations the texture is not touched";
    EXPECT_EQ(readScreen().litCount(), 0);
    EXPECT_EQ(viewport(), (Viewport{0, 0, 800, 600}));
    EXPECT_TRUE(glIsEnabled(GL_LIGHTING));
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_EQ(stateOf(GL_MATRIX_MODE), GL_MODELVIEW);
    glPopMatrix();

    // A target never copied to counts as 1024 x 768, a small picture as its own size.
    demo->blur("rtt5", "rtt6", {.iterations = 1, .xOffset = 1, .yOffset = 1});
    EXPECT_EQ(readTexture("rtt6").height, 1024);
    EXPECT_EQ(demo->textures[96].height, 768);
    EXPECT_EQ(viewport(), (Viewport{0, 0, 1024, 768}));
    addTexture("small", 512, 256, std::vector<Pixel>(512 * 256, red));
    demo->blur("small", "rtt7", {.iterations = 1, .xOffset = 0, .yOffset = 0});
    const Screen small = readTexture("rtt7");
    EXPECT_EQ(small.width, 512);
    EXPECT_EQ(small.height, 256);
    EXPECT_NEAR(small.at(256, 128).r, 255, 3);
}

}  // namespace
