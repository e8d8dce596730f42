// Files as they come: other rates, many channels, cut, damaged, chained, or not Vorbis at all.
#include "sound/decoder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cmath>

#include "tests/memory_file.h"
#include "tests/scratch.h"
#include "tests/sound/signal.h"

namespace {

using namespace std::chrono_literals;
using sound::Time;

struct Sides {
    std::vector<float> left, right;
};

class Decoder : public testing::Test {
protected:
    MemoryFile file;
    std::unique_ptr<sound::Decoder> decoder;

    // Writes a file and opens it.
    void make(const std::vector<float>& samples, int rate = recordRate, int channels = 2) {
        writeVorbis(file.name, samples, rate, channels);
        decoder = sound::Decoder::open(file.path());
        ASSERT_TRUE(decoder);
    }
    void reopen(const std::string& bytes) {
        file.write(bytes);
        decoder = sound::Decoder::open(file.path());
    }
    Sides read(Time from, int frames) {
        decoder->seek(from, recordRate);
        Sides sides;
        for (int count; frames > 0; frames -= count) {
            float stereo[2 * 500];
            count = std::min(frames, 500);
            decoder->read(stereo, count);
            for (int i = 0; i < count; i++) {
                sides.left.push_back(stereo[2 * i]);
                sides.right.push_back(stereo[2 * i + 1]);
            }
        }
        return sides;
    }
};

// Of `count` samples from `bFrom` on.
float worstDifference(const std::vector<float>& a, const std::vector<float>& b, size_t bFrom, size_t count) {
    float worst = 0;
    for (size_t i = 0; i < count; i++) worst = std::max(worst, std::abs(a[i] - b[bFrom + i]));
    return worst;
}

float loudest(const std::vector<float>& samples, long from, long to) {
    return *std::max_element(samples.begin() + from, samples.begin() + to);
}

TEST_F(Decoder, SeeksToTheFrame) {
    make(makeNoise(5, recordRate));
    const std::vector<float> whole = decodeVorbis(file.name);
    for (const long frame : {0L, 100000L, 44100L, 7L}) {
        const Sides sides = read(Time(frame * 1'000'000'000 / recordRate + 1), 3000);
        EXPECT_LT(worstDifference(sides.left, whole, size_t(frame), 3000), 1e-4f) << frame;
    }
    const Sides end = read(4900ms, recordRate);
    EXPECT_LT(worstDifference(end.left, whole, whole.size() - 4410, 4410), 1e-4f);
    EXPECT_EQ(loudest(end.left, 4410, recordRate), 0);
    EXPECT_EQ(read(1h, 1000).left, std::vector<float>(1000));
    EXPECT_FALSE(decoder->isDamaged());
}

TEST_F(Decoder, PlaysOtherRatesAtTheirPitchAndSpeed) {
    for (const int rate : {8000, 48000, 96000}) {
        SCOPED_TRACE(rate);
        make(makeTone(3, rate, 441), rate, 1);
        const Sides sides = read(1s, 3 * recordRate);
        EXPECT_EQ(sides.left, sides.right);
        EXPECT_NEAR(toneFrequency(sides.left, 1000, 80000), 441, 0.1);
        // The tone made at the mixer's rate fits it in time and in strength.
        EXPECT_LT(worstDifference(sides.left, makeTone(3, recordRate, 441), recordRate, 80000), 0.05f);
        // Two of its three seconds were left.
        EXPECT_GT(loudest(sides.left, 87000, 88000), 0.2f);
        EXPECT_LT(loudest(sides.left, 88600, 3 * recordRate), 0.01f);
    }
}

TEST_F(Decoder, MixesManyChannelsDownToTwo) {
    const std::vector<float> tone = makeTone(0.5, recordRate, 441);
    for (const int channels : {1, 2, 3, 4, 5, 6, 7, 8, 12}) {
        make(tone, recordRate, channels);
        // All channels hold the same, and so do both sides, no louder and no softer.
        const Sides sides = read(0s, 22000);
        EXPECT_LT(worstDifference(sides.left, tone, 0, 22000), 0.05f) << channels;
        EXPECT_LT(worstDifference(sides.right, tone, 0, 22000), 0.05f) << channels;
    }
}

TEST_F(Decoder, KeepsTimeThroughDamage) {
    make(makeNoise(10, recordRate));
    const std::vector<float> whole = decodeVorbis(file.name);
    std::string bytes = file.read();
    bytes.replace(bytes.size() * 4 / 10, bytes.size() / 10, bytes.size() / 10, '\xaa');
    reopen(bytes);
    ASSERT_TRUE(decoder);
    const Sides sides = read(0s, 10 * recordRate);
    EXPECT_TRUE(decoder->isDamaged());
    EXPECT_EQ(locate(sides.left, 100000, whole, 100000, 2000), 100000);
    EXPECT_EQ(locate(sides.left, 400000, whole, 400000, 2000), 400000);

    reopen(bytes.substr(0, bytes.size() / 3));
    ASSERT_TRUE(decoder);
    const Sides cut = read(0s, 10 * recordRate);
    EXPECT_EQ(locate(cut.left, 100000, whole, 100000, 2000), 100000);
    EXPECT_EQ(loudest(cut.left, 9 * recordRate, 10 * recordRate), 0);
}

TEST_F(Decoder, FollowsAChainOfRates) {
    make(makeTone(1, recordRate, 441));
    const std::string first = file.read();
    make(makeTone(1, 22050, 882), 22050, 1);
    reopen(first + file.read());
    ASSERT_TRUE(decoder);
    const Sides sides = read(0s, 3 * recordRate);
    EXPECT_NEAR(toneFrequency(sides.left, 1000, 43000), 441, 0.2);
    EXPECT_NEAR(toneFrequency(sides.left, 45000, 87000), 882, 0.4);
    EXPECT_EQ(loudest(sides.left, 89000, 3 * recordRate), 0);
    EXPECT_NEAR(toneFrequency(read(1500ms, 20000).left, 1000, 19000), 882, 0.4);
}

TEST_F(Decoder, OpensNothingElse) {
    for (const std::string& bytes : {std::string(), std::string(100000, 'x')}) {
        reopen(bytes);
        EXPECT_FALSE(decoder);
    }
    const ScratchDirectory scratch;
    const std::string pipe = scratch.file("pipe");
    mkfifo(pipe.c_str(), 0600);
    for (const std::string& path : {pipe, scratch.file("missing.ogg"), scratch.path.string()})
        EXPECT_FALSE(sound::Decoder::open(path.c_str())) << path;
    EXPECT_FALSE(sound::Decoder::open(nullptr));
}

}  // namespace
