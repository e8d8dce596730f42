// How products are made and laid, in a small production of its own: real sources, ninja and compilers.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <memory>
#include <thread>

#include "production/making/laying.h"
#include "production/pictures/icons.h"
#include "production/shaders/shaders.h"
#include "tests/process.h"
#include "tests/scratch.h"

namespace {

namespace fs = std::filesystem;

class Making : public testing::Test {
public:
    static inline std::unique_ptr<ScratchDirectory> scratch;
    pid_t other = -1;

    static void SetUpTestSuite() {
        scratch = std::make_unique<ScratchDirectory>();
        const std::string root = scratch->path;
        const Result small = shell("tests/production/small_production " + root + " $PWD/production/making " +
                                   BUILD_FOLDER "/lay && cmake -S " + root + " -B " + root +
                                   "/build -G Ninja -DCMAKE_CXX_COMPILER_LAUNCHER=" + root + "/launcher");
        ASSERT_EQ(small.status, 0) << small.output;
    }
    static void TearDownTestSuite() { scratch.reset(); }
    void SetUp() override {
        save("shared", "word");
        save("one", "first");
        save("two", "second");
        const Result first = build();
        ASSERT_EQ(first.status, 0) << first.output;
        ASSERT_EQ(data(), "first word, second word");
        for (const char* name : {"made", "compiled"}) fs::remove(file(name));
    }
    void TearDown() override {
        if (other > 0) endProcess(other, SIGKILL);
        fs::remove(file("slow"));
    }

