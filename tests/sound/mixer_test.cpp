// What callers can rely on, played by no output. Built with the thread sanitizer too.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "sound/sound.h"
#include "tests/memory_file.h"
#include "tests/process.h"
#include "tests/sound/signal.h"

namespace {

class Mixer : public testing::Test {
protected:
    MemoryFile file;

    void SetUp() override {
        sound::setOutput(sound::None);
        sound::start(recordRate, 16);
    }
    void TearDown() override { sound::stop(); }

    sound::Stream* open(const std::vector<float>& samples) {
        writeVorbis(file.name, samples, recordRate, 2);
        return sound::openStream(file.path());
    }
};

TEST_F(Mixer, RunsAtRealSpeedAlsoPastTheEnd) {
    EXPECT_EQ(sound::output(), sound::None);
    sound::Stream* stream = open(makeTone(0.2, recordRate, 441));
    const double before = steadySeconds();
    sound::play(0, stream);
    const double after = steadySeconds();
    for (int i = 0; i < 20; i++) {
        const double earliest = (steadySeconds() - after) * 1000;
        const int position = sound::position(stream);
        EXPECT_GE(position, std::floor(earliest) - 1);
        EXPECT_LE(position, (steadySeconds() - before) * 1000);
        sleepSeconds(0.02);
    }
    const double sought = steadySeconds();
    sound::setPosition(stream, -5);
    EXPECT_LE(sound::position(stream), (steadySeconds() - sought) * 1000);
    sound::setPosition(stream, 3600000);
    EXPECT_GE(sound::position(stream), 3600000);
}

TEST_F(Mixer, AStreamStandsUntilItPlays) {
    sound::Stream* first = open(makeTone(1, recordRate, 441));
    sound::Stream* second = sound::openStream(file.path());
    sound::play(0, first);
    sound::setPosition(second, 4000);
    sound::play(16, second);
    sound::play(-1, second);
    sound::play(3, nullptr);
    sound::setPaused(99, true);
    sleepSeconds(0.05);
    EXPECT_EQ(sound::position(second), 4000);
    // It takes the place of the first one, which stands from then on.
    sound::play(0, second);
    const int left = sound::position(first);
    sleepSeconds(0.05);
    EXPECT_GE(left, 50);
    EXPECT_EQ(sound::position(first), left);
    EXPECT_GE(sound::position(second), 4050);

    sound::Stream* none = sound::openStream("no such file");
    EXPECT_EQ(none, nullptr);
    sound::setPosition(none, 1000);
    EXPECT_EQ(sound::position(none), 0);
}

TEST_F(Mixer, TheSpectrumIsThatOfWhatIsHeard) {
    // Band 64 for two seconds, then band 128: what is written is ahead of what is heard.
    std::vector<float> tones = makeTone(2, recordRate, 64.0 * recordRate / 1024);
    const std::vector<float> second = makeTone(2, recordRate, 128.0 * recordRate / 1024);
    tones.insert(tones.end(), second.begin(), second.end());
    sound::Stream* stream = open(tones);
    sound::play(0, stream);
    EXPECT_EQ(sound::spectrum()[64], 0);
    sound::setSpectrumActive(true);
    // On a busy machine a look may be of two moments, or the mixer late: the place is played again.
    const auto hears = [&](int band, int silentBand, int from, int to) {
        for (int i = 0; i < 50; i++) {
            sound::setPosition(stream, from - 100);
            while (sound::position(stream) < from) sleepSeconds(0.005);
            const float* bands = sound::spectrum();
            const bool isHeard = std::abs(bands[band] - 0.5f) < 0.05f && bands[silentBand] < 0.01f;
            if (isHeard && sound::position(stream) < to) return true;
        }
        return false;
    };
    EXPECT_TRUE(hears(64, 70, 1900, 1990));
    EXPECT_TRUE(hears(128, 64, 2035, 3000));
    sound::setSpectrumActive(false);
    EXPECT_EQ(*std::max_element(sound::spectrum(), sound::spectrum() + 512), 0);
}

// For the thread sanitizer: every call, while the mixer's thread is at every point of its turn.
TEST_F(Mixer, CallsMeetTheThreadAtAnyMoment) {
    open(makeTone(1, recordRate, 441));
    sound::setSpectrumActive(true);
    for (int i = 0; i < 200; i++) {
        sound::Stream* stream = sound::openStream(file.path());
        sound::play(i % 3, stream);
        sleepSeconds(i % 7 * 0.0005);
        sound::setPosition(stream, i);
        sound::setPaused(i % 3, i % 5 == 0);
        EXPECT_GE(sound::position(stream), i);
        EXPECT_EQ(sound::output(), sound::None);
        sound::spectrum();
        sleepSeconds(i % 3 * 0.0005);
        if (i % 2) sound::closeStream(stream);
    }
}

}  // namespace
