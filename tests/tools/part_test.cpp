// Parts of a film: their frames, what they tell of themselves, how they join, and what a lost one costs.
#include <gtest/gtest.h>
#include <signal.h>

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

// A manifest of which a line says something else.
std::string changed(std::string manifest, const char* key) {
    return manifest.insert(manifest.find(key) + strlen(key), "another ");
}

std::string probe(const std::string& words) {
    return shell("ffprobe -v error -of csv=p=0 " + words).output;
}

// A part of two runs, and one that fits between them, as two machines would have drawn them: of the heap,
// whose boxes are turned by beats that the parts don't draw, behind a shock that they don't draw either.
struct Parts : testing::Test {
    static inline ScratchDirectory* scratch = nullptr;
    static inline std::string ends, middle, together;

    static void SetUpTestSuite() {
        scratch = new ScratchDirectory;
        ends = scratch->file("ends.mp4");
        middle = scratch->file("it's the middle.mp4");
        together = '"' + ends + "\" \"" + middle + '"';
        ASSERT_EQ(capture("--lossless --fps 4 --frames 250-251,255-256 --out " + ends).status, 0);
        ASSERT_EQ(capture("--lossless --fps 4 --frames 252-254 --out \"" + middle + '"').status, 0);
    }
    static void TearDownTestSuite() { delete scratch; }

    Result join(const std::string& words) {
        return capture("--join " + words + " --out " + scratch->file("film.mp4"));
    }
};

// Of a stretch of the show, with the sound of that stretch.
TEST_F(Parts, JoinToTheFilmThatOneMachineDraws) {
    const std::string one = scratch->file("one.mp4"), film = scratch->file("film.mp4");
    ASSERT_EQ(capture("--lossless --fps 4 --from 62.5 --to 64.25 --out " + one).status, 0);
    const Result joined = join(together + " --from 62.5 --to 64.25");
    ASSERT_EQ(joined.status, 0) << joined.output;
    EXPECT_TRUE(isWhole(film, manifestOf(film)));
    // Seven frames of a quarter of a second, to the tick.
    EXPECT_EQ(probe("-count_frames -select_streams v -show_entries "
                    "stream=r_frame_rate,avg_frame_rate,nb_read_frames " +
                    film),
              "4/1,4/1,7\n");
    std::string times;
    for (int i = 0; i < 7; i++) times += std::to_string(i * 0.25) + '\n';
    EXPECT_EQ(probe("-select_streams v -show_entries packet=pts_time " + film), times);
    const auto contents = [](const std::string& path) {
        return shell("ffmpeg -v error -i " + path +
                     " -map 0:v -map 0:a -pix_fmt bgra -f framemd5 - | grep -v '^#' | cut -d, -f1,6")
            .output;
    };
    EXPECT_EQ(contents(film), contents(one));
    const std::string chapters = "-show_entries chapter_tags=title ";
    EXPECT_EQ(probe(chapters + film), "torn tunnel\nheap\n");
    EXPECT_EQ(probe(chapters + one), "torn tunnel\nheap\n");
}