    static std::string file(const std::string& name) { return scratch->file(name); }
    static void save(const std::string& header, const std::string& word, const std::string& comment = "") {
        const std::string text = comment + "constexpr char word[] = \"" + word + "\";\n";
        if (contentOf(file(header + ".h")) != text) scratch->write(header + ".h", text);
    }
    static Result build(const std::string& targets = "data") {
        return shell("ninja -C " + file("build") + " " + targets);
    }
    static pid_t startBuild(const std::string& log) {
        return startShell("exec ninja -C " + file("build") + " data >" + log + " 2>&1");
    }
    // Begins a build that goes on until `finish`, from where its maker or its compiler is reached.
    void begin() {
        fs::remove(file("reached"));
        scratch->write("slow", "");
        other = startBuild("/dev/null");
        ASSERT_TRUE(await(other, [] { return fs::exists(file("reached")); }));
    }
    void finish() {
        fs::remove(file("slow"));
        EXPECT_EQ(waitForProcess(other), 0);
        other = -1;
    }
    static std::string data() {
        return contentOf(file("data/number one.txt")) + ", " + contentOf(file("data/two.txt"));
    }
    // Who was made since the last question.
    static std::string made() {
        std::string names = contentOf(file("made"));
        fs::remove(file("made"));
        std::replace(names.begin(), names.end(), '\n', ' ');
        return names;
    }
};

TEST_F(Making, IsDoneForWhatRestsOnTheChangeAndNothingElse) {
    save("shared", "thing");
    build();
    EXPECT_EQ(data(), "first thing, second thing");
    made();
    save("two", "other");
    build();
    EXPECT_EQ(data(), "first thing, other thing");
    EXPECT_EQ(made(), "two ");
    save("shared", "thing", "// What they share.\n");
    const Result comment = build();
    EXPECT_NE(comment.output.find("one.cpp"), std::string::npos) << "compiled";
    EXPECT_EQ(comment.output.find("laid"), std::string::npos);
    fs::remove_all(file("data"));
    build();
    EXPECT_EQ(data(), "first thing, other thing");
    EXPECT_EQ(made(), "");
}

TEST_F(Making, SeesWhatIsSavedWhileItCompilesOrMakes) {
    save("one", "early");
    begin();
    sleepSeconds(0.05);
    save("one", "late");
    finish();
    EXPECT_EQ(data(), "early word, second word");
    build();
    EXPECT_EQ(data(), "late word, second word");

    // Compiled before the slowness begins.
    save("two", "early");
    ASSERT_EQ(build("make_two_txt").status, 0);
    made();
    begin();
    save("two", "late");
    finish();
    EXPECT_EQ(data(), "late word, early word");
    build();
    EXPECT_EQ(data(), "late word, late word");
    EXPECT_EQ(made(), "two two ");
}

TEST_F(Making, TwoAtOnceTakeTurns) {
    save("shared", "thing");
    begin();
    const std::string log = file("log");
    const pid_t second = startBuild(log);
    const std::string line =
        "Waiting for ninja (pid " + std::to_string(other) + "), which builds here already\n";
    EXPECT_TRUE(await(second, [&] { return contentOf(log).find(line) != std::string::npos; }))
        << contentOf(log);
    finish();
    EXPECT_EQ(waitForProcess(second), 0);
    EXPECT_EQ(data(), "first thing, second thing");
    // Once for both.
    const std::string names = made(), compiled = contentOf(file("compiled"));
    EXPECT_TRUE(names == "one two " || names == "two one ") << names;
    EXPECT_EQ(compiled.find("one.cpp.o -c"), compiled.rfind("one.cpp.o -c")) << compiled;
    EXPECT_EQ(contentOf(log).find("laid"), std::string::npos);
}

TEST_F(Making, StoppedInTheMiddleLeavesTheLastState) {
    save("shared", "other");
    ASSERT_EQ(build("make_number_one_txt make_two_txt").status, 0);
    for (const int signal : {SIGTERM, SIGKILL}) {
        begin();
        endProcess(other, signal);
        other = -1;
        EXPECT_EQ(data(), "first word, second word");
    }
    fs::remove(file("slow"));
    EXPECT_EQ(build().status, 0);
    EXPECT_EQ(data(), "first other, second other");
}

// As `sed -i.bak` and `mv` do it: ninja alone goes by times.
TEST_F(Making, SeesWhatIsMovedBackWithItsOldTime) {
    fs::copy_file(file("one.h"), file("one.bak"));
    fs::last_write_time(file("one.bak"), fs::last_write_time(file("one.h")));
    save("one", "other");
    build();
    EXPECT_EQ(data(), "other word, second word");
    fs::rename(file("one.bak"), file("one.h"));
    build();
    EXPECT_EQ(data(), "first word, second word");
}

// The build reads the tables by itself; the data set's other files are held by their hashes.
TEST(Products, AreAllMade) {
    for (const auto& row : shaderProducts)
        EXPECT_TRUE(fs::exists(BUILD_FOLDER "/made/" + std::string(row.file)));
    for (const auto& row : iconProducts)
        EXPECT_TRUE(fs::exists(BUILD_FOLDER "/icons/" + std::string(row.file)));
}

// Authors' own files.
class Laying : public testing::Test {
public:
    ScratchDirectory scratch;
    fs::path folder = scratch.path / "data";

