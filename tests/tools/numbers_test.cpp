// What of a source can be turned, and what is written when it is.
#include <gtest/gtest.h>

#include <cmath>

#include "tests/process.h"
#include "tests/scratch.h"
#include "tools/rehearse/live/named_numbers.h"
#include "tools/rehearse/numbers.h"

namespace {

// "name label=digits", of all constants in their order.
std::vector<std::string> numbersIn(const std::string& text) {
    std::vector<std::string> lines;
    for (const Piece& piece : namedNumbers(text).pieces)
        for (const NamedNumber& number : piece.numbers)
            lines.push_back(number.constant + " " + number.label + "=" +
                            text.substr(number.at, number.length));
    return lines;
}

using Lines = std::vector<std::string>;

TEST(NamedNumbers, AreThoseOfConstantsAtTheTop) {
    EXPECT_EQ(numbersIn("constexpr float speed = 480;  // degrees, 3 per second\n"
                        "inline constexpr Moment first = {32600}, last = {36460};\n"
                        "// Soft.\nconstexpr Blur soft = {.size = 4, .width = -0.25f};\n"
                        "/* constexpr int no = 1; */\nconstexpr double fade = 1 / 6.5, angle = 2;\n"
                        "constexpr struct Card {\n    float begin = 7;\n    const char* key;\n} cards[] = {\n"
                        "    {speed, \"constexpr int x = 8;\"},  // 9\n    {1.5f, R\"(9)\"},\n};\n"
                        "constexpr std::array<float, 2> wide = {f(1), 2};\n"),
              (Lines{"speed =480", "first =32600", "last =36460", "soft size=4", "soft width=-0.25f",
                     "angle =2", "cards =1.5f", "wide =2"}));
    EXPECT_EQ(
        numbersIn("#version 120\n#define SIZE 3\nuniform float gain = 0.5;\nuniform float time;\n"
                  "const vec2 lamp = vec2(-0.9, 0.45);\nvoid main() {\n    const float hub = 0.3;\n}\n"),
        (Lines{"gain =0.5", "lamp 1=-0.9", "lamp 2=0.45"}));
    // What else there is has none, nor what would have to be written otherwise.
    EXPECT_EQ(
        numbersIn(
            "float f(float x = 2) {\n    return x;\n}\nstruct S {\n    static constexpr int n = 4;\n};\n"
            "constexpr unsigned mask = 0x10;\nconstexpr double tiny = 1e-5;\n"
            "constexpr int big = 1'000;\nconstexpr int eight = 010;\n"
            "constexpr Row rows[] = {{1 + x, [] { return 2; }}};\n"),
        Lines{});
    // Whatever is saved halfway.
    for (const char* text :
         {"constexpr float x = ", "constexpr float x = {1, {2", "namespace {", "}", "const", "= 3;",
          "constexpr = 3;", "const float a[ = 3", "struct S { constexpr int", "R\"(", "R\"", "\"", "/*", "#",
          "const vec2 a = vec", "constexpr float x = {.", "std::array<int"})
        namedNumbers(text);
}

TEST(NamedNumbers, StayWhereOnlyAConstantWillDo) {
    const std::set<std::string> needed =
        namedNumbers(
            "float bound[a];\nstd::array<float, b> list;\n"
            "struct S {\n    static constexpr int n = here::c;\n    int m() { return free; }\n};\n"
            "int pick(int i) {\n    static const int once = d;\n    switch (i) {\n        case e: return "
            "once;\n"
            "    }\n    static_assert(f > 0);\n    // static\nconstexpr int free = 8;\n"
            "    for (i = 0; i < free && i > 2; i++) {}\n}\n")
            .needed;
    for (const char* name : {"a", "b", "c", "d", "e", "f"}) EXPECT_TRUE(needed.contains(name)) << name;
    EXPECT_FALSE(needed.contains("free"));
}

// They are fixed for good by what a compiler says against them, not by what happens to it.
TEST(NamedNumbers, AreFixedByAJudgementAlone) {
    const ScratchDirectory scratch;
    scratch.write(
        "compiler",
        "#!/bin/sh\ncase \"$*\" in *-fsyntax-only*) exit 0 ;; esac\ncat ${0%compiler}said >&2\nexit 1\n");
    std::filesystem::permissions(scratch.file("compiler"), std::filesystem::perms::owner_all);
    const auto fixedBy = [&](const std::string& said) {
        scratch.write("said", said);
        scratch.write("fixed", "");
        for (int i = 0; i < 2; i++) {
            const Result result = shell("tools/rehearse/live/compile . " + scratch.path.string() + " " +
                                        scratch.file("compiler") + " -o " + scratch.file("robo.o") + " " +
                                        scratch.file("turned/effects/robo.cpp"));
            EXPECT_EQ(result.status, 1);
            EXPECT_EQ(result.output, said);
        }
        return contentOf(scratch.file("fixed"));
    };
    EXPECT_EQ(fixedBy("g++: fatal error: Killed signal terminated program cc1plus\n"), "");
    EXPECT_EQ(fixedBy("robo.cpp:3:1: fatal error: error writing to /tmp/a.s: No space left on device\n"), "");
    EXPECT_EQ(fixedBy("3:1: error: size\n"), "error\nsize\neffects/robo.cpp\n");
}

// Half of a source would be compiled, and be to blame for what it lacks.
TEST(NamedNumbers, AreNotTakenFromHalfASource) {
    const ScratchDirectory scratch;
    const Result result =
        shell("trap '' XFSZ; ulimit -f 8; " BUILD_FOLDER "/live/turnable . '" + scratch.path.string() + "'");
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.output.ends_with(": error: File too large\n")) << result.output;
}

