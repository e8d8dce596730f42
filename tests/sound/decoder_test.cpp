// Files as they come: other rates, many channels, cut, damaged, chained, or not Vorbis at all.
#include "sound/decoder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cmath>
#include <filesystem>
#include <fstream>

#include "tests/scratch.h"
#include "tests/sound/signal.h"

namespace {

using namespace std::chrono_literals;
using sound::Decoder;
using sound::Time;

struct Sides {
    std::vector<float> left;
    std::vector<float> right;
};

Sides read(Decoder& decoder, Time from, long frames, int rate = recordRate) {
    decoder.seek(from, rate);
    std::vector<float> stereo(size_t(2 * frames));
    long at = 0;
    for (; at + 500 <= frames; at += 500) decoder.read(stereo.data() + 2 * at, 500);
    decoder.read(stereo.data() + 2 * at, int(frames - at));
    Sides sides;
    for (size_t i = 0; i < stereo.size(); i += 2) {
        sides.left.push_back(stereo[i]);
        sides.right.push_back(stereo[i + 1]);
    }
    return sides;
}

float worstDifference(const std::vector<float>& a, const std::vector<float>& b, size_t bFrom, size_t count) {
    float worst = 0;
    for (size_t i = 0; i < count; i++) worst = std::max(worst, std::abs(a[i] - b[bFrom + i]));
    return worst;
}

void writeFile(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

TEST(Decoder, SeeksToTheFrame) {
    const std::string path = scratchPath("seek.ogg");
    writeVorbis(path, makeNoise(5, recordRate), recordRate, 2);
    const std::vector<float> whole = decodeVorbis(path);
    auto decoder = Decoder::open(path.c_str());
    ASSERT_TRUE(decoder);
    for (const long frame : {0L, 100000L, 44100L, 7L}) {
        const Sides sides = read(*decoder, Time(frame * 1'000'000'000 / recordRate + 1), 3000);
        EXPECT_LT(worstDifference(sides.left, whole, size_t(frame), 3000), 1e-4f) << frame;
    }
    const Sides end = read(*decoder, 4900ms, recordRate);
    EXPECT_LT(worstDifference(end.left, whole, whole.size() - 4410, 4410), 1e-4f);
    EXPECT_EQ(*std::max_element(end.left.begin() + 4410, end.left.end()), 0);
    EXPECT_EQ(read(*decoder, 1h, 1000).left, std::vector<float>(1000));
    EXPECT_FALSE(decoder->isDamaged());
}

TEST(Decoder, PlaysOtherRatesAtTheirPitchAndSpeed) {
    for (const int rate : {8000, 22050, 48000, 96000}) {
        const std::string path = scratchPath("rate.ogg");
        writeVorbis(path, makeTone(3, rate, 441), rate, 1);
        auto decoder = Decoder::open(path.c_str());
        ASSERT_TRUE(decoder);
        const Sides sides = read(*decoder, 1s, 3 * recordRate);
        EXPECT_EQ(sides.left, sides.right);
        EXPECT_NEAR(toneFrequency(sides.left, 1000, 80000), 441, 0.1) << rate;
        // The tone made at the mixer's rate fits it in time and in strength.
        const std::vector<float> tone = makeTone(3, recordRate, 441);
        EXPECT_LT(worstDifference(sides.left, tone, recordRate, 80000), 0.05f) << rate;
        // Two of its three seconds were left.
        EXPECT_GT(*std::max_element(sides.left.begin() + 87000, sides.left.begin() + 88000), 0.2f) << rate;
        EXPECT_LT(*std::max_element(sides.left.begin() + 88600, sides.left.end()), 0.01f) << rate;
    }
}

TEST(Decoder, MixesManyChannelsDownToTwo) {
    const std::vector<float> tone = makeTone(1, recordRate, 441);
    for (const int channels : {1, 2, 3, 4, 5, 6, 7, 8, 12}) {
        const std::string path = scratchPath("channels.ogg");
        writeVorbis(path, tone, recordRate, channels);
        auto decoder = Decoder::open(path.c_str());
        ASSERT_TRUE(decoder);
        // All channels hold the same, and so do both sides, no louder and no softer.
        const Sides sides = read(*decoder, 0s, 44000);
        EXPECT_LT(worstDifference(sides.left, tone, 0, 44000), 0.05f) << channels;
        EXPECT_LT(worstDifference(sides.right, tone, 0, 44000), 0.05f) << channels;
    }
}

TEST(Decoder, KeepsTimeThroughDamage) {
    const std::string path = scratchPath("damaged.ogg");
    writeVorbis(path, makeNoise(10, recordRate), recordRate, 2);
    const std::vector<float> whole = decodeVorbis(path);
    std::string bytes = contentOf(path);
    bytes.replace(bytes.size() * 4 / 10, bytes.size() / 10, bytes.size() / 10, '\xaa');
    writeFile(path, bytes);
    auto decoder = Decoder::open(path.c_str());
    ASSERT_TRUE(decoder);
    const Sides sides = read(*decoder, 0s, 10 * recordRate);
    EXPECT_TRUE(decoder->isDamaged());
    EXPECT_EQ(locate(sides.left, 100000, whole, 100000, 2000).value_or(-1), 100000);
    EXPECT_EQ(locate(sides.left, 400000, whole, 400000, 2000).value_or(-1), 400000);

    writeFile(path, bytes.substr(0, bytes.size() / 3));
    decoder = Decoder::open(path.c_str());
    ASSERT_TRUE(decoder);
    const Sides cut = read(*decoder, 0s, 10 * recordRate);
    EXPECT_EQ(locate(cut.left, 100000, whole, 100000, 2000).value_or(-1), 100000);
    EXPECT_EQ(*std::max_element(cut.left.end() - recordRate, cut.left.end()), 0);
}

TEST(Decoder, SurvivesDamageAnywhere) {
    const std::string path = scratchPath("fuzzed.ogg");
    writeVorbis(path, makeNoise(1, recordRate), recordRate, 2);
    const std::string sound = contentOf(path);
    uint32_t random = 7;
    for (int round = 0; round < 60; round++) {
        std::string bytes = sound;
        for (int i = 0; i < 1 + round % 8; i++) {
            random = random * 1664525 + 1013904223;
            // Headers and page headers matter most.
            const size_t reach = round % 2 ? bytes.size() : 4200;
            bytes[(random >> 8) % reach] = char(random >> 3);
        }
        writeFile(path, bytes);
        auto decoder = Decoder::open(path.c_str());
        if (!decoder) continue;
        for (const float sample : read(*decoder, 300ms, recordRate).left) ASSERT_FALSE(std::isnan(sample));
    }
}

TEST(Decoder, FollowsAChainOfRates) {
    const std::string path = scratchPath("chain.ogg"), second = scratchPath("second.ogg");
    writeVorbis(path, makeTone(1, recordRate, 441), recordRate, 2);
    writeVorbis(second, makeTone(1, 22050, 882), 22050, 1);
    writeFile(path, contentOf(path) + contentOf(second));
    auto decoder = Decoder::open(path.c_str());
    ASSERT_TRUE(decoder);
    const Sides sides = read(*decoder, 0s, 3 * recordRate);
    EXPECT_NEAR(toneFrequency(sides.left, 1000, 43000), 441, 0.2);
    EXPECT_NEAR(toneFrequency(sides.left, 45000, 87000), 882, 0.4);
    EXPECT_EQ(*std::max_element(sides.left.begin() + 89000, sides.left.end()), 0);
    EXPECT_NEAR(toneFrequency(read(*decoder, 1500ms, 20000).left, 1000, 19000), 882, 0.4);
}

TEST(Decoder, OpensNothingElse) {
    const std::string empty = scratchPath("empty.ogg"), text = scratchPath("text.ogg"),
                      pipe = scratchPath("pipe");
    writeFile(empty, "");
    writeFile(text, std::string(100000, 'x'));
    mkfifo(pipe.c_str(), 0600);
    for (const std::string& path : {empty, text, pipe, scratchPath("missing.ogg"), scratchPath("")})
        EXPECT_FALSE(Decoder::open(path.c_str())) << path;
    EXPECT_FALSE(Decoder::open(nullptr));
}

}  // namespace