TEST_F(Parts, ThatDontBelongTogetherAreRefused) {
    const auto refused = [&](const std::string& words) {
        const Result result = join(words);
        EXPECT_EQ(result.status, 1);
        return result.output;
    };
    const std::set<std::string> before = namesIn(scratch->path);
    EXPECT_EQ(refused(ends + " --frames 250-256"), "capture: no part has the frames 252-254\n");
    EXPECT_EQ(refused(together), "capture: no part has the frames 0-249,257-781\n");
    EXPECT_EQ(refused(together + " --frames 250-255"), "capture: the film has no frames 256\n");
    EXPECT_EQ(refused(together + ' ' + ends + " --frames 250-256"),
              "capture: frames 250-251 are in both " + ends + " and " + ends + "\n");

    const std::string other = scratch->write("other.mp4", contentOf(ends));
    EXPECT_EQ(refused(other), "capture: " + other + ": it has no manifest, or a broken one\n");
    const std::string manifest = contentOf(manifestPath(ends));
    scratch->write("other.mp4.manifest", manifest.substr(0, manifest.size() / 2));
    EXPECT_EQ(refused(other), "capture: " + other + ": it has no manifest, or a broken one\n");
    for (const auto& [key, difference] : {std::pair{"program ", "by another program"},
                                          {"renderer ", "by another renderer"},
                                          {"data ", "from another data set"},
                                          {"sound ", "for another soundtrack"}}) {
        scratch->write("other.mp4.manifest", changed(manifest, key));
        EXPECT_TRUE(
            refused(ends + ' ' + other).starts_with("capture: " + other + " was drawn " + difference + ": "));
    }
    scratch->write("other.mp4", contentOf(middle));
    scratch->write("other.mp4.manifest", changed(contentOf(manifestPath(middle)), "sound "));
    EXPECT_EQ(refused(other + " --frames 252-254"),
              "capture: data/KVX - Ondrevane2.ogg: not the soundtrack that " + other + " was drawn for\n");
    scratch->write("other.mp4.manifest", manifest);
    std::string broken = contentOf(ends);
    broken[broken.size() / 2] ^= 1;
    scratch->write("other.mp4", broken);
    EXPECT_EQ(refused(other),
              "capture: " + other + " is broken: it is not the film that its manifest tells of\n");

    // A capture ended after the manifest was in its place and before the new film was.
    scratch->write("unfinished-other.mp4", contentOf(ends));
    EXPECT_EQ(refused(other + " --frames 250-256"), "capture: no part has the frames 252-254\n");
    EXPECT_TRUE(contentOf(other) == contentOf(ends));

    std::filesystem::remove(other);
    std::filesystem::remove(manifestPath(other));
    EXPECT_EQ(namesIn(scratch->path), before);
}

TEST_F(Parts, AreWhatTheyWereUntilTheyAreJoined) {
    const ScratchDirectory encoder;
    const std::string before = contentOf(middle);
    const std::set<std::string> names = namesIn(scratch->path);
    encoder.write("ffmpeg", "#!/bin/sh\nPATH=${PATH#*:}\necho >>\"$PART\"\nexec ffmpeg \"$@\"\n");
    std::filesystem::permissions(encoder.file("ffmpeg"), std::filesystem::perms::owner_all);
    const Result result = shell("PART=\"" + middle + "\" PATH=" + encoder.path.string() +
                                ":$PATH " CAPTURE_PROGRAM " --frames 250-256 --join " + together + " --out " +
                                scratch->file("new.mp4"));
    scratch->write("it's the middle.mp4", before);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "capture: no film was written: " + middle + " was changed meanwhile\n");
    EXPECT_EQ(namesIn(scratch->path), names);
}

// Stopped while it is drawn again: what is there stays, and nothing is left half written.
TEST_F(Parts, StayUntilTheyAreDrawnAgain) {
    const std::set<std::string> before = namesIn(scratch->path);
    const pid_t process = startProcess({CAPTURE_PROGRAM, "--fps", "4", "--frames", "80-89", "--out", ends});
    EXPECT_TRUE(await(process, [&] { return namesIn(scratch->path) != before; }));
    kill(process, SIGINT);
    EXPECT_EQ(waitForProcess(process), 1);
    EXPECT_TRUE(isWhole(ends, manifestOf(ends)));
    EXPECT_EQ(textOf(manifestOf(ends).runs()), "250-251,255-256");
    EXPECT_EQ(namesIn(scratch->path), before);
}

// Two frames in two pieces.
struct Resuming : testing::Test {
    const ScratchDirectory scratch, encoder;
    const std::string film = scratch.file("film.mp4"), parts = film + ".parts/",
                      stuck = encoder.file("stuck"), said = encoder.file("said");
    std::string words = "--fps 1 --from 29 --to 31 --resume --out " + film;

    // An encoder that does something before it begins the film, or part, that `pattern` names.
    void writeEncoder(const std::string& pattern, const std::string& before) {
        encoder.write("ffmpeg", "#!/bin/sh\nPATH=${PATH#*:}\ncase \"$*\" in " + pattern + ") " + before +
                                    ";; esac\nexec ffmpeg \"$@\"\n");
        std::filesystem::permissions(encoder.file("ffmpeg"), std::filesystem::perms::owner_all);
    }
    // A capture whose encoder of the second piece waits as long as `stuck` is there, and the capture.
    pid_t captureAtWork(const std::string& before = "") {
        writeEncoder("*unfinished-000030*",
                     "touch " + stuck + "; while [ -e " + stuck + " ] && kill -0 $PPID; do sleep 0.05; done");
        const pid_t process = startShell(before + " PATH=" + encoder.path.string() +
                                         ":$PATH; exec " CAPTURE_PROGRAM " " + words + " 2>" + said);
        EXPECT_TRUE(await(process, [&] { return std::filesystem::exists(stuck); }));
        return process;
    }
    void letItGoOn() const { std::filesystem::remove(stuck); }
};