TEST(NamedNumbers, AreMentionedByFunctionsAndClasses) {
    const std::string text =
        "Heap::Heap(int n)\n    : Base(n), caster{style, n} {\n    half();\n}\n"
        "constexpr float half(float x) {\n    return x / two;\n}\n"
        "struct Room : Base {\n    float size = wide;\n};\nstd::string\nname() {\n}\n";
    const std::vector<Piece> pieces = namedNumbers(text).pieces;
    ASSERT_EQ(pieces.size(), 5u);
    EXPECT_TRUE(pieces[0].mentions.contains("style"));
    EXPECT_EQ(text.substr(pieces[0].bodyAt, 6), "\n    h");
    EXPECT_EQ(pieces[1].names, std::set<std::string>{"half"});
    EXPECT_TRUE(pieces[1].mentions.contains("two"));
    EXPECT_TRUE(pieces[2].names.contains("Room"));
    EXPECT_TRUE(pieces[2].mentions.contains("wide"));
}

TEST(TurnedBy, KeepsTheWayANumberIsWritten) {
    const struct {
        const char *source, *text;
        double steps;
        bool whole, single;
        const char* expected;
    } rows[] = {
        {"480", "480", 1, false, true, "490"},
        {"480", "480", 0.1, false, true, "481"},
        {"480", "481.5f", 1, false, true, "491.5f"},
        {"480", "490", -1, false, true, "480"},
        {"1.5f", "1.5f", 3, false, true, "1.8f"},
        {"1.5f", "1.5f", -20, false, true, "-0.5f"},
        {"-0.01f", "-0.01f", 1, false, true, "-0.009f"},
        {"1.0", "1.0", -10, false, false, "0.0"},
        {"3", "3", 1, false, false, "3.1"},
        {"5", "5", -6, true, false, "-1"},
        {"20", "20", 0.1, true, false, "20"},
        {"62761", "62761", 1, true, false, "62771"},
        {"17.1887338539247", "17.1887338539247", 1, false, false, "18.1887338539247"},
    };
    for (const auto& row : rows) {
        const double size = std::fabs(valueOf(row.source));
        EXPECT_EQ(turnedBy(row.text, row.source, row.steps, size, row.whole, row.single), row.expected)
            << row.source << " " << row.steps;
    }
    EXPECT_EQ(turnedBy("0", "0", 1, 70, false, true), "1");
    EXPECT_EQ(turnedBy("0", "0", 1, 0.1, false, true), "0.01f");
}

}  // namespace
