// What the shell takes: words of the command line, keys, and the screenshots that one of them asks for.
#include "app/keys.h"
#include "app/options.h"
#include "app/screenshot.h"
#include "tests/app/fresh_app.h"
#include "tests/gl_window.h"
#include "tests/scratch.h"

namespace {

TEST(Options, LaterWordsOverrideEarlierOnes) {
    const auto parse = [](std::vector<const char*> words) {
        words.insert(words.begin(), "valojuova");
        return parseOptions(int(words.size()), words.data());
    };
    EXPECT_TRUE(parse({}).fullscreen);
    EXPECT_EQ(parse({}).soundOutput, sound::Alsa);
    EXPECT_FALSE(parse({"-fs", "-win"}).fullscreen);
    EXPECT_TRUE(parse({"-win", "-fs"}).fullscreen);
    EXPECT_EQ(parse({"-nosound", "-oss"}).soundOutput, sound::Oss);
    EXPECT_EQ(parse({"-oss", "-esd", "-win"}).soundOutput, sound::Esd);
    EXPECT_EQ(parse({"-esd", "-alsa"}).soundOutput, sound::Alsa);
    EXPECT_EQ(parse({"-alsa", "-nosound"}).soundOutput, sound::None);
}

class Keys : public FreshApp<GlWindow> {
public:
    void goTo(int ms) {
        music.ms = ms;
        demo->clock.update();
    }
};

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

TEST_F(Keys, AShotTakesANumberEvenIfItCantBeWritten) {
    const ScratchDirectory scratch;
    const WorkingDirectory working(scratch.path);
    app.screenshotRequested = true;
    app.screenshotNumber = 9999;
    testing::internal::CaptureStderr();
    saveScreenshot();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "can't open w:/shots/shot9999.png\n");
    EXPECT_FALSE(app.screenshotRequested);

    std::filesystem::create_directories("w:/shots");
    std::filesystem::create_symlink("/dev/full", "w:/shots/shot10000.png");
    testing::internal::CaptureStderr();
    saveScreenshot();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "write_png: Error 3\n");
    saveScreenshot();
    EXPECT_TRUE(std::filesystem::is_regular_file("w:/shots/shot10001.png"));
}

}  // namespace
