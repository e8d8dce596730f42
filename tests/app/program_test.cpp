// Starting and ending the program.
#include "tests/app/program.h"

namespace {

const char usageText[] =
    "Options:\n"
    " -help      Show this help.\n"
    " -fs        Run fullscreen. [default]\n"
    " -window    Run in window. \n"
    "\n"
    "Sound options:\n"
    " -oss       Use Open Sound System.\n"
    " -alsa      Use ALSA. [default]\n"
    " -esd       Use Enlightened Sound Daemon.\n"
    " -nosound   No sound.\n"
    "\n";

TEST_F(Program, PrintsItsUsageBeforeItTouchesTheScreen) {
    for (const char* options : {"-help", "-win -help -nosound", "-window", "-WIN", "-win bogus"}) {
        const Outcome outcome = run(options, "SDL_VIDEODRIVER=nosuch");
        EXPECT_EQ(outcome.status, 0) << options;
        EXPECT_EQ(outcome.output, usageText) << options;
        EXPECT_EQ(outcome.errors, "") << options;
    }
}

TEST_F(Program, StartUpFailuresPrintTheirMessageAsItStandsAndEndWithStatusZero) {
    const Outcome noVideo = run("-win -nosound", "SDL_VIDEODRIVER=nosuch");
    EXPECT_EQ(noVideo.status, 0);
    EXPECT_EQ(noVideo.errors, "error: Video initialization failed: %s\n\n");
    EXPECT_EQ(noVideo.output, "") << "sound comes after everything else";

    const Outcome noWindow = run("-win -nosound", "SDL_VIDEODRIVER=dummy");
    EXPECT_EQ(noWindow.status, 0);
    EXPECT_EQ(noWindow.errors, "error: Video mode set failed: %s\n\n");

    const Outcome noShaders = run("-win -nosound", "MESA_EXTENSION_OVERRIDE=-GL_ARB_shading_language_100");
    EXPECT_EQ(noShaders.status, 0);
    EXPECT_EQ(noShaders.errors, "error: Seems that ARB_shading_language_100 is not supported.\n");
    const Outcome oldDriver = run("-win -nosound", "MESA_GL_VERSION_OVERRIDE=1.3");
    EXPECT_EQ(oldDriver.status, 0);
    EXPECT_EQ(oldDriver.errors, "error: Seems that OpenGL 1.4 is not supported.\n");
}

TEST_F(Program, PlaysWithoutMusicUntilItsWindowIsClosed) {
    linkData();
    std::filesystem::remove(scratch.path / "data/KVX - Ondrevane2.ogg");
    // A closed terminal counts as a closed window.
    for (const int signal : {SIGTERM, SIGHUP}) {
        EXPECT_EQ(start("-nosound"), "Using No sound.\n");
        send(signal);
        EXPECT_EQ(end(true), 0) << signal;
        EXPECT_EQ(errors(), "");
    }
}

TEST_F(Program, NamesTheOutputInForceNotTheOneAskedFor) {
    leaveDrawingOut();
    linkData();
    Environment nothing;
    nothing.set("ALSA_CONFIG_PATH", "/dev/null");
    EXPECT_EQ(start("-alsa"), "Using No sound.\n");
    EXPECT_EQ(end(false), 0);
}

// The installed command, from a folder where there is nothing to play, below a prefix of its own.
TEST_F(Program, InstalledItPlaysFromAnyFolder) {
    const std::string prefix = scratch.file("a\\ prefix");
    ASSERT_EQ(std::system(("cmake --install " BUILD_FOLDER " --prefix " + prefix + " >/dev/null").c_str()),
              0);
    program = prefix + "/bin/valojuova";
    EXPECT_EQ(run("-help").output, usageText);
    EXPECT_EQ(start("-nosound"), "Using No sound.\n");
    EXPECT_EQ(end(false), 0);
    EXPECT_EQ(errors(), "");
}

}  // namespace
