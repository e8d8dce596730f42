#include <algorithm>

#include "script/resources.h"
#include "script/scene_kit.h"
#include "tests/gl_window.h"

namespace {

constexpr float distorts[] = {0, 1, 8, 13, 53};

struct ShowShaders : GlWindow {
    void SetUp() override {
        GlWindow::SetUp();
        for (const ShaderRow& row : shaderRows())
            Loader().load(row);  // ends the process where one does not compile
        placeCamera();
        demo->useShader("boom");
        demo->setUniform2f("boom", "center", 0.5f, 0.5f);
        demo->useShader();
        glDisable(GL_DEPTH_TEST);
    }

    // A picture of green and blue boxes in "rtt1", with red all around it in the texture.
    static void drawBoxesInRed() {
        const std::vector<Pixel> red(1024 * 1024, Pixel{255, 0, 0, 255});
        glBindTexture(GL_TEXTURE_2D, demo->texture("rtt1"));
        glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, 1024, 1024, GL_RGBA, GL_UNSIGNED_BYTE, red.data());
        for (int x = 0; x < 800; x += 40) {
            for (int y = 0; y < 600; y += 40) {
                const auto shade = uint8_t(55 + (x * 7 + y * 3) % 200);
                fillRect(x, y, 40, 40, {0, shade, uint8_t(255 - shade), 255});
            }
        }
        demo->copyScreen("rtt1");
    }

    static Screen drawn(const char* target) {
        glClear(GL_COLOR_BUFFER_BIT);
        demo->drawScreenQuad(target, 1);
        demo->useShader();
        return readScreen();
    }
};

// Of all pixels, how many differ by more than rounding.
double changedPart(const Screen& a, const Screen& b) {
    return double(differing(a, b, 2)) / double(a.pixels.size());
}

int reddest(const Screen& screen) {
    int red = 0;
    for (const Pixel& p : screen.pixels) red = std::max<int>(red, p.r);
    return red;
}

TEST_F(ShowShaders, BoomLeavesThePictureAloneWithoutStrengthAndBendsItWithIt) {
    drawBoxesInRed();
    const Screen plain = drawn("rtt1");
    for (float distort : distorts) {
        useBoom(distort, 0);
        EXPECT_EQ(changedPart(plain, drawn("rtt1")), 0) << "distort " << distort;
        useBoom(distort, 0.15f);
        const double changed = changedPart(plain, drawn("rtt1"));
        if (distort == 0) {
            EXPECT_EQ(changed, 0);
        } else {
            EXPECT_GT(changed, 0.02) << "distort " << distort;
        }
    }
}

TEST_F(ShowShaders, NoneReadsATargetOutsideThePicture) {
    drawBoxesInRed();
    for (float distort : distorts) {
        for (float scale : {0.3f, 0.1f, 0.02f}) {
            useBoom(distort, scale);
            EXPECT_EQ(reddest(drawn("rtt1")), 0) << "boom, distort " << distort << ", scale " << scale;
        }
    }
    for (float time : {-0.05f, 0.0f, 0.05f, 0.9f, 1.0f, 1.07f, 1.1f}) {
        demo->useShader("distort");
        demo->setUniform1f("distort", "time", time);
        EXPECT_EQ(reddest(drawn("rtt1")), 0) << "distort, time " << time;
    }
    demo->useShader("antiariel");
    EXPECT_EQ(reddest(drawn("rtt1")), 0) << "antiariel";
}

TEST_F(ShowShaders, EveryPictureShaderIsModulatedByTheColour) {
    fillRect(0, 0, 800, 600, {200, 100, 50, 255});
    demo->copyScreen("rtt1");
    for (const char* shader : {"boom", "distort", "antiariel"}) {
        demo->useShader(shader);
        glColor4f(1, 1, 1, 1);
        const Pixel full = drawn("rtt1").at(200, 450);
        demo->useShader(shader);
        glColor4f(0.5f, 0.5f, 1, 0.5f);
        const Pixel pixel = drawn("rtt1").at(200, 450);
        EXPECT_GT(full.r, 20) << shader;
        EXPECT_LE(apart(pixel, {uint8_t(full.r / 2), uint8_t(full.g / 2), full.b, 0}), 1) << shader;
        EXPECT_NEAR(pixel.a, 128, 1) << shader;
    }
}

// Cards fill their texture and are stored top row first, unlike a target.
TEST_F(ShowShaders, BoomKeepsEveryCornerOfACardInItsPlace) {
    const Pixel corners[] = {{0, 0, 255, 255}, {0, 255, 0, 255}, {255, 0, 0, 255}, {255, 255, 0, 255}};
    std::vector<Pixel> card;
    for (int y = 0; y < 64; y++) {
        for (int x = 0; x < 64; x++) card.push_back(corners[(y >= 32) * 2 + (x >= 32)]);
    }
    addTexture("card", 64, 64, card);
    for (float distort : {0.0f, 8.0f, 20.0f}) {
        glClear(GL_COLOR_BUFFER_BIT);
        useBoom(distort, 0.1f);
        glColor4f(1, 1, 1, 1);
        drawPicture("card", {.x = 1, .y = 1, .z = -2, .sourceFactor = GL_ONE, .targetFactor = GL_ZERO});
        demo->useShader();
        const Screen screen = readScreen();
        const Pixel shown[] = {screen.at(410, 590), screen.at(790, 590), screen.at(410, 310),
                               screen.at(790, 310)};
        for (int i = 0; i < 4; i++) {
            EXPECT_LE(apart(shown[i], corners[i]), distort == 0 ? 0 : 100) << "corner " << i;
        }
    }
}

}  // namespace