    std::vector<Made> make(const std::string& first, const std::string& second) const {
        return {{scratch.write("made/a b.png", first), "a b.png"},
                {scratch.write("made/c/d.fs", second), "c/d.fs"}};
    }
    // What it says.
    std::string lay(const std::vector<Made>& made) const {
        testing::internal::CaptureStdout();
        EXPECT_TRUE(::lay(made, folder));
        return testing::internal::GetCapturedStdout();
    }
    std::string data() const { return contentOf(folder / "a b.png") + ", " + contentOf(folder / "c/d.fs"); }
};

TEST_F(Laying, NeverCoversAnAuthorsFile) {
    EXPECT_EQ(lay(make("1", "2")), "laid a b.png\nlaid c/d.fs\n");
    EXPECT_EQ(lay(make("1", "2")), "");
    EXPECT_EQ(lay(make("3", "2")), "laid a b.png\n");
    const std::string kept = "kept data/a b.png, which is yours: ";
    scratch.write("data/a b.png", "mine");
    EXPECT_TRUE(lay(make("4", "4")).starts_with(kept));
    EXPECT_EQ(data(), "mine, 4");
    // A lost list makes nobody's file ours, and ours nobody's as long as it is what was made.
    fs::remove(folder / ".made");
    EXPECT_TRUE(lay(make("5", "4")).starts_with(kept));
    EXPECT_EQ(lay(make("mine", "6")), "laid c/d.fs\n");
    fs::remove(folder / "a b.png");
    EXPECT_EQ(lay(make("7", "7")), "laid a b.png\nlaid c/d.fs\n");
    fs::remove(folder / "a b.png");
    EXPECT_EQ(lay(make("7", "7")), "laid a b.png\n");
    fs::remove(folder / "a b.png");
    fs::create_directory(folder / "a b.png");
    EXPECT_TRUE(lay(make("8", "7")).starts_with(kept));
    fs::remove_all(folder);
    EXPECT_EQ(lay(make("7", "8")), "laid a b.png\nlaid c/d.fs\n");
    EXPECT_EQ(data(), "7, 8");
}

// The second one can be read when an author has saved the first, which has been looked at.
TEST_F(Laying, KeepsWhatIsSavedMeanwhile) {
    lay(make("1", "1"));
    const std::vector<Made> made = make("2", "2");
    fs::remove(made.back().path);
    ASSERT_EQ(mkfifo(made.back().path.c_str(), 0600), 0);
    std::thread author([&] {
        std::ofstream pipe(made.back().path);
        scratch.write("data/a b.png", "mine");
        pipe << "2";
    });
    EXPECT_EQ(lay(made), keptLine(folder, "a b.png") + "\nlaid c/d.fs\n");
    author.join();
    EXPECT_EQ(data(), "mine, 2");
    EXPECT_FALSE(fs::exists(folder / "unfinished-a b.png"));
}

TEST_F(Laying, LaysNothingWhereOneCannotBeRead) {
    lay(make("1", "1"));
    std::vector<Made> made = make("2", "2");
    fs::remove(made.back().path);
    EXPECT_FALSE(::lay(made, folder));
    EXPECT_EQ(data(), "1, 1");
}

// Killed at any moment, each file is whole and known as ours.
TEST_F(Laying, KilledItGoesOn) {
    constexpr int count = 60;
    const auto makeAll = [&](const std::string& text) {
        std::vector<Made> made;
        for (int i = 0; i < count; i++) {
            const std::string file = std::to_string(i);
            made.push_back({scratch.write("made/" + file, text), file});
        }
        return made;
    };
    std::vector<std::string> words = {BUILD_FOLDER "/lay", scratch.file("made"), folder};
    for (const Made& made : makeAll("fresh")) words.push_back(made.file);
    // While the first ones are being written, and moved.
    for (const char* file : {"unfinished-1", "0", "2"}) {
        fs::remove_all(folder);
        lay(makeAll("old"));
        makeAll("fresh");
        const pid_t process = startProcess(words);
        while (contentOf(folder / file) != "fresh" && contentOf(folder / "2") != "fresh") continue;
        endProcess(process, SIGKILL);
        for (int k = 0; k < count; k++) {
            const std::string text = contentOf(folder / std::to_string(k));
            EXPECT_TRUE(text == "old" || text == "fresh") << k;
        }
        const std::string said = lay(makeAll("next"));
        EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), count);
        EXPECT_EQ(said.find("kept"), std::string::npos);
    }
}

TEST_F(Laying, WaitsForWhoLoadsWithALine) {
    lay(make("1", "1"));
    make("2", "2");
    const std::string log = scratch.file("log");
    pid_t process = -1;
    {
        const FolderLock loading(folder, FolderLock::reading), too(folder, FolderLock::reading);
        process = startShell("exec " BUILD_FOLDER "/lay " + scratch.file("made") + " " + folder.string() +
                             " 'a b.png' >" + log + " 2>&1");
        EXPECT_TRUE(await(process, [&] { return !contentOf(log).empty(); }));
        EXPECT_EQ(data(), "1, 1");
    }
    EXPECT_EQ(waitForProcess(process), 0);
    EXPECT_EQ(data(), "2, 1");
    EXPECT_EQ(contentOf(log), "lay: waiting for valojuova_tests (pid " + std::to_string(getpid()) +
                                  "), which holds " + folder.string() + "\nlaid a b.png\n");
}

}  // namespace
