#include "app/keys.h"

#include "tests/app/shell_window.h"

namespace {

using Keys = ShellWindow;

TEST_F(Keys, SeekKeysMoveTheMusicFromWhereItWasAtThisFrame) {
    const struct {
        SDLKey key;
        int ms;
    } expected[] = {{SDLK_RIGHT, 61500}, {SDLK_LEFT, 59500},     {SDLK_UP, 65500},
                    {SDLK_DOWN, 55500},  {SDLK_PAGEDOWN, 90500}, {SDLK_PAGEUP, 30500}};
    for (const auto& row : expected) {
        goTo(60500);
        handleKey(row.key);
        EXPECT_EQ(music.ms, row.ms) << row.key;
        handleKey(row.key);
        EXPECT_EQ(music.ms, row.ms) << "twice within a frame is once";
    }
    goTo(500);
    handleKey(SDLK_LEFT);
    EXPECT_EQ(music.ms, 0);
}

TEST_F(Keys, CountersStayWithinTheirRange) {
    for (int i = 0; i < 3; i++) handleKey(SDLK_w);
    handleKey(SDLK_q);
    handleKey(SDLK_s);
    EXPECT_EQ(app.counterQ, 2);
    EXPECT_EQ(app.counterA, 1);
    for (int i = 0; i < 300; i++) handleKey(SDLK_w), handleKey(SDLK_a);
    EXPECT_EQ(app.counterQ, 128);
    EXPECT_EQ(app.counterA, 0);
    for (int i = 0; i < 300; i++) handleKey(SDLK_q), handleKey(SDLK_s);
    EXPECT_EQ(app.counterQ, 0);
    EXPECT_EQ(app.counterA, 128);
}

TEST_F(Keys, SpaceTapsTheBeatAndSaysHowFast) {
    goTo(20250);
    handleKey(SDLK_SPACE);
    EXPECT_EQ(demo->clock.beatCount, 1);
    EXPECT_EQ(demo->clock.lastBeatTime, 20.25f);
    goTo(20750);
    handleKey(SDLK_SPACE);
    handleKey(SDLK_SPACE);
    goTo(20500);
    handleKey(SDLK_SPACE);
    ASSERT_EQ(app.messages.lines.size(), 4u);
    EXPECT_STREQ(app.messages.lines[0].get(), "Beat 20.25 delta 20.25 bpm 3");
    EXPECT_STREQ(app.messages.lines[1].get(), "Beat 20.75 delta 0.50 bpm 120");
    EXPECT_STREQ(app.messages.lines[2].get(), "Beat 20.75 delta 0.00 bpm inf");
    EXPECT_STREQ(app.messages.lines[3].get(), "Beat 20.50 delta -0.25 bpm -240");
}

TEST_F(Keys, OthersOnlySetWhatTheyStandFor) {
    handleKey(SDLK_p);
    EXPECT_TRUE(demo->clock.paused);
    handleKey(SDLK_F11);
    EXPECT_TRUE(app.screenshotRequested);

    goTo(60500);
    app.screenshotRequested = false;
    for (const SDLKey key : {SDLK_r, SDLK_t, SDLK_u, SDLK_v, SDLK_RETURN, SDLK_F12, SDLK_UNKNOWN})
        handleKey(key);
    EXPECT_EQ(music.ms, 60500);
    EXPECT_EQ(demo->clock.beatCount, 0);
    EXPECT_FALSE(app.screenshotRequested);
    EXPECT_EQ(app.counterQ + app.counterA, 0);
    EXPECT_TRUE(demo->clock.paused);
}

using KeysDeathTest = Keys;

TEST_F(KeysDeathTest, EscapeEndsTheProgram) {
    EXPECT_EXIT(handleKey(SDLK_ESCAPE), testing::ExitedWithCode(0), "");
}

}  // namespace