// Its display is lost; then it is killed at once, as by a machine that fails. What it had finished isn't
// drawn again, what was drawn otherwise is. What somebody else keeps in the folder stays there.
TEST_F(Resuming, DrawsOnlyWhatIsMissingOrOutdated) {
    words = "--fps 1 --from 29 --to 40 --resume --out " + film;  // frames enough after the loss
    auto screen = std::make_unique<VirtualScreen>(1024, 768, false);
    ASSERT_EQ(screen->problem, "");
    pid_t process = captureAtWork();
    screen.reset();
    letItGoOn();
    EXPECT_EQ(waitForProcess(process), 1) << contentOf(said);
    const std::string first = parts + "000029-000029.mp4", mine = parts + "000030-000039.mp4";
    EXPECT_EQ(namesIn(scratch.path), std::set<std::string>{"film.mp4.parts"});
    EXPECT_EQ(namesIn(parts), (std::set<std::string>{"000029-000029.mp4", "000029-000029.mp4.manifest"}));

    process = captureAtWork();
    kill(process, SIGKILL);
    EXPECT_EQ(waitForProcess(process), -1);
    letItGoOn();
    EXPECT_EQ(contentOf(said), "capture: 1 of 2 pieces are there already\n");

    const std::string manifest = contentOf(manifestPath(first));
    scratch.write("film.mp4.parts/000029-000029.mp4.manifest", changed(manifest, "program "));
    scratch.write("film.mp4.parts/000030-000039.mp4", "mine");
    EXPECT_EQ(capture(words).output, "capture: " + mine + " is in the way: it has no manifest\n");
    std::filesystem::rename(mine, parts + "mine");
    const Result resumed = capture(words);
    ASSERT_EQ(resumed.status, 0) << resumed.output;
    EXPECT_TRUE(resumed.output.starts_with("capture: 1 of 2 pieces are drawn again: " + first +
                                           " was drawn by another program: another "))
        << resumed.output;
    EXPECT_NE(resumed.output.find("frame 11 of 11"), std::string::npos) << resumed.output;
    EXPECT_EQ(namesIn(parts), std::set<std::string>{"mine"});
    EXPECT_EQ(namesIn(scratch.path),
              (std::set<std::string>{"film.mp4", "film.mp4.manifest", "film.mp4.parts"}));
    EXPECT_EQ(textOf(manifestOf(film).runs()), "29-39");
    EXPECT_EQ(probe("-count_frames -show_entries stream=codec_name,r_frame_rate,nb_read_frames "
                    "-select_streams v " +
                    film),
              "h264,1/1,11\n");
}

// A copy of the program as another build of it would be.
std::string anotherProgram(const ScratchDirectory& scratch) {
    std::string bytes = contentOf(CAPTURE_PROGRAM);
    const size_t note = bytes.find(std::string("\x14\0\0\0\3\0\0\0GNU", 12));
    EXPECT_NE(note, std::string::npos) << "it has no build id";
    bytes[note + 12] ^= 1;
    const std::string path = scratch.write("another", bytes);
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    return path;
}

// A film is of the state that it began with, through a hang-up that it was to ignore; and of one state.
TEST_F(Resuming, IsOfOneState) {
    const ScratchDirectory home;
    linkDataSet(home.path);
    const std::string track = home.file("data/KVX - Ondrevane2.ogg"), star = home.file("data/star2.png");
    const pid_t process = captureAtWork("trap '' HUP; cd " + home.path.string() + ";");
    std::filesystem::rename(track, home.file("track"));
    std::filesystem::rename(star, star + '~');
    kill(process, SIGHUP);
    letItGoOn();
    EXPECT_EQ(waitForProcess(process), 0) << contentOf(said);
    EXPECT_EQ(probe("-select_streams a -show_entries stream=codec_name " + film), "aac\n");

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
    const std::string other = run(anotherProgram(home));
    EXPECT_TRUE(other.starts_with(again + "by another program: "));
    EXPECT_TRUE(other.ends_with(
        "\ncapture: no film was written: ffmpeg can't be started: No such file or directory\n"))
        << other;
    std::filesystem::remove(star);
    std::filesystem::copy("data/spot.png", star);
    EXPECT_TRUE(run(CAPTURE_PROGRAM).starts_with(again + "from another data set: "));
    EXPECT_TRUE(isWhole(film, manifestOf(film)));
}

