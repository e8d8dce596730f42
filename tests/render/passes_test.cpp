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

    // A target whose picture is black but for a white square of that side around (x, y).
    static void copySpot(const char* target, int x, int y, int side) {
        fillRect(0, 0, screenWidth, screenHeight, black);
        fillRect(x - side / 2, y - side / 2, side, side, white);
        demo->copyScreen(target);
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

TEST_F(Passes, ScreenQuadOfACopyPutsEveryPixelBack) {
    fillRect(0, 0, 400, 300, red);
    fillRect(400, 0, 400, 300, green);
    fillRect(0, 300, 400, 300, blue);
    fillRect(799, 599, 1, 1, white);
    const Screen before = readScreen();

    demo->copyScreen("rtt3");
    EXPECT_EQ(demo->textures[93].width, 800);
    EXPECT_EQ(demo->textures[93].height, 600);
    EXPECT_EQ(demo->textures[93].textureWidth, 1024);
    fillRect(0, 0, 800, 600, Pixel{9, 9, 9, 9});
    demo->drawScreenQuad("rtt3", 1);
    EXPECT_TRUE(readScreen().pixels == before.pixels);
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

TEST_F(Passes, UnknownNamesDrawTheFirstTexture) {
    addSolidTexture("loading", blue);
    demo->drawScreenQuad("no such picture", 1);
    EXPECT_EQ(readPixel(400, 300), blue);
    EXPECT_EQ(demo->textureNames.count("no such picture"), 1u);
}

TEST_F(Passes, BlurInACornerShrinksThePictureAndTheQuadBringsItBack) {
    copySpot("rtt0", 200, 450, 64);
    demo->blur("rtt0", "rtt1", {.iterations = 1, .xOffset = 0, .yOffset = 0, .size = 128});
    const Screen corner = readTexture("rtt1");
    EXPECT_EQ(corner.width, 128);
    EXPECT_EQ(corner.height, 128);
    EXPECT_NEAR(corner.at(25, 56).r, 255, 4) << "an eighth of 1024 pixels";

    demo->drawScreenQuad("rtt1", 1);
    EXPECT_NEAR(readPixel(200, 450).r, 255, 4);
    EXPECT_EQ(readPixel(400, 300).r, 0);
}

TEST_F(Passes, BlurLeavesAClearedScreenAndTheSourcesViewport) {
    copySpot("rtt0", 400, 300, 8);
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

TEST_F(Passes, BlurOntoItselfWorks) {
    copySpot("rtt4", 400, 300, 40);
    demo->blur("rtt4", "rtt4", {.iterations = 2, .xOffset = 2, .yOffset = 2});
    const Screen result = readTexture("rtt4");
    EXPECT_NEAR(result.at(400, 300).r, 255, 4);
    EXPECT_NEAR(result.at(400 - 22, 300).r, 80, 50) << "an edge turned into a slope";
    glBindTexture(GL_TEXTURE_2D, 0);
    demo->blur("rtt4", "rtt4", {.iterations = 1, .xOffset = 2, .yOffset = 2});
    EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_2D), GLint(demo->texture("rtt4")));
}

}  // namespace
