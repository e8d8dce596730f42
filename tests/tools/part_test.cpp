// Parts of a film: their frames, what they tell of themselves, how they join, and what a lost one costs.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstring>
#include <memory>

#include "tests/tools/run.h"
#include "tests/virtual_screen.h"
#include "tools/capture/frames.h"
#include "tools/capture/manifest.h"

namespace {

Manifest manifestOf(const std::string& part) {
    Manifest manifest;
    EXPECT_TRUE(readManifest(part, &manifest)) << part;
    return manifest;
}

std::string hashesOf(const Manifest& manifest) {
    std::string hashes;
    for (const DrawnFrame& frame : manifest.frames)
        hashes += std::to_string(frame.number) + ' ' + frame.hash + '\n';
    return hashes;
}

// A manifest of which a line says something else.
std::string changed(std::string manifest, const char* key) {
    return manifest.insert(manifest.find(key) + strlen(key), "another ");
}

std::string probe(const std::string& words) {
    return shell("ffprobe -v error -of csv=p=0 " + words).output;
}

// A part of two runs, and one that fits between them, as two machines would have drawn them.
struct Parts : testing::Test {
    static inline ScratchDirectory* scratch = nullptr;
    static inline std::string ends, middle, together;

    static void SetUpTestSuite() {
        scratch = new ScratchDirectory;
        ends = scratch->file("ends.mp4");
        middle = scratch->file("it's the middle.mp4");
        together = '"' + ends + "\" \"" + middle + '"';
        ASSERT_EQ(capture("--lossless --fps 4 --frames 80-83,87-89 --out " + ends).status, 0);
        ASSERT_EQ(capture("--lossless --fps 4 --frames 84-86 --out \"" + middle + '"').status, 0);
    }
    static void TearDownTestSuite() { delete scratch; }

    Result join(const std::string& words) {
        return capture("--join " + words + " --out " + scratch->file("film.mp4"));
    }
};

TEST_F(Parts, JoinToTheFilmThatOneMachineDraws) {
    const std::string one = scratch->file("one.mp4"), film = scratch->file("film.mp4");
    ASSERT_EQ(capture("--lossless --fps 4 --frames 80-89 --out " + one).status, 0);
    const Result joined = join(together + " --frames 80-89");
    ASSERT_EQ(joined.status, 0) << joined.output;
    EXPECT_EQ(hashesOf(manifestOf(film)), hashesOf(manifestOf(one)));
    EXPECT_TRUE(isWhole(film, manifestOf(film)));
    // Ten frames of a quarter of a second, to the tick.
    EXPECT_EQ(probe("-count_frames -select_streams v -show_entries "
                    "stream=r_frame_rate,avg_frame_rate,nb_read_frames " +
                    film),
              "4/1,4/1,10\n");
    std::string times;
    for (int i = 0; i < 10; i++) times += std::to_string(i * 0.25) + '\n';
    EXPECT_EQ(probe("-select_streams v -show_entries packet=pts_time " + film), times);
    EXPECT_EQ(probe("-select_streams a -show_entries stream=codec_name " + film), "alac\n");
    const auto frames = [](const std::string& path) {
        return shell("ffmpeg -v error -i " + path +
                     " -map 0:v -pix_fmt bgra -f framemd5 - | grep -v '^#' | cut -d, -f6")
            .output;
    };
    EXPECT_EQ(frames(film), frames(one));
}

TEST_F(Parts, ThatDontBelongTogetherAreRefused) {
    const auto refused = [&](const std::string& words) {
        const Result result = join(words);
        EXPECT_EQ(result.status, 1);
        return result.output;
    };
    const std::set<std::string> before = namesIn(scratch->path);
    EXPECT_EQ(refused(ends + " --frames 80-89"), "capture: no part has the frames 84-86\n");
    EXPECT_EQ(refused(together), "capture: no part has the frames 0-79,90-781\n");
    EXPECT_EQ(refused(together + " --frames 80-88"), "capture: the film has no frames 89\n");
    EXPECT_EQ(refused(together + ' ' + ends + " --frames 80-89"),
              "capture: frames 80-83 are in both " + ends + " and " + ends + "\n");

    const std::string other = scratch->write("other.mp4", content(ends));
    EXPECT_EQ(refused(other), "capture: " + other + ": it has no manifest, or a broken one\n");
    const std::string manifest = content(manifestPath(ends));
    scratch->write("other.mp4.manifest", manifest.substr(0, manifest.size() / 2));
    EXPECT_EQ(refused(other), "capture: " + other + ": it has no manifest, or a broken one\n");
    for (const auto& [key, difference] : {std::pair{"program ", "by another program"},
                                          {"renderer ", "by another renderer"},
                                          {"data ", "from another data set"},
                                          {"sound ", "for another soundtrack"}}) {
        scratch->write("other.mp4.manifest", changed(manifest, key));
        EXPECT_EQ(refused(ends + ' ' + other).find("capture: " + other + " was drawn " + difference + ": "),
                  0u);
    }
    scratch->write("other.mp4", content(middle));
    scratch->write("other.mp4.manifest", changed(content(manifestPath(middle)), "sound "));
    EXPECT_EQ(refused(other + " --frames 84-86"),
              "capture: data/KVX - Ondrevane2.ogg: not the soundtrack that " + other + " was drawn for\n");
    scratch->write("other.mp4.manifest", manifest);
    std::string broken = content(ends);
    broken[broken.size() / 2] ^= 1;
    scratch->write("other.mp4", broken);
    EXPECT_EQ(refused(other),
              "capture: " + other + " is broken: it is not the film that its manifest tells of\n");

    // A capture ended after the manifest was in its place and before the new film was.
    scratch->write("unfinished-other.mp4", content(ends));
    EXPECT_EQ(refused(other + " --frames 80-89"), "capture: no part has the frames 84-86\n");
    EXPECT_TRUE(content(other) == content(ends));

    std::filesystem::remove(other);
    std::filesystem::remove(manifestPath(other));
    EXPECT_EQ(namesIn(scratch->path), before);
}

// Drawn again, of a film or part that is there: it and its manifest stay until the new one is whole.
TEST_F(Parts, StayUntilTheyAreDrawnAgain) {
    const pid_t process = startProcess({CAPTURE_PROGRAM, "--fps", "4", "--frames", "80-89", "--out", ends});
    await(process, [&] { return namesIn(scratch->path).contains("unfinished-ends.mp4"); });
    endProcess(process, SIGINT);
    EXPECT_TRUE(isWhole(ends, manifestOf(ends)));
    EXPECT_EQ(textOf(manifestOf(ends).runs()), "80-83,87-89");
}

// Twelve frames in three pieces, unless told otherwise.
struct Resuming : testing::Test {
    const ScratchDirectory scratch, encoder;
    const std::string film = scratch.file("film.mp4"), parts = film + ".parts/";
    std::string words = range("19", "31");
    const std::string stuck = encoder.file("stuck");

