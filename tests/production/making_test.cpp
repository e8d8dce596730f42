// How products are made and laid, in a small production of its own: real sources, ninja and compilers.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/file.h>

#include <algorithm>
#include <functional>

#include "production/making/laying.h"
#include "production/models/models.h"
#include "production/music/soundtrack.h"
#include "production/pictures/icons.h"
#include "production/pictures/pictures.h"
#include "production/shaders/shaders.h"
#include "tests/sound/sound_server.h"
#include "tests/tools/run.h"

namespace {

namespace fs = std::filesystem;

// Each product has a word of its own and one that both share; "two" is slow while there is a file "slow".
class Making : public testing::Test {
public:
    ScratchDirectory scratch;
    pid_t other = -1;

    void SetUp() override {
        scratch.write(
            "CMakeLists.txt",
            "cmake_minimum_required(VERSION 3.25)\nproject(small CXX)\n"
            "include(" +
                fs::absolute("production/making/products.cmake").string() +
                ")\n"
                "include_directories(${CMAKE_SOURCE_DIR})\nadd_library(small STATIC one.cpp two.cpp)\n"
                "add_executable(lay IMPORTED)\n"
                "set_property(TARGET lay PROPERTY IMPORTED_LOCATION " BUILD_FOLDER
                "/lay)\n"
                "add_products(products.h small ${CMAKE_BINARY_DIR}/made)\n"
                "lay_products(${CMAKE_BINARY_DIR}/made ${CMAKE_SOURCE_DIR}/data)\n");
        scratch.write("products.h",
                      "struct Product {\n    const char* file;\n    void (*make)(const char* path);\n};\n"
                      "void makeOne(const char* path);\nvoid makeTwo(const char* path);\n"
                      "inline constexpr Product products[] = {\n    {\"number one.txt\", makeOne},\n"
                      "    {\"two.txt\", makeTwo},\n};\n");
        save("shared.h", "constexpr char shared[] = \"word\";\n");
        save("one.cpp", source("One", "first"));
        save("two.cpp", source("Two", "second"));
        // A user's launcher. What is slow to compile was read at the beginning and is written at the end.
        scratch.write("launcher", "#!/bin/sh\necho \"$*\" >>" + scratch.file("compiled") +
                                      "\n\"$@\" || exit\n" + waiting() +
                                      "for word; do case $word in *.o) touch $word ;; esac; done\n");
        fs::permissions(scratch.file("launcher"), fs::perms::owner_all);
        ASSERT_EQ(shell("cmake -S " + scratch.path.string() + " -B " + scratch.file("build") +
                        " -G Ninja -DCMAKE_CXX_COMPILER_LAUNCHER=" + scratch.file("launcher"))
                      .status,
                  0);
        const Result first = build();
        ASSERT_EQ(first.status, 0) << first.output;
        ASSERT_EQ(data(), "first word, second word");
        fs::remove(scratch.file("made"));
    }
    void TearDown() override {
        if (other > 0) endProcess(other, SIGKILL);
    }