// The disk is full when the second piece is begun, and when the pieces are joined.
TEST_F(Resuming, GoesOnAfterTheDiskWasFull) {
    writeEncoder("*$FULL*", "cat /dev/zero >" + scratch.file("filler") + " 2>/dev/null");
    const std::string program = " PATH=" + encoder.path.string() + ":$PATH " CAPTURE_PROGRAM " " + words;
    const std::string left = "; rm $0/filler; find $0 -name \"unfinished-*\"; ";
    const Result result = shell(
        // Root needs no map, and gets none in a root of its own.
        "mounts=--mount; [ $(id -u) = 0 ] || mounts='--map-root-user --mount'; "
        "unshare $mounts true || exit 77; unshare $mounts sh -c 'mount -t tmpfs -o size=32m tmpfs $0 || exit "
        "77; "
        "FULL=unfinished-000030" +
        program + " && exit 1" + left + "FULL=concat" + program + " && exit 1" + left + "FULL=nothing" +
        program + " && cat $0/film.mp4.manifest' " + scratch.path.string());
    if (result.status == 77) GTEST_SKIP() << "a disk of a test's own is not allowed: " << result.output;
    EXPECT_EQ(result.status, 0) << result.output;
    const auto count = [&](const std::string& text) {
        int count = 0;
        for (size_t at = 0; (at = result.output.find(text, at)) != std::string::npos; at++) count++;
        return count;
    };
    EXPECT_EQ(count("No space left on device\n"), 2) << result.output;
    EXPECT_EQ(count("unfinished-"), 0) << result.output;
    EXPECT_EQ(count("capture: 1 of 2 pieces are there already\n"), 1) << result.output;
    EXPECT_EQ(count("capture: 2 of 2 pieces are there already\n"), 1) << result.output;
    EXPECT_EQ(count("\nframe "), 2) << result.output;
}

TEST(ResumingPictures, DrawsThoseThatAreMissingOrBroken) {
    const ScratchDirectory scratch;
    const std::string words = "--resume --fps 1 --frames 20,22-23 --out " + scratch.file("%d.png");
    ASSERT_EQ(capture(words).status, 0);
    const std::string whole = contentOf(scratch.file("22.png"));
    const auto untouched = std::filesystem::last_write_time(scratch.file("20.png"));
    std::filesystem::resize_file(scratch.file("22.png"), whole.size() - 100);
    std::filesystem::remove(scratch.file("23.png"));
    const Result resumed = capture(words);
    ASSERT_EQ(resumed.status, 0) << resumed.output;
    EXPECT_TRUE(resumed.output.starts_with("capture: 1 of 3 pictures are there already\n")) << resumed.output;
    EXPECT_EQ(std::filesystem::last_write_time(scratch.file("20.png")), untouched);
    EXPECT_TRUE(contentOf(scratch.file("22.png")) == whole);
    EXPECT_EQ(capture(words).output, "capture: 3 of 3 pictures are there already\n");
    EXPECT_EQ(namesIn(scratch.path),
              (std::set<std::string>{"%d.png.manifest", "20.png", "22.png", "23.png"}));

    scratch.write("%d.png.manifest", changed(contentOf(scratch.file("%d.png.manifest")), "data "));
    const Result again = capture(words);
    EXPECT_TRUE(again.output.starts_with("capture: " + scratch.file("%d.png") +
                                         " is drawn again: it was drawn from another data set: another "))
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
}

// Two hosts draw films as the README tells, by ssh and by SLURM; one of them is lost on the way.
TEST(Farm, DrawsTheFilmOfOneMachine) {
    const ScratchDirectory scratch;
    const Result result = shell("tests/tools/farm " CAPTURE_PROGRAM " " + scratch.path.string());
    if (result.status == 77) GTEST_SKIP() << result.output;
    printf("%s", result.output.c_str());
    EXPECT_EQ(result.status, 0);
}

}  // namespace