    // A capture whose encoder of the piece from frame 30 on waits as long as `stuck` is there.
    pid_t captureAtWork(const std::string& before = "") {
        encoder.write("ffmpeg", "#!/bin/sh\nPATH=${PATH#*:}\ncase \"$*\" in *unfinished-000030*)\necho $$ >" +
                                    stuck + ".new; mv " + stuck + ".new " + stuck + "; while [ -e " + stuck +
                                    " ]; do sleep 0.05; done;; esac\nexec ffmpeg \"$@\"\n");
        std::filesystem::permissions(encoder.file("ffmpeg"), std::filesystem::perms::owner_all);
        const pid_t process =
            startShell(before + " PATH=" + encoder.path.string() + ":$PATH; exec " CAPTURE_PROGRAM " " +
                       words + " 2>" + scratch.file("said"));
        await(process, [&] { return std::filesystem::exists(stuck); });
        return process;
    }
    std::string range(const std::string& from, const std::string& to) const {
        return "--fps 1 --from " + from + " --to " + to + " --resume --out " + film;
    }
    void letItGoOn() const { std::filesystem::remove(stuck); }
};

// Killed at once, as by a machine that fails: what it had finished isn't drawn again, what is broken or was
// drawn otherwise is. What somebody else keeps in the folder stays there.
TEST_F(Resuming, DrawsOnlyWhatIsMissingOrBroken) {
    const pid_t process = captureAtWork();
    int status = 0;
    kill(process, SIGKILL);
    ASSERT_EQ(waitpid(process, &status, 0), process);
    ASSERT_TRUE(WIFSIGNALED(status));
    kill(std::stoi(content(stuck)), SIGKILL);
    EXPECT_FALSE(std::filesystem::exists(film));
    const std::string first = parts + "000019-000019.mp4", mine = parts + "000030-000030.mp4";
    scratch.write("film.mp4.parts/000019-000019.mp4.manifest",
                  changed(content(manifestPath(first)), "program "));
    std::filesystem::resize_file(parts + "000020-000029.mp4", 1000);

    scratch.write("film.mp4.parts/000030-000030.mp4", "mine");
    EXPECT_EQ(capture(words).output, "capture: " + mine + " is in the way: it has no manifest\n");
    std::filesystem::rename(mine, parts + "mine");
    const Result resumed = capture(words);
    ASSERT_EQ(resumed.status, 0) << resumed.output;
    EXPECT_EQ(resumed.output.find("capture: 1 of 3 pieces are drawn again: " + first +
                                  " was drawn by another program: another "),
              0u)
        << resumed.output;
    EXPECT_NE(resumed.output.find("frame 12 of 12"), std::string::npos) << resumed.output;
    EXPECT_EQ(namesIn(parts), std::set<std::string>{"mine"});
    EXPECT_EQ(namesIn(scratch.path),
              (std::set<std::string>{"film.mp4", "film.mp4.manifest", "film.mp4.parts", "said"}));
    EXPECT_EQ(textOf(manifestOf(film).runs()), "19-30");
    EXPECT_EQ(probe("-count_frames -show_entries stream=codec_name,r_frame_rate,nb_read_frames "
                    "-select_streams v " +
                    film),
              "h264,1/1,12\n");
}

TEST_F(Resuming, GoesOnAfterTheDisplayWasLost) {
    words = range("29", "40");  // frames enough after the loss
    auto screen = std::make_unique<VirtualScreen>(1024, 768, false);
    ASSERT_EQ(screen->problem, "");
    const pid_t process = captureAtWork();
    screen.reset();
    letItGoOn();
    int status = 0;
    ASSERT_EQ(waitpid(process, &status, 0), process);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1) << content(scratch.file("said"));
    EXPECT_EQ(namesIn(scratch.path), (std::set<std::string>{"film.mp4.parts", "said"}));
    EXPECT_EQ(namesIn(parts), (std::set<std::string>{"000029-000029.mp4", "000029-000029.mp4.manifest"}));