    std::string waiting() const {
        const std::string slow = scratch.file("slow");
        return "if [ -e " + slow + " ]; then touch " + slow + ".reached; fi\nwhile [ -e " + slow +
               " ]; do sleep 0.02; done\n";
    }
    std::string source(const std::string& name, const std::string& word) const {
        return "#include <cstdio>\n#include <cstdlib>\n#include \"shared.h\"\n#include \"products.h\"\n"
               "void make" +
               name +
               "(const char* path) {\n"
               "    system(\"echo " +
               name + " >>" + scratch.file("made") + "; sh " + scratch.file("wait") +
               "\");\n"
               "    FILE* file = fopen(path, \"w\");\n    fprintf(file, \"" +
               word + " %s\", shared);\n    fclose(file);\n}\n";
    }
    void save(const std::string& name, const std::string& text) const { scratch.write(name, text); }
    // What is begun now goes on until `finish`, from where its maker or its compiler is reached.
    void makeSlowly() const {
        scratch.write("wait", waiting());
        scratch.write("slow", "");
    }
    bool await(const std::function<bool()>& condition) const {
        for (int i = 0; i < 3000 && !condition(); i++) sleepSeconds(0.02);
        return condition();
    }
    void begin(const std::string& log = "/dev/null") {
        const int file = open(log.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
        other = startProcess({"ninja", "-C", scratch.file("build"), "data"}, file, file);
        close(file);
        ASSERT_TRUE(await([&] { return fs::exists(scratch.file("slow.reached")); }));
    }
    void finish() {
        fs::remove(scratch.file("slow"));
        EXPECT_EQ(waitForProcess(other), 0);
        other = -1;
    }
    Result build() const { return shell("ninja -C " + scratch.file("build") + " data"); }
    std::string data() const {
        return content(scratch.file("data/number one.txt")) + ", " + content(scratch.file("data/two.txt"));
    }
    // Who was made since the last question.
    std::string made() const {
        std::string names = content(scratch.file("made"));
        fs::remove(scratch.file("made"));
        std::replace(names.begin(), names.end(), '\n', ' ');
        return names;
    }
};

TEST_F(Making, IsDoneForWhatRestsOnTheChangeAndNothingElse) {
    save("shared.h", "constexpr char shared[] = \"thing\";\n");
    build();
    EXPECT_EQ(data(), "first thing, second thing");
    made();
    save("two.cpp", source("Two", "other"));
    build();
    EXPECT_EQ(data(), "first thing, other thing");
    EXPECT_EQ(made(), "Two ");
    save("shared.h", "// What they share.\nconstexpr char shared[] = \"thing\";\n");
    const Result comment = build();
    EXPECT_NE(comment.output.find("one.cpp"), std::string::npos) << "compiled";
    EXPECT_EQ(made(), "");
    EXPECT_EQ(comment.output.find("laid"), std::string::npos);
    fs::remove_all(scratch.file("data"));
    build();
    EXPECT_EQ(data(), "first thing, other thing");
    EXPECT_EQ(made(), "");
}

TEST_F(Making, SeesWhatIsSavedWhileItCompilesOrMakes) {
    makeSlowly();
    save("one.cpp", source("One", "early"));
    begin();
    sleepSeconds(0.05);
    save("one.cpp", source("One", "late"));
    finish();
    EXPECT_EQ(data(), "early word, second word");
    build();
    EXPECT_EQ(data(), "late word, second word");

    // Compiled before the slowness begins.
    made();
    save("two.cpp", source("Two", "early"));
    ASSERT_EQ(shell("ninja -C " + scratch.file("build") + " make_two_txt").status, 0);
    fs::remove(scratch.file("slow.reached"));
    makeSlowly();
    begin();
    save("two.cpp", source("Two", "late"));
    finish();
    EXPECT_EQ(data(), "late word, early word");
    build();
    EXPECT_EQ(data(), "late word, late word");
    EXPECT_EQ(made(), "Two Two ");
}

TEST_F(Making, TwoAtOnceTakeTurns) {
    save("shared.h", "constexpr char shared[] = \"thing\";\n");
    makeSlowly();
    begin();
    const std::string log = scratch.file("log");
    const int file = open(log.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    const pid_t second = startProcess({"ninja", "-C", scratch.file("build"), "data"}, file, file);
    close(file);
    const std::string line =
        "Waiting for ninja (pid " + std::to_string(other) + "), which builds here already\n";
    EXPECT_TRUE(await([&] { return content(log).find(line) != std::string::npos; })) << content(log);
    finish();
    EXPECT_EQ(waitForProcess(second), 0);
    EXPECT_EQ(data(), "first thing, second thing");
    std::string names = made();
    EXPECT_TRUE(names == "One Two " || names == "Two One ") << names;
    const std::string compiled = content(scratch.file("compiled"));
    size_t count = 0;
    for (size_t at = 0; (at = compiled.find("one.cpp.o -c", at)) != std::string::npos; at++) count++;
    EXPECT_EQ(count, 2u) << compiled;
    EXPECT_EQ(content(log).find("laid"), std::string::npos);
}

TEST_F(Making, StoppedInTheMiddleLeavesTheLastState) {
    for (const int signal : {SIGTERM, SIGKILL}) {
        const std::string word = signal == SIGTERM ? "gentle" : "hard";
        save("shared.h", "constexpr char shared[] = \"" + word + "\";\n");
        const std::string before = data();
        ASSERT_EQ(shell("ninja -C " + scratch.file("build") + " make_number_one_txt make_two_txt").status, 0);
        makeSlowly();
        begin();
        endProcess(other, signal);
        other = -1;
        fs::remove(scratch.file("slow"));
        fs::remove(scratch.file("slow.reached"));
        EXPECT_EQ(data(), before);
        EXPECT_EQ(build().status, 0);
        EXPECT_EQ(data(), "first " + word + ", second " + word);
    }
}

// The build reads the tables by itself.
TEST(Products, AreAllMade) {
    const auto expectMade = [](const auto& table, const std::string& folder) {
        for (const auto& row : table) EXPECT_TRUE(fs::exists(BUILD_FOLDER + folder + row.file)) << row.file;
    };
    expectMade(modelProducts, "/made/");
    expectMade(pictureProducts, "/made/");
    expectMade(musicProducts, "/made/");
    expectMade(shaderProducts, "/made/");
    expectMade(iconProducts, "/icons/");
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
    std::string data() const { return content(folder / "a b.png") + ", " + content(folder / "c/d.fs"); }
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
    const std::string old = "old", fresh = "fresh";
    const auto makeAll = [&](const std::string& text) {
        std::vector<Made> made;
        for (int i = 0; i < count; i++) {
            const std::string file = std::to_string(i);
            made.push_back({scratch.write("made/" + file, text), file});
        }
        return made;
    };
    std::vector<std::string> words = {BUILD_FOLDER "/lay", scratch.file("made"), folder};
    for (const Made& made : makeAll(fresh)) words.push_back(made.file);
    for (int i = 0; i < 6; i++) {
        fs::remove_all(folder);
        lay(makeAll(old));
        makeAll(fresh);
        const pid_t process = startProcess(words);
        // While the first ones are being written, or moved.
        const std::string file = std::to_string(i);
        const bool moved = i % 3;
        while (content(folder / file) != fresh &&
               (moved || content(folder / ("unfinished-" + file)) != fresh))
            continue;
        endProcess(process, SIGKILL);
        for (int k = 0; k < count; k++) {
            const std::string text = content(folder / std::to_string(k));
            EXPECT_TRUE(text == old || text == fresh) << k;
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
        const int file = open(log.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
        process = startProcess({BUILD_FOLDER "/lay", scratch.file("made"), folder, "a b.png"}, file, file);
        close(file);
        for (int i = 0; i < 3000 && content(log).empty(); i++) sleepSeconds(0.02);
        EXPECT_EQ(data(), "1, 1");
    }
    EXPECT_EQ(waitForProcess(process), 0);
    EXPECT_EQ(data(), "2, 1");
    EXPECT_EQ(content(log), "lay: waiting for valojuova_tests (pid " + std::to_string(getpid()) +
                                "), which holds " + folder.string() + "\nlaid a b.png\n");
}

}  // namespace
