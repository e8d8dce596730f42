// The capture program, run as a process: films, pictures and storyboards, and what it leaves when it fails.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <thread>

#include "image/image.h"
#include "tests/tools/run.h"

namespace {

// The frames stand on what they inherit: the strength of a shock in the torn corridor that the second frame
// before had, lights from a segment before, boxes turned by beats that the part never draws.
TEST(Capture, FramesOfAPartEqualThoseOfTheWhole) {
    const ScratchDirectory whole, part;
    ASSERT_EQ(capture("--fps 5 --from 59 --to 65.4 --out " + whole.file("%d.png")).status, 0);
    for (const char* range : {"--from 59.4 --to 59.5", "--from 62.6 --to 63", "--from 65.2 --to 65.4"})
        ASSERT_EQ(capture(std::string("--fps 5 ") + range + " --out " + part.file("%d.png")).status, 0);

    const std::set<std::string> names = namesIn(part.path);
    EXPECT_EQ(names, (std::set<std::string>{"297.png", "313.png", "314.png", "326.png"}));
    for (const std::string& name : names)
        EXPECT_TRUE(content(part.path / name) == content(whole.path / name)) << "frame " << name;
}

TEST(Capture, AFilmHasItsFramesAndItsSound) {
    const ScratchDirectory scratch;
    const Result result = capture("--fps 10 --from 20 --to 21 --out " + scratch.file("film.mp4"));
    ASSERT_EQ(result.status, 0) << result.output;
    EXPECT_EQ(namesIn(scratch.path), std::set<std::string>{"film.mp4"});
    const Result streams = shell(
        "ffprobe -v error -count_frames -show_entries stream=codec_name,width,height,nb_read_frames "
        "-of csv=p=0 " +
        scratch.file("film.mp4"));
    EXPECT_NE(streams.output.find("h264,800,600,10\n"), std::string::npos) << streams.output;
    EXPECT_NE(streams.output.find("aac,"), std::string::npos) << streams.output;
}

TEST(Capture, AStoryboardHasACellForEachTime) {
    const ScratchDirectory scratch;
    // Its last time is nearer to the end of the show than to the last frame.
    EXPECT_EQ(capture("--fps 1 --from 194 --every 1.25 --storyboard " + scratch.file("board.png")).status, 0);
    ASSERT_EQ(capture("--from 10 --to 14 --every 1.5 --storyboard " + scratch.file("board.png")).status, 0);
    Image board;
    ASSERT_EQ(loadImage(scratch.file("board.png").c_str(), &board, 0), 0);
    EXPECT_EQ(board.width, 8 + 3 * (320 + 8));
    EXPECT_EQ(board.height, 8 + 240 + 20 + 8);
    delete[] board.pixels;
}

TEST(Capture, AFailureIsOneLineAndLeavesNoFile) {
    const ScratchDirectory scratch;
    const std::string film = "--fps 2 --from 1 --to 2 --out " + scratch.file("film.mp4");
    const Result missing = shell("PATH=" + scratch.path.string() + " " CAPTURE_PROGRAM " " + film);
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.output,
              "capture: no film was written: ffmpeg can't be started: No such file or directory\n");

    scratch.write("ffmpeg",
                  "#!/bin/sh\n/bin/head -c 1000 >/dev/null\n/bin/echo '[x264 @ 0x1] the encoder gave up' "
                  ">&2\n/bin/echo Bye >&2\nexit 9\n");
    std::filesystem::permissions(scratch.file("ffmpeg"), std::filesystem::perms::owner_all);
    const Result dying = shell("PATH=" + scratch.path.string() + " " CAPTURE_PROGRAM " " + film);
    EXPECT_EQ(dying.status, 1);
    EXPECT_NE(dying.output.find("capture: no film was written: the encoder gave up\n"), std::string::npos)
        << dying.output;
    // It takes no picture and ends with status 0.
    scratch.write("ffmpeg", "#!/bin/sh\nfor last; do :; done\n/bin/touch ${last#file:}\n");
    const Result deaf = shell("PATH=" + scratch.path.string() + " " CAPTURE_PROGRAM " --fps 10 " + film);
    EXPECT_EQ(deaf.status, 1);
    EXPECT_NE(deaf.output.find("capture: no film was written: ffmpeg ended before the film did\n"),
              std::string::npos)
        << deaf.output;
    EXPECT_EQ(namesIn(scratch.path), std::set<std::string>{"ffmpeg"});

    // A place that can't be written, also not by root.
    const Result pictures = capture("--fps 2 --from 1 --to 1.5 --out /proc/capture/%d.png");
    EXPECT_EQ(pictures.status, 1);
    EXPECT_NE(
        pictures.output.find("\ncapture: /proc/capture/2.png was not written: No such file or directory\n"),
        std::string::npos)
        << pictures.output;

    EXPECT_EQ(capture("--from 20 --to 10").output, "capture: --from: does not lie before --to\n");
    EXPECT_EQ(capture("--fps 23.976").output, "capture: --fps: not a whole number\n");
    EXPECT_EQ(capture("--out a%s.png").output,
              "capture: --out: pictures need a number in their name, such as frames/%05d.png\n");
}

TEST(Capture, StoppingItLeavesNoHalfFilm) {
    const ScratchDirectory scratch;
    const std::string film = scratch.file("film.mp4");
    const pid_t process = fork();
    if (process == 0) {
        freopen("/dev/null", "w", stderr);
        execl(CAPTURE_PROGRAM, CAPTURE_PROGRAM, "--out", film.c_str(), nullptr);
        _exit(127);
    }
    // Until the film has begun to grow; a capture that ends by itself before that fails the test.
    int status = 0;
    while (namesIn(scratch.path).empty() && waitpid(process, &status, WNOHANG) == 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    kill(process, SIGINT);
    ASSERT_EQ(waitpid(process, &status, 0), process);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1);
    EXPECT_TRUE(namesIn(scratch.path).empty());
}

}  // namespace