    const Result resumed = capture(words);
    ASSERT_EQ(resumed.status, 0) << resumed.output;
    EXPECT_NE(resumed.output.find("capture: 1 of 2 pieces are there already\n"), std::string::npos)
        << resumed.output;
}

// A copy of the program as another build of it would be.
std::string anotherProgram(const ScratchDirectory& scratch) {
    std::string bytes = content(CAPTURE_PROGRAM);
    const size_t note = bytes.find(std::string("\x14\0\0\0\3\0\0\0GNU", 12));
    EXPECT_NE(note, std::string::npos) << "it has no build id";
    bytes[note + 12] ^= 1;
    const std::string path = scratch.write("another", bytes);
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    return path;
}

// A film is of the state that it began with, through a hang-up that it was to ignore; and of one state.
TEST_F(Resuming, IsOfOneState) {
    words = range("29", "31");
    const ScratchDirectory home;
    linkDataSet(home.path);
    const std::string track = home.file("data/KVX - Ondrevane2.ogg"), star = home.file("data/star2.png");
    const pid_t process = captureAtWork("trap '' HUP; cd " + home.path.string() + ";");
    std::filesystem::rename(track, home.file("track"));
    std::filesystem::rename(star, star + '~');
    kill(process, SIGHUP);
    letItGoOn();
    int status = 0;
    ASSERT_EQ(waitpid(process, &status, 0), process);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << content(scratch.file("said"));
    EXPECT_EQ(probe("-show_entries stream=codec_name " + film), "h264\naac\nbin_data\n");

    // The same program is the same in a package, which strips it; and nothing loads what an editor leaves.
    std::filesystem::rename(home.file("track"), track);
    std::filesystem::copy(star + '~', star);
    ASSERT_EQ(shell("strip -o " + home.file("stripped") + " " CAPTURE_PROGRAM).status, 0);
    // Without an encoder nothing comes of what is drawn again.
    const auto run = [&](const std::string& program) {
        return shell("cd " + home.path.string() + " && PATH= " + program + ' ' + words).output;
    };
    EXPECT_EQ(run("./stripped"), "capture: " + film + " is whole already\n");
    const std::string again = "capture: " + film + " is drawn again: it was drawn ";
    EXPECT_EQ(run(anotherProgram(home)).find(again + "by another program: "), 0u);
    std::filesystem::remove(star);
    std::filesystem::copy("data/spot.png", star);
    EXPECT_EQ(run(CAPTURE_PROGRAM).find(again + "from another data set: "), 0u);
    EXPECT_TRUE(isWhole(film, manifestOf(film)));
}

