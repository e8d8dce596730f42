// The program's frames of the whole show: what one runs, and what keys and captures make of them.
#include "app/frame.h"

#include <SDL/SDL.h>

#include <chrono>

#include "app/keys.h"
#include "app/loop.h"
#include "tests/app/fresh_app.h"
#include "tests/scratch.h"
#include "tests/show.h"
#include "tests/sound/sound_server.h"
#include "tools/capture/stepped_show.h"

namespace {

class Frames : public FreshApp<Show> {
public:
    void renderAt(int ms) {
        music.ms = ms;
        renderFrame();
    }
};

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
    EXPECT_EQ(differing(shown, screenIn("w:/shots/shot0001.png")), 0);
}

// At 40 s the picture depends on the alpha that the frame keeps, so the program must have asked for some.
TEST_F(Frames, ACapturedFrameIsWhatTheTestsWindowShows) {
    const ScratchDirectory scratch;
    const std::string command = CAPTURE_PROGRAM " --fps 25 --from 40 --to 40.04 --out ";
    ASSERT_EQ(std::system((command + scratch.file("%d.png") + " 2>/dev/null").c_str()), 0);
    SteppedShow stepped(25, SteppedShow::Loaded{});
    stepped.draw(1000);
    EXPECT_EQ(differing(readScreen(), screenIn(scratch.file("1000.png"))), 0);
}

TEST_F(Frames, TheLoopTakesPressesAndNoReleases) {
    const ScratchDirectory scratch;
    const WorkingDirectory working(scratch.path);
    for (const Uint8 type : {SDL_KEYUP, SDL_KEYDOWN}) {
        SDL_Event key{}, close{};
        key.type = type;
        key.key.keysym.sym = SDLK_F11;
        close.type = SDL_QUIT;
        // What comes after the close is taken as well.
        ASSERT_EQ(SDL_PushEvent(&close), 0);
        ASSERT_EQ(SDL_PushEvent(&key), 0);
        testing::internal::CaptureStderr();
        runLoop();
        testing::internal::GetCapturedStderr();
        EXPECT_EQ(app.screenshotNumber, type == SDL_KEYDOWN);
    }
}

// Ends the process with status 0 if the loop has taken its time for so many frames.
void runLoopFor(int frames) {
    struct CountingMusic : SteppedMusic {
        int left;
        int position() override {
            SDL_Event close{};
            close.type = SDL_QUIT;
            if (--left == 0) SDL_PushEvent(&close);
            return 0;
        }
    } counting;
    counting.left = frames;
    demo->clock.source = &counting;
    const auto begin = std::chrono::steady_clock::now();
    runLoop();
    exit(std::chrono::steady_clock::now() - begin < std::chrono::milliseconds(4 * frames));
}

// In a process of its own, whose driver leaves the pixels out: only the loop itself holds its frames back.
TEST_F(Frames, TheLoopDrawsNoMoreThan250FramesASecond) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    Environment environment;
    environment.set("LP_NO_RAST", "1");
    EXPECT_EXIT(runLoopFor(100), testing::ExitedWithCode(0), "");
}

}  // namespace
