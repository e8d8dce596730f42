// Saving files while the show is held: what is good is seen, as a fresh start would see it; what is broken is
// told and spoils nothing.
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <random>

#include "tests/process.h"
#include "tests/scratch.h"
#include "tests/tools/rehearsal_window.h"
#include "tools/loading/program_build.h"

namespace {

namespace fs = std::filesystem;

// In a folder with a data set and a production/ of its own.
class RehearseReload : public RehearsalWindow {
public:
    ScratchDirectory scratch;
    std::optional<WorkingDirectory> inside;

    void SetUp() override {
        RehearsalWindow::SetUp();
        fs::copy("data", scratch.path / "data", fs::copy_options::recursive);
        fs::create_directories(scratch.path / "production");
        fs::copy("production/shaders", scratch.path / "production/shaders", fs::copy_options::recursive);
        inside.emplace(scratch.path);
        begin("production", {"sh", "make.sh"});
    }
    void TearDown() override {
        // Good again, for whoever comes after: the show is loaded once.
        inside.reset();
        fs::copy("data", scratch.path / "data",
                 fs::copy_options::recursive | fs::copy_options::overwrite_existing);
        inside.emplace(scratch.path);
        await();
        RehearsalWindow::TearDown();
        inside.reset();
    }

    // As editors do: some write into the file, others beside it and then move it into its place.
    static void save(const std::string& path, const std::string& content, bool inPlace = true) {
        const std::string written = inPlace ? path : path + "~new";
        std::ofstream(written, std::ios::binary) << content;
        if (!inPlace) fs::rename(written, path);
    }
    // Until everything that was saved has been looked at; without drawing.
    void await() {
        do {
            rehearsal->lookForChanges();
            rehearsal->reload.apply();
            usleep(500);
        } while (!rehearsal->reload.idle() || rehearsal->build.running() || rehearsal->build.requested);
    }
    Screen after() {
        await();
        rehearsal->redraw();
        return settle();
    }
    // The same moment in a process that starts with the files as they are.
    Screen freshStart(double second) {
        const std::string file = scratch.file("fresh.png");
        const Result result = shell(LOOK_PROGRAM " " + std::to_string(second) + " " + file);
        EXPECT_EQ(result.status, 0) << result.output;
        return screenIn(file);
    }
    std::string problem(const std::string& file) { return loading->problems[file]; }
};

constexpr char tinted[] =
    "uniform sampler2D tex;\nuniform vec2 center;\nuniform float scale;\nvoid main() {\n"
    "    gl_FragColor = texture2D(tex, gl_TexCoord[0].xy) * vec4(1.0, center.x, scale + 0.4, 1.0);\n}\n";

// In the room: a program whose uniforms were set once or frames ago, a picture, the model that beams bounce
// off and the one that is drawn, and one that is remapped.
TEST_F(RehearseReload, WhatWasSavedIsSeenAsAFreshStartSeesIt) {
    constexpr double second = 150;
    const Screen before = goTo(int(second * 1000));
    EXPECT_EQ(differing(before, freshStart(second)), 0);

    save("data/shaders/boom.fs", tinted);
    const Screen tint = after();
    EXPECT_GT(differing(tint, before), 100000);
    EXPECT_EQ(differing(tint, freshStart(second)), 0);

    save("data/cubetex.png", contentOf("data/shiptex.png"), false);
    save("data/pallero.AML", contentOf("data/palikka.AML"), false);
    save("data/pallero_detail.AML", contentOf("data/laatikko.AML"));
    save("data/robo_screen.AML", contentOf("data/ring.AML"));
    const Screen other = after();
    EXPECT_GT(differing(other, tint), 100000);
    EXPECT_EQ(differing(other, freshStart(second)), 0);
    EXPECT_EQ(differing(goTo(110000), freshStart(110)), 0);

    // Boxes in mid-turn.
    goTo(70000);
    save("data/block.AML", contentOf("data/palikka.AML"));
    EXPECT_EQ(differing(after(), freshStart(70)), 0);
}

TEST_F(RehearseReload, AMistakeIsToldWithItsLineUntilItIsMended) {
    const std::string good = contentOf("data/shaders/boom.fs");
    const Screen before = goTo(150000);
    save("data/shaders/boom.fs", "void main() {\n    gl_FragColor = colour;\n}\n");
    EXPECT_EQ(differing(after(), before), 0);
    EXPECT_TRUE(problem("data/shaders/boom.fs").starts_with("data/shaders/boom.fs:2:"))
        << problem("data/shaders/boom.fs");
    save("data/spot.png", contentOf("data/spot.png").substr(0, 9000));
    save("data/overlay.jpg", contentOf("data/overlay.jpg").substr(0, 9000));
    save("data/white.png", contentOf("data/block.AML"));
    save("data/block.AML", contentOf("data/tex.png"));
    save("data/ring.AML", contentOf("data/ring.AML").substr(0, 900));
    save("data/KVX - Ondrevane2.ogg", contentOf("data/KVX - Ondrevane2.ogg").substr(0, 900000));
    fs::remove("data/shaders/smoke.vs");
    EXPECT_EQ(differing(after(), before), 0);
    const std::pair<const char*, const char*> expected[] = {
        {"data/spot.png", "data/spot.png: "},
        {"data/overlay.jpg", "data/overlay.jpg: Premature end of JPEG file"},
        {"data/white.png", "data/white.png: Not a PNG file"},
        {"data/block.AML", "data/block.AML: File is not AML file (or is format version 0)."},
        {"data/ring.AML", "data/ring.AML: the file ends too early"},
        {"data/KVX - Ondrevane2.ogg", "data/KVX - Ondrevane2.ogg: the file ends too early"}};
    for (const auto& [file, words] : expected)
        EXPECT_TRUE(problem(file).starts_with(words)) << file << " " << problem(file);
    usleep(600000);
    settle();
    rehearsal->frame();
    EXPECT_EQ(problem("data/shaders/smoke.vs"), "data/shaders/smoke.vs: is gone");

    save("data/shaders/boom.fs", good, false);
    await();
    EXPECT_EQ(loading->problems.count("data/shaders/boom.fs"), 0u);
}

// The generator's shaders, one of which serves three programs; a name changed in both stages, one after the
// other.
TEST_F(RehearseReload, SourcesOfShadersCountToo) {
    const Screen before = goTo(150000);
    const std::string vertex = contentOf("production/shaders/picture.vs");
    save("production/shaders/boom.fs", tinted);
    EXPECT_GT(differing(after(), before), 100000);
    EXPECT_EQ(contentOf("data/shaders/boom.fs"), tinted);

    save("production/shaders/boom.fs", "varying vec4 tint;\nvoid main() { gl_FragColor = tint; }\n", false);
    await();
    EXPECT_EQ(problem("production/shaders/boom.fs").find('\n'), std::string::npos)
        << "each mistake is told once";
    EXPECT_FALSE(problem("production/shaders/boom.fs").empty());
    EXPECT_EQ(contentOf("data/shaders/boom.fs"), tinted);
    std::string both = vertex;
    both.insert(both.rfind('}'), "    tint = vec4(0.0, 1.0, 0.0, 1.0);\n");
    both.insert(both.find("void main"), "varying vec4 tint;\n");
    save("production/shaders/picture.vs", both);
    await();
    EXPECT_TRUE(loading->problems.empty());
    EXPECT_EQ(contentOf("data/shaders/antiariel.vs"), both);
    EXPECT_NE(contentOf("data/shaders/boom.fs"), tinted);

    // What is copied is what was read, whatever has been saved since.
    save("production/shaders/picture.vs", both + "// Once more.\n");
    rehearsal->lookForChanges();
    usleep(200000);
    std::ofstream("production/shaders/picture.vs") << "broken";
    rehearsal->reload.apply();
    EXPECT_EQ(contentOf("data/shaders/antiariel.vs"), both + "// Once more.\n");
    await();
    EXPECT_EQ(contentOf("data/shaders/antiariel.vs"), both + "// Once more.\n");

    // What an author put below data/ is shown on, and stays.
    save("data/shaders/boom.fs", tinted);
    await();
    rehearsal->reload.news.clear();
    save("production/shaders/boom.fs", contentOf("production/shaders/antiariel.fs"));
    await();
    EXPECT_EQ(contentOf("data/shaders/boom.fs"), tinted);
    EXPECT_EQ(loading->shadersInUse["data/shaders/boom.fs"], tinted);
    EXPECT_EQ(rehearsal->reload.news,
              std::vector<std::string>{"kept data/shaders/boom.fs, which is yours: remove it to have ours"});
}

TEST_F(RehearseReload, AShaderThatIsShownAndNotWrittenIsAProblem) {
    const std::string shader = "data/shaders/boom.fs", before = contentOf(shader);
    fs::create_directories("data/shaders/unfinished-boom.fs/in the way");
    save("production/shaders/boom.fs", tinted);
    await();
    EXPECT_EQ(problem(shader), shader + ": can't be written: it is older than what is shown");
    EXPECT_TRUE(contentOf(shader) == before);
    fs::remove_all("data/shaders/unfinished-boom.fs");
    save("production/shaders/boom.fs", tinted + std::string("// Once more.\n"));
    await();
    await();  // the copy that was made is seen behind it
    EXPECT_EQ(problem(shader), "");
}

TEST_F(RehearseReload, WhatIsDeletedIsMadeWithout) {
    save("make.sh", "ls production >made; echo laid music\n");
    save("production/score.cpp", "");
    await();
    EXPECT_NE(contentOf("made").find("score.cpp"), std::string::npos);
    fs::remove("production/score.cpp");
    await();
    EXPECT_EQ(contentOf("made").find("score.cpp"), std::string::npos);
    // What is on its way to another place is none, nor what an editor puts beside a source.
    writeWholeFile("production/score.cpp", "");
    rehearsal->lookForChanges();
    EXPECT_EQ(rehearsal->build.newer, std::set<std::string>{"production/score.cpp"});
    await();
    save("make.sh", "touch made-again\n");
    fs::create_symlink("author@host:1", "production/.#score.cpp");
    await();
    fs::remove("production/.#score.cpp");
    await();
    EXPECT_FALSE(fs::exists("made-again"));
}

// The copy below data/ is no source: what was written there would be an author's from then on.
TEST_F(RehearseReload, ANumberIsNotWrittenPastTheSourceOfItsShader) {
    const std::string shader = "data/shaders/boom.fs", before = contentOf(shader);
    Numbers& numbers = rehearsal->numbers;
    numbers.shaders = "production";
    goTo(150000);
    save("production/shaders/boom.fs", before + "half a line");
    await();
    const auto number = std::ranges::find(numbers.all, "strength", &TurnableNumber::constant);
    ASSERT_NE(number, numbers.all.end());
    const int index = int(number - numbers.all.begin());
    ASSERT_TRUE(numbers.turn(index, 1));
    numbers.write(index);
    EXPECT_EQ(numbers.news, std::vector<std::string>{"not written: " + shader + " was changed meanwhile"});
    EXPECT_TRUE(contentOf(shader) == before);
    save("production/shaders/boom.fs", before);
    await();
    numbers.write(index);
    EXPECT_TRUE(contentOf("production/shaders/boom.fs") != before);
}

TEST_F(RehearseReload, ATurnedNumberOutlivesItsSource) {
    const std::string shader = "data/shaders/boom.fs", good = contentOf(shader);
    goTo(150000);
    Numbers& numbers = rehearsal->numbers;
    const auto number = std::ranges::find(numbers.all, "strength", &TurnableNumber::constant);
    ASSERT_NE(number, numbers.all.end());
    ASSERT_TRUE(numbers.turn(int(number - numbers.all.begin()), 1));
    const Screen turned = settle();
    const std::vector<std::string> unwritten = numbers.unwritten();
    save(shader, tinted);
    after();
    EXPECT_EQ(numbers.unwritten(), unwritten);
    save(shader, good);
    EXPECT_EQ(differing(after(), turned), 0);
    EXPECT_EQ(numbers.unwritten(), unwritten);
}

// Two saves within one run, a save that changes nothing, and one that can't be made.
TEST_F(RehearseReload, WhatIsShownIsNotTakenForWhatWasSaved) {
    const std::string source = "production/score.cpp", older = "shown are older than " + source;
    const auto working = [&] {
        rehearsal->describeDesk();
        const std::vector<std::string>& lines = rehearsal->desk.working;
        return lines.empty() ? "" : lines.front();
    };
    const auto runsWith = [&](const std::string& text) {
        while (contentOf("read") != text) {
            rehearsal->lookForChanges();
            usleep(2000);
        }
        return rehearsal->build.running();
    };
    save("make.sh",
         "echo '[1/2] Making music'; echo a remark; cp production/score.cpp read; while [ -e slow ]; do "
         "sleep 0.02; done; cat read >>made; "
         "cp data/tex.png spot.new; mv spot.new data/spot.png; echo laid music\n");
    const GLuint before = demo->texture("spot");
    save("slow", "");
    save(source, "first");
    ASSERT_TRUE(runsWith("first"));
    // What it says of itself may be read later than what it does is seen.
    const std::string head = "making music, pictures and models: 1 of 2, 0:",
                      tail = " so far; those " + older;
    while (!working().starts_with(head) || !working().ends_with(tail)) {
        ASSERT_TRUE(rehearsal->build.running()) << working();
        rehearsal->lookForChanges();
        usleep(2000);
    }
    save(source, "second");
    ASSERT_TRUE(runsWith("second"));
    fs::remove("slow");
    await();
    await();  // what was laid may be seen after the end of that which laid it
    EXPECT_EQ(contentOf("made"), "second");
    EXPECT_NE(demo->texture("spot"), before);
    EXPECT_EQ(rehearsal->build.whatIsShown(), "");
    EXPECT_TRUE(rehearsal->build.news.empty());

    save("make.sh", "echo kept data/spot.png\n");
    save(source, "third");
    await();
    EXPECT_EQ(rehearsal->build.news, std::vector<std::string>{"kept data/spot.png"});
    rehearsal->build.news.clear();
    save("make.sh", "true\n");
    save(source, "as it was");
    await();
    EXPECT_EQ(rehearsal->build.news,
              std::vector<std::string>{"nothing had to be made: all is as " + source + " has it"});
    save("make.sh",
         "echo '[1/2] Making music'; echo 'FAILED: made/music'; echo '/make music'; echo 'bar 3: no pitch'; "
         "echo 'ninja: build stopped: subcommand failed.'; exit 1\n");
    save(source, "H5");
    await();
    EXPECT_EQ(rehearsal->build.problem, "bar 3: no pitch");
    save("make.sh", "echo error; exit 1\n");
    save(source, "fourth");
    await();
    EXPECT_EQ(working(), "");
    ASSERT_FALSE(rehearsal->desk.problems.empty());
    EXPECT_EQ(rehearsal->desk.problems.back(), "error\nmusic, pictures and models " + older);
    // Nor by a start that takes over from another.
    begin("production", {"sh", "make.sh"});
    Comeback left;
    left.unmade = {source};
    rehearsal->comeBack(left);
    await();
    EXPECT_EQ(rehearsal->build.whatIsShown(), "music, pictures and models " + older);
}

// Moved away, removed and made anew: what is saved there later is seen as before.
TEST_F(RehearseReload, AFolderThatComesAgainIsWatchedOn) {
    const std::string bad = "void main() { gl_FragColor = colour; }\n",
                      shader = contentOf("data/shaders/boom.fs");
    for (const bool removed : {false, true}) {
        removed ? void(fs::remove_all("data")) : fs::rename("data", "elsewhere");
        await();
        usleep(600000);
        await();
        EXPECT_EQ(problem("data/spot.png"), "data/spot.png: is gone");
        EXPECT_EQ(problem("data/shaders/boom.fs"), "data/shaders/boom.fs: is gone");
        if (removed)
            fs::copy(inside->previous / "data", "data", fs::copy_options::recursive);
        else
            fs::rename("elsewhere", "data");
        await();
        EXPECT_TRUE(loading->problems.empty()) << loading->problems.begin()->second;
        save("data/spot.png", "no picture");
        save("data/shaders/boom.fs", bad, false);
        await();
        EXPECT_EQ(problem("data/spot.png"), "data/spot.png: Not a PNG file");
        EXPECT_NE(problem("data/shaders/boom.fs"), "");
        save("data/spot.png", contentOf(inside->previous / "data/spot.png"));
        save("data/shaders/boom.fs", shader);
        await();
        EXPECT_TRUE(loading->problems.empty()) << loading->problems.begin()->second;
    }
}

TEST(Watch, SeesFoldersThatCameWhileTooMuchHappened) {
    const ScratchDirectory scratch;
    const WorkingDirectory inside(scratch.path);
    fs::create_directory("root");
    Watch watch;
    watch.add("root");
    scratch.write("root/a", "");
    // Two events each.
    const int room = std::stoi(contentOf("/proc/sys/fs/inotify/max_queued_events"));
    for (int i = 0; i <= room / 2; i++) fs::rename(i % 2 ? "root/b" : "root/a", i % 2 ? "root/a" : "root/b");
    fs::create_directory("root/folder");
    EXPECT_TRUE(watch.take().lost);
    watch.take();
    scratch.write("root/folder/file", "");
    EXPECT_EQ(watch.take().saved, std::set<std::string>{"root/folder/file"});
    // Nobody closes a link.
    fs::create_symlink("file", "root/folder/soft");
    fs::create_hard_link("root/folder/file", "root/folder/hard");
    EXPECT_EQ(watch.take().saved, (std::set<std::string>{"root/folder/soft", "root/folder/hard"}));
}

TEST(LiveCode, IsTakenWholeOrNotAtAll) {
    const ScratchDirectory scratch;
    const WorkingDirectory inside(scratch.path);
    fs::create_directory("effects");
    scratch.write("tools/rehearse/live/make",
                  "#!/bin/sh\nmkdir -p $1\nhead -c 200000 /dev/zero >$1/libshow.so\n");
    fs::permissions("tools/rehearse/live/make", fs::perms::owner_all);
    LiveCode live("");
    live.begin();
    while (live.build.requested || live.build.running()) live.poll();
    const auto before = signal(SIGXFSZ, SIG_IGN);
    rlimit room;
    getrlimit(RLIMIT_FSIZE, &room);
    const rlimit tooLittle = {100000, room.rlim_max};
    setrlimit(RLIMIT_FSIZE, &tooLittle);
    EXPECT_FALSE(live.load());
    setrlimit(RLIMIT_FSIZE, &room);
    signal(SIGXFSZ, before);
    EXPECT_TRUE(live.problem.ends_with(": File too large")) << live.problem;
    EXPECT_EQ(std::distance(fs::directory_iterator("build/live"), {}), 1);
}

// Another rehearsal may load it at any time. What is linked here is made anew, as linkers do it.
TEST(LiveCode, IsNeverSeenHalfLinked) {
    const ScratchDirectory scratch;
    scratch.write("CMakeCache.txt",
                  "CMAKE_GENERATOR:INTERNAL=Ninja\nCMAKE_MAKE_PROGRAM:FILEPATH=ninja\n"
                  "CMAKE_PROJECT_NAME:STATIC=show\n");
    scratch.write("build.ninja", "rule link\n  command = sh ./link\nbuild liblinked.so: link source\n");
    scratch.write("link",
                  "rm -f liblinked.so\necho half >liblinked.so\ntouch reached\n"
                  "while [ -e slow ]; do sleep 0.02; done\ncat source >>liblinked.so\n");
    const std::string make = "exec tools/rehearse/live/make " + scratch.path.string() + " c++ >/dev/null";
    for (const char* text : {"first", "second"}) {
        const std::string before = contentOf(scratch.file("libshow.so"));
        scratch.write("source", text);
        scratch.write("slow", "");
        fs::remove(scratch.file("reached"));
        const pid_t process = startShell(make);
        EXPECT_TRUE(::await(process, [&] { return fs::exists(scratch.file("reached")); }));
        EXPECT_EQ(contentOf(scratch.file("libshow.so")), before);
        fs::remove(scratch.file("slow"));
        EXPECT_EQ(waitForProcess(process), 0);
        EXPECT_EQ(contentOf(scratch.file("libshow.so")), "half\n" + std::string(text));
    }
}

TEST_F(RehearseReload, ItSaysWhenNothingCanBeWatched) {
    rlimit before;
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none = {0, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    Watch blind;
    // Nor what was saved made.
    BackgroundBuild build;
    build.command = {"true"};
    build.request();
    while (build.requested || build.running()) build.poll();
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(build.problem, "the build can't be started");
    blind.add("data");
    EXPECT_TRUE(blind.take().saved.empty());
    rehearsal.emplace(*show, *loading, blind);
    rehearsal->lookForChanges();
    EXPECT_EQ(problem(""), "what is saved is not seen: inotify: Too many open files");
    begin("production", {"sh", "make.sh"});
}

// GL objects and open files are as many after it as before.
TEST_F(RehearseReload, AThousandDamagedSavesLeaveNothingBehind) {
    const std::string files[] = {"data/spot.png",        "data/white.png",        "data/loading.jpg",
                                 "data/block.AML",       "data/palikka.AML",      "data/shaders/boom.fs",
                                 "data/shaders/boom.vs", "data/shaders/smoke.fs", "data/pallero.AML"};
    const std::string music = "data/KVX - Ondrevane2.ogg";
    std::map<std::string, std::string> good = {{music, contentOf(music)}};
    for (const std::string& file : files) good[file] = contentOf(file);
    const Screen before = goTo(150000);
    const auto objects = [] {
        int count = 0;
        for (GLuint name = 1; name < 10000; name++)
            count += glIsTexture(name) + glIsBufferARB(name) + glIsProgram(name) + glIsShader(name);
        return count;
    };
    const int kept = objects();

    std::minstd_rand random;
    for (int i = 0; i < 1000; i++) {
        const std::string& file = i % 50 == 0 ? music : files[random() % std::size(files)];
        std::string content = good[file];
        if (random() % 2) content.resize(random() % content.size());
        for (int k = random() % 20; k > 0 && !content.empty(); k--)
            content[random() % content.size()] = char(random());
        save(file, content, random() % 2);
        await();
    }
    for (const auto& [file, content] : good) save(file, content, false);
    EXPECT_EQ(differing(after(), before), 0);
    EXPECT_TRUE(loading->problems.empty());
    EXPECT_EQ(objects(), kept);
    EXPECT_LT(std::distance(fs::directory_iterator("/proc/self/fd"), {}), 60);
}

TEST(CompilerWords, BecomeFileAndLine) {
    EXPECT_EQ(withFileAndLine("a.fs", "0:12(5): error: no\n"), "a.fs:12:5: error: no");
    EXPECT_EQ(withFileAndLine("a.fs", "0(12) : error C1008: no\n"), "a.fs:12: error C1008: no");
    EXPECT_EQ(withFileAndLine("a.fs", "ERROR: 0:12: 'x' : no\n"), "a.fs:12: ERROR: 'x' : no");
    EXPECT_EQ(withFileAndLine("a.fs", "error: no varying\n"), "a.fs: error: no varying");
}

}  // namespace
