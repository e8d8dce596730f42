// The program as its users meet it: run as a process, by what it prints and how it ends.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "tests/scratch.h"

namespace {

struct Outcome {
    int status;  // -1 if it did not end by itself
    std::string output;
    std::string errors;
};

std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class Program : public testing::Test {
public:
    // Where the program runs: a directory without data, unless a test puts some there.
    ScratchDirectory scratch;

    Outcome run(const std::string& options, const std::string& environment = "") {
        const std::string command = "cd " + scratch.path.string() + " && " + environment +
                                    " " VALOJUOVA_PROGRAM " " + options + " >output 2>errors";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(scratch.file("output")),
                contentOf(scratch.file("errors"))};
    }
};

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
    for (const char* options : {"-help", "-win -help -nosound", "-window", "-win bogus", "--help"}) {
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

    for (const char* screen : {"-win", "-fs"}) {
        const Outcome noData = run(screen);
        EXPECT_EQ(noData.status, 0);
        EXPECT_EQ(noData.errors, "can't open data/loading.jpg\nerror: File [%s] not found.\n");
        EXPECT_EQ(noData.output, "");
    }
}

TEST_F(Program, PlaysWithoutMusicUntilItsWindowIsClosed) {
    std::filesystem::create_directory(scratch.path / "data");
    for (const auto& entry : std::filesystem::directory_iterator("data")) {
        if (entry.path().extension() == ".ogg") continue;
        std::filesystem::create_symlink(std::filesystem::canonical(entry.path()),
                                        scratch.path / "data" / entry.path().filename());
    }

    int output[2];
    ASSERT_EQ(pipe(output), 0);
    const pid_t process = fork();
    if (process == 0) {
        dup2(output[1], STDOUT_FILENO);
        close(output[0]);
        close(output[1]);
        if (chdir(scratch.path.c_str()) == 0) {
            // Line by line, so that the line about the sound tells that everything has been loaded.
            execlp("stdbuf", "stdbuf", "-oL", VALOJUOVA_PROGRAM, "-win", "-nosound", nullptr);
        }
        _exit(99);
    }
    close(output[1]);
    std::string line;
    for (char c; line.back() != '\n' && read(output[0], &c, 1) == 1;) line += c;
    EXPECT_EQ(line, "Using No sound.\n");

    // SDL makes of it what it makes of a click on the close button.
    kill(process, SIGTERM);
    int status = 0;
    waitpid(process, &status, 0);
    close(output[0]);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

}  // namespace
