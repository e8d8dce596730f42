// The capture program, run as a process: films, pictures and storyboards, and what it leaves when it fails.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <cstring>
#include <functional>
#include <thread>

#include "image/image.h"
#include "tests/gl_window.h"
#include "tests/tools/run.h"
#include "tools/capture/grabber.h"

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
    // Of its kind, whatever the case of its ending.
    const Result result = capture("--fps 10 --from 20 --to 21 --out " + scratch.file("film.MP4"));
    ASSERT_EQ(result.status, 0) << result.output;
    EXPECT_EQ(namesIn(scratch.path), std::set<std::string>{"film.MP4"});
    const Result streams = shell(
        "ffprobe -v error -count_frames -show_entries "
        "stream=codec_name,profile,width,height,color_range,nb_read_frames -of csv=p=0 " +
        scratch.file("film.MP4"));
    EXPECT_NE(streams.output.find("h264,High,800,600,tv,10\n"), std::string::npos) << streams.output;
    EXPECT_NE(streams.output.find("aac,"), std::string::npos) << streams.output;
}

TEST(Capture, AStoryboardHasACellForEachTime) {
    const ScratchDirectory scratch;
    // Its last time is nearer to the end of the show than to the last frame.
    EXPECT_EQ(capture("--fps 1 --from 194 --every 1.25 --storyboard " + scratch.file("board.png")).status, 0);
    ASSERT_EQ(capture("--from 10 --to 14 --every 1.5 --storyboard " + scratch.file("board.PNG")).status, 0);
    Image board;
    ASSERT_EQ(loadImage(scratch.file("board.PNG").c_str(), &board, 0), 0);
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

// Said before anything is drawn.
TEST(Capture, AFilmNeedsASoundtrackThatCanBePlayed) {
    const ScratchDirectory scratch;
    linkDataSet(scratch.path);
    std::filesystem::remove(scratch.file("data/KVX - Ondrevane2.ogg"));
    const std::string words = "cd " + scratch.path.string() + " && " CAPTURE_PROGRAM " --fps 1 --to 1";
    const auto expectRefusal = [&](const std::string& problem) {
        const Result result = shell(words);
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.output, "capture: data/KVX - Ondrevane2.ogg: " + problem + "\n");
    };
    expectRefusal("No such file or directory");
    scratch.write("data/KVX - Ondrevane2.ogg", "OggS, or is it?");
    expectRefusal("no Ogg Vorbis file that can be played");
}

// The first file to be read changes while the last but one, a shader, waits to be opened for reading.
TEST(Capture, DrawsNothingOfAStateThatNeverWas) {
    const ScratchDirectory scratch;
    linkDataSet(scratch.path);
    const std::string shader = scratch.file("data/shaders/antiariel.fs"), text = content(shader);
    std::filesystem::remove(shader);
    scratch.write("data/shaders/antiariel.fs", text);
    static volatile sig_atomic_t awaited;
    awaited = 0;
    const auto before = signal(SIGIO, [](int) { awaited = 1; });
    const int leased = open(shader.c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(fcntl(leased, F_SETLEASE, F_WRLCK), 0) << strerror(errno);
    std::thread author([&] {
        for (int i = 0; i < 12000 && !awaited; i++) usleep(5000);
        std::filesystem::remove(scratch.file("data/loading.jpg"));
        scratch.write("data/loading.jpg", content("data/overlay.jpg"));
        close(leased);
    });
    const Result result =
        shell("cd " + scratch.path.string() + " && " CAPTURE_PROGRAM " --fps 2 --to 0.5 --out %d.png");
    author.join();
    signal(SIGIO, before);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "capture: data/ was changed while it was read; start again\n");
    EXPECT_EQ(namesIn(scratch.path), std::set<std::string>{"data"});
}

TEST(Capture, InstalledFindsItsShowBesideAStrangersData) {
    const ScratchDirectory prefix, stranger;
    std::filesystem::create_directories(prefix.path / "libexec/valojuova-tools");
    std::filesystem::copy_file(CAPTURE_PROGRAM, prefix.path / "libexec/valojuova-tools/capture");
    linkDataSet(prefix.path / "share/valojuova");
    stranger.write("data/white.png", "of another show");
    const auto run = [&] {
        return shell("cd " + stranger.path.string() + " && " +
                     prefix.file("libexec/valojuova-tools/capture") + " --join part.mp4")
            .output;
    };
    EXPECT_EQ(run(), "capture: the show is that of " + prefix.file("share/valojuova") +
                         "\ncapture: " + stranger.file("part.mp4") + ": there is no such part\n");
    std::filesystem::remove_all(stranger.path / "data");
    linkDataSet(stranger.path);
    std::filesystem::remove(stranger.path / "data/loading.jpg");
    EXPECT_EQ(run(), "capture: part.mp4: there is no such part\n") << "an author's, though it isn't whole";
}

// A grabber that loses its second frame in the given way, of three.
struct Grabbing : GlWindow {
    void expectLoss(const std::function<void(Grabber&)>& lose) {
        int written = 0;
        Grabber grabber([&](const Picture&) { return ++written > 0; });
        EXPECT_TRUE(grabber.grab());
        lose(grabber);
        EXPECT_FALSE(grabber.grab() && grabber.grab());
        EXPECT_FALSE(grabber.finish());
        EXPECT_LE(written, 1);
        EXPECT_EQ(grabber.problem.find("a frame could not be read back: GL error 0x"), 0u);
    }
};

PFNGLMAPBUFFERPROC mapBuffer = nullptr;
PFNGLUNMAPBUFFERPROC unmapBuffer = nullptr;
int calls = 0;

TEST_F(Grabbing, AFrameThatCantBeReadBackIsAFailure) {
    expectLoss([](Grabber& grabber) {  // too small for the frame
        glBindBuffer(GL_PIXEL_PACK_BUFFER, grabber.buffers[1]);
        glBufferData(GL_PIXEL_PACK_BUFFER, 16, nullptr, GL_STREAM_READ);
        glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    });
    mapBuffer = __glewMapBuffer;
    expectLoss([](Grabber&) {
        calls = 0;
        __glewMapBuffer = [](GLenum target, GLenum access) -> void* {
            return ++calls == 2 ? nullptr : mapBuffer(target, access);
        };
    });
    __glewMapBuffer = mapBuffer;
    unmapBuffer = __glewUnmapBuffer;
    expectLoss([](Grabber&) {  // whose content went away in the meantime
        calls = 0;
        __glewUnmapBuffer = [](GLenum target) -> GLboolean { return unmapBuffer(target) && ++calls != 2; };
    });
    __glewUnmapBuffer = unmapBuffer;
}

TEST(Capture, StoppingItLeavesNoHalfFilm) {
    const ScratchDirectory scratch;
    const std::string film = scratch.file("film.mp4");
    const pid_t process = startProcess({CAPTURE_PROGRAM, "--out", film});
    // Until the film has begun to grow; a capture that ends by itself before that fails the test.
    EXPECT_TRUE(await(process, [&] { return !namesIn(scratch.path).empty(); }));
    kill(process, SIGINT);
    EXPECT_EQ(waitForProcess(process), 1);
    EXPECT_TRUE(namesIn(scratch.path).empty());
}

}  // namespace
