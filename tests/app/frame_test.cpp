// The whole show, loaded once from the real data: start-up, then frames at given moments.
#include "app/frame.h"

#include "app/keys.h"
#include "app/startup.h"
#include "script/resources.h"
#include "script/show_times.h"
#include "tests/app/shell_window.h"
#include "tests/scratch.h"

namespace {

class Frames : public ShellWindow {
public:
    void SetUp() override {
        ShellWindow::SetUp();
        initialiseDemo();
        demo->clock.source = &music;
    }

    void renderAt(int ms) {
        music.ms = ms;
        renderFrame();
    }
};

TEST_F(Frames, StartsUpIntoTheStateThatTheFirstFrameCountsOn) {
    EXPECT_EQ(demo->textureIndex("loading"), 0);
    const ResourceCounts all = resourceCounts();
    EXPECT_EQ(demo->textureIndex("white"), all.textures) << "the last, behind the loading picture";
    EXPECT_EQ(demo->meshSetCount, all.meshes);
    EXPECT_EQ(demo->effects.size(), size_t(all.effects));
    EXPECT_EQ(demo->clock.bpm, showtime::beatsPerMinute);
    EXPECT_EQ(demo->clock.time(), 0);
    float colour[4];
    glGetFloatv(GL_COLOR_CLEAR_VALUE, colour);
    EXPECT_EQ(colour[3], 0.5f);
    EXPECT_EQ(glGetHandleARB(GL_PROGRAM_OBJECT_ARB), 0u);
    float center[2];
    const GLhandleARB boom = demo->shaders.at("boom");
    glGetUniformfvARB(boom, glGetUniformLocationARB(boom, "center"), center);
    EXPECT_EQ(center[0], 0.5f);
    EXPECT_EQ(center[1], 0.5f);
}

TEST_F(Frames, AFrameRunsTheClockTheTimelineAndHousekeepingTwice) {
    renderAt(18700);
    EXPECT_EQ(demo->clock.time(), 18.7f);
    EXPECT_EQ(app.previousFrameTime, 18.7f);
    EXPECT_EQ(demo->clock.frameCount, 2);
    EXPECT_EQ(demo->quadCount, 0);
    EXPECT_EQ(demo->previousQuadCount, 0) << "the second housekeeping finds no quads left";
    EXPECT_EQ(demo->clock.beatCount, 1);
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_GT(readWindow().litCount(), 10000) << "and the picture is shown";

    renderAt(17700);
    EXPECT_EQ(demo->clock.delta, 17.7f - 18.7f);
    EXPECT_EQ(app.previousFrameTime, 17.7f);
}

TEST_F(Frames, PressesOfAFrameMakeOneScreenshotOfWhatIsShown) {
    ScratchDirectory scratch;
    WorkingDirectory working(scratch.path);
    std::filesystem::create_directories("w:/shots");
    handleKey(SDLK_F11);
    handleKey(SDLK_F11);
    renderAt(100000);
    renderAt(100016);
    EXPECT_EQ(app.screenshotNumber, 1);

    handleKey(SDLK_F11);
    renderAt(100000);
    const Screen shown = readWindow();
    Image shot;
    ASSERT_EQ(loadImage("w:/shots/shot0001.png", &shot, 1), 0);
    int different = 0;
    for (int i = 0; i < screenWidth * screenHeight; i++) {
        const uint8_t* p = shot.pixels + i * 3;
        different += shown.pixels[i] != Pixel{p[0], p[1], p[2], 255};
    }
    EXPECT_EQ(different, 0);
    delete[] shot.pixels;
}

}  // namespace
