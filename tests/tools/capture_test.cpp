// The capture program, run as a process: films, pictures and storyboards, and what it leaves when it fails.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstring>
#include <thread>

#include "image/image.h"
#include "production/making/laying.h"
#include "tests/tools/run.h"

namespace {

TEST(Capture, AStoryboardHasACellForEachTime) {
    const ScratchDirectory scratch;
    // Its last time is nearer to the end of the show than to the last frame.
    ASSERT_EQ(capture("--fps 1 --from 192.75 --every 1.25 --storyboard " + scratch.file("board.PNG")).status,
              0);
    Image board;
    ASSERT_EQ(loadImage(scratch.file("board.PNG").c_str(), &board, 0), 0);
    EXPECT_EQ(board.width, 8 + 3 * (320 + 8));
    EXPECT_EQ(board.height, 8 + 240 + 20 + 8);
    delete[] board.pixels;
}

TEST(Capture, AFailureIsOneLineAndLeavesNoFile) {
    const ScratchDirectory scratch;
    const std::string film = "--fps 2 --from 1 --to 2 --out " + scratch.file("film.mp4");
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
}

TEST(Capture, IsStoppedWhileItWaits) {
    const ScratchDirectory scratch;
    const std::filesystem::path data = scratch.path / "data";
    std::filesystem::create_directory(data);
    FolderLock held(data, FolderLock::writing);
    const pid_t process = startShell("cd " + scratch.path.string() +
                                     " && exec env --default-signal " CAPTURE_PROGRAM " 2>said");
    EXPECT_TRUE(await(process, [&] { return contentOf(scratch.file("said")).ends_with("holds data\n"); }));
    kill(process, SIGINT);
    held.release();
    int status = 0;
    waitpid(process, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status)) << contentOf(scratch.file("said"));
}

TEST(Capture, AndRehearseNameTheWordsThatAreWrong) {
    for (const auto& [command, told] : {
             std::pair{"capture --from 20 --to 10", "--from: does not lie before --to"},
             {"capture --fps 23.976", "--fps: not a whole number"},
             {"capture --out", "--out: needs a value"},
             {"capture --join --fps 1", "--join: needs parts"},
             {"capture --every", "--every: needs a value"},
             {"capture a.mp4", "a.mp4: unknown option; --help tells those there are"},
             {"capture --quick", "--quick: unknown option; --help tells those there are"},
             {"capture --out a%s.png",
              "--out: pictures need a number in their name, such as frames/%05d.png"},
             {"capture --upload --fps 30", "--upload: has 60 frames a second"},
             {"capture --party --fps=60", "--party: has 30 frames a second"},
             {"capture --archive --party", "--party: a film is of one kind"},
             {"capture --archive", "--archive: makes an .mkv"},
             {"capture --archive --frames 1 --out a.mkv", "--archive: makes a part that is a .mov"},
             {"capture --frames 11716-11717", "--frames: the show ends with frame 11716"},
             {"capture --frames 3 --to 5", "--frames: stands instead of --from and --to, not beside them"},
             {"rehearse 195.28", "195.28: no second of the show"},
             {"rehearse x", "x: no second of the show"},
             {"rehearse -win", "-win: unknown option; --help tells those there are"},
             {"rehearse 5 --state", "--state: needs a value"},
         }) {
        const std::string words = command;
        const Result result = shell(BUILD_FOLDER "/" + words);
        EXPECT_EQ(result.status, 1) << words;
        EXPECT_EQ(result.output, words.substr(0, words.find(' ')) + ": " + told + '\n');
    }
}

// A file that has been read changes while another waits to be opened for reading.
TEST(Capture, DrawsNothingOfAStateThatNeverWas) {
    const ScratchDirectory scratch;
    linkDataSet(scratch.path);
    const std::string shader = "data/shaders/antiariel.fs", picture = "data/loading.jpg";
    int files[2];
    // Files that only the test has open: whoever opens one waits until it is let go.
    const auto before = signal(SIGIO, SIG_IGN);
    for (int i = 0; i < 2; i++) {
        const std::string name = i ? shader : picture, content = contentOf(name);
        std::filesystem::remove(scratch.file(name));
        files[i] = open(scratch.write(name, content).c_str(), O_RDONLY | O_CLOEXEC);
        ASSERT_EQ(fcntl(files[i], F_SETLEASE, F_WRLCK), 0) << strerror(errno);
    }
    std::atomic<bool> ended = false;
    std::thread author([&] {
        const auto await = [&](auto condition) {
            while (!condition() && !ended) usleep(2000);
        };
        // The picture has been read; what is saved there now, before the shader is, makes no state of both.
        await([&] { return fcntl(files[0], F_GETLEASE) != F_WRLCK; });
        fcntl(files[0], F_SETLEASE, F_UNLCK);
        await([&] { return fcntl(files[0], F_SETLEASE, F_WRLCK) == 0; });
        std::filesystem::remove(scratch.file(picture));
        scratch.write(picture, contentOf("data/overlay.jpg"));
        await([&] { return fcntl(files[1], F_GETLEASE) != F_WRLCK; });
        for (const int file : files) close(file);
    });
    const Result result =
        shell("cd " + scratch.path.string() + " && " CAPTURE_PROGRAM " --fps 2 --to 0.5 --out %d.png");
    ended = true;  // nobody opens them any more
    author.join();
    signal(SIGIO, before);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "capture: data/ was changed while it was read; start again\n");
    EXPECT_EQ(namesIn(scratch.path), std::set<std::string>{"data"});
}

}  // namespace
