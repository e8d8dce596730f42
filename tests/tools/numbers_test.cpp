// What of a source can be turned, and what is written when it is.
#include <gtest/gtest.h>

#include <cmath>

#include "tools/rehearse/live/named_numbers.h"
#include "tools/rehearse/numbers.h"

namespace {

// "name label=digits", of all constants in their order.
std::vector<std::string> numbersIn(const std::string& text) {
    const NamedNumbers found = namedNumbers(text);
    std::vector<std::string> lines;
    for (const NamedConstant& constant : found.constants) {
        for (const int i : constant.numbers) {
            const WrittenNumber& number = found.numbers[size_t(i)];
            lines.push_back(constant.name + " " + number.label + "=" + text.substr(number.at, number.length));
        }
    }
    return lines;
}

using Lines = std::vector<std::string>;

TEST(NamedNumbers, AreThoseOfConstantsAtTheTop) {
    EXPECT_EQ(numbersIn("constexpr float speed = 480;  // degrees, 3 per second\n"
                        "namespace a { inline constexpr Moment first = {32600}, last = {36460}; }\n"
                        "const Blur soft = {.size = 4, .width = -0.25f};\n"
                        "/* constexpr int no = 1; */ constexpr double fade = 1 / 6.5, angle = 2 * pi / 5;\n"
                        "constexpr struct Card { float begin = 7; const char* key; } cards[] = {\n"
                        "    {speed, \"constexpr int x = 8;\"}, {- 1.5f, R\"(9)\", },\n"
                        "};\n"),
              (Lines{"speed =480", "first =32600", "last =36460", "soft size=4", "soft width=-0.25f",
                     "fade =6.5", "cards 2.1=- 1.5f"}));
    // Shaders have theirs; what else there is has none, nor what would have to be written otherwise.
    EXPECT_EQ(numbersIn("#version 120\n#define SIZE 3\nuniform float gain = 0.5;\nuniform float time;\n"
                        "const vec2 lamp = vec2(-0.9, 0.45);\nvoid main() { const float hub = 0.3; }\n"),
              (Lines{"gain =0.5", "lamp 1=-0.9", "lamp 2=0.45"}));
    EXPECT_EQ(
        numbersIn(
            "int count = 3;\nfloat f(float x = 2) { return x; }\nstruct S { static constexpr int n = 4; };\n"
            "constexpr unsigned mask = 0x10;\nconstexpr double tiny = 1e-5;\nconstexpr int big = 1'000;\n"
            "const float* const place = nullptr;\nconst Row rows[] = {{1, [] { return 2; }}};\n"
            "constexpr int eight = 010;\n"),
        Lines{});
    // Whatever is saved halfway.
    for (const char* text :
         {"constexpr float x = ", "constexpr float x = {1, {2", "namespace {", "}", "const", "= 3;",
          "constexpr = 3;", "const float a[ = 3", "struct S { constexpr int", "R\"(", "\"", "/*"})
        namedNumbers(text);
}

TEST(NamedNumbers, StayWhereOnlyAConstantWillDo) {
    const std::set<std::string> needed =
        namedNumbers(
            "constexpr int a = 1, b = 2, c = 3, d = 4, e = 5, f = 6, g = 7, free = 8;\n"
            "float bound[a];\nstd::array<float, b> list;\nenum { E = c };\n"
            "struct S { static constexpr int n = d; int m() { return free; } };\n"
            "int pick(int i) { static const int once = e; switch (i) { case f: return once; }\n"
            "  static_assert(g > 0); for (i = 0; i < free && i > 2; i++) {} return s.a + free; }\n")
            .needed;
    for (const char* name : {"a", "b", "c", "d", "e", "f", "g"}) EXPECT_TRUE(needed.contains(name)) << name;
    EXPECT_FALSE(needed.contains("free"));
}

TEST(NamedNumbers, AreReadByFunctions) {
    const std::vector<NamedFunction> functions =
        namedNumbers(
            "Heap::Heap(int n) : Base(n), caster{style, n} { half(); }\n"
            "constexpr float half(float x) { return x / two; }\n"
            "void draw() { demo->useShader(\"boom\"); other.size = size; }\n")
            .functions;
    ASSERT_EQ(functions.size(), 3u);
    EXPECT_TRUE(functions[0].mentions.contains("style"));
    EXPECT_TRUE(functions[1].isConstexpr && functions[1].name == "half" &&
                functions[1].mentions.contains("two"));
    EXPECT_EQ(functions[2].shaders, std::set<std::string>{"boom"});
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
        {"- 52", "- 52", 1, false, true, "-51"},
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