// The disk fills up while a piece is drawn, and while the pieces are joined.
TEST_F(Resuming, GoesOnAfterTheDiskWasFull) {
    words = range("28", "42");
    ASSERT_EQ(capture(words).status, 0);
    const std::string hashes = hashesOf(manifestOf(film));
    const auto bytes = std::filesystem::file_size(film);
    for (const double room : {0.6, 1.5}) {
        const std::string before = "size=" + std::to_string(int64_t(bytes * room));
        const Result result = shell(
            // Root needs no map, and gets none in a root of its own.
            "mounts=--mount; [ $(id -u) = 0 ] || mounts='--map-root-user --mount'; "
            "unshare $mounts true || exit 77; unshare $mounts sh -c '"
            "mount -t tmpfs -o " +
            before + " tmpfs $0 || exit 77; " CAPTURE_PROGRAM " " + words +
            " && exit 1; find $0 -name \"unfinished-*\"; mount -o remount,size=1g $0; " CAPTURE_PROGRAM " " +
            words + " && cat $0/film.mp4.manifest' " + scratch.path.string());
        if (result.status == 77) GTEST_SKIP() << "a disk of a test's own is not allowed: " << result.output;
        EXPECT_EQ(result.status, 0) << result.output;
        EXPECT_NE(result.output.find("No space left on device\n"), std::string::npos) << result.output;
        EXPECT_EQ(result.output.find("unfinished-"), std::string::npos) << result.output;
        EXPECT_NE(result.output.find(" of 3 pieces are there already\n"), std::string::npos) << result.output;
        scratch.write("there.manifest", result.output.substr(result.output.find("valojuova part")));
        EXPECT_EQ(hashesOf(manifestOf(scratch.file("there"))), hashes);
    }
}

TEST(ResumingPictures, DrawsThoseThatAreMissingOrBroken) {
    const ScratchDirectory scratch;
    const std::string words = "--resume --fps 1 --frames 20,22-23 --out " + scratch.file("%d.png");
    ASSERT_EQ(capture(words).status, 0);
    const std::string whole = content(scratch.file("22.png"));
    const auto untouched = std::filesystem::last_write_time(scratch.file("20.png"));
    std::filesystem::resize_file(scratch.file("22.png"), whole.size() - 100);
    std::filesystem::remove(scratch.file("23.png"));
    const Result resumed = capture(words);
    ASSERT_EQ(resumed.status, 0) << resumed.output;
    EXPECT_EQ(resumed.output.find("capture: 1 of 3 pictures are there already\n"), 0) << resumed.output;
    EXPECT_EQ(std::filesystem::last_write_time(scratch.file("20.png")), untouched);
    EXPECT_TRUE(content(scratch.file("22.png")) == whole);
    EXPECT_EQ(capture(words).output, "capture: 3 of 3 pictures are there already\n");
    EXPECT_EQ(namesIn(scratch.path),
              (std::set<std::string>{"%d.png.manifest", "20.png", "22.png", "23.png"}));

    scratch.write("%d.png.manifest", changed(content(scratch.file("%d.png.manifest")), "data "));
    const Result again = capture(words);
    EXPECT_EQ(again.output.find("capture: " + scratch.file("%d.png") +
                                " is drawn again: it was drawn from another data set: another "),
              0u)
        << again.output;
    EXPECT_NE(again.output.find("frame 3 of 3"), std::string::npos) << again.output;
}

TEST(FrameLists, Ascend) {
    FrameRuns runs;
    ASSERT_TRUE(parseFrames("0-2999,3600", &runs));
    EXPECT_EQ(textOf(runs), "0-2999,3600");
    ASSERT_TRUE(parseFrames("5,6-7,9", &runs));
    EXPECT_EQ(textOf(runs), "5-7,9");
    for (const char* text :
         {"", ",", "5-", "-5", "7-5", "5,5", "0-9,9", "9,1", "1;2", "1,", "99999999999", " 1"})
        EXPECT_FALSE(parseFrames(text, &runs)) << text;
    EXPECT_EQ(capture("--frames 11716-11717").output, "capture: --frames: the show ends with frame 11716\n");
    EXPECT_EQ(capture("--frames 3 --to 5").output,
              "capture: --frames: stands instead of --from and --to, not beside them\n");
}

// Two hosts draw the film as the README tells, one of them is lost on the way and comes back.
TEST(Farm, DrawsTheFilmOfOneMachine) {
    const ScratchDirectory scratch;
    const Result result = shell("tests/tools/farm " CAPTURE_PROGRAM " " + scratch.path.string());
    if (result.status == 77) GTEST_SKIP() << result.output;
    printf("%s", result.output.c_str());
    EXPECT_EQ(result.status, 0);
}

}  // namespace
