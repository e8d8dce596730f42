#include "app/clock.h"

#include <gtest/gtest.h>

#include <limits>

#include "script/show_times.h"

namespace {

// A clock over music that a test moves by hand.
class Clock : public testing::Test {
public:
    struct CountingMusic : SteppedMusic {
        int pauseCount = 0;
        void pause() override { pauseCount++; }
    };

    CountingMusic music;
    MusicClock clock;

    void SetUp() override { clock.source = &music; }

    void goTo(int ms) {
        music.ms = ms;
        clock.update();
    }

    // Steps through the music as housekeeping does; returns the times, in ms, of the automatic beats.
    std::vector<int> beatsBetween(int fromMs, int toMs, int stepMs) {
        std::vector<int> beats;
        for (int ms = fromMs; ms <= toMs; ms += stepMs) {
            goTo(ms);
            const float before = clock.beatCount;
            clock.runAutoBeat();
            if (clock.beatCount != before) beats.push_back(ms);
        }
        return beats;
    }
};

TEST_F(Clock, TimeIsThePositionInSecondsAndDeltaFollowsSeeksBackwards) {
    goTo(1500);
    EXPECT_EQ(clock.time(), 1.5f);
    EXPECT_EQ(clock.delta, 1.5f);
    music.ms = 9000;
    EXPECT_EQ(clock.time(), 1.5f) << "the time moved within a frame";
    goTo(195280);
    EXPECT_EQ(clock.time(), 195.28f);
    goTo(500);
    EXPECT_EQ(clock.previousTime, 195.28f);
    EXPECT_EQ(clock.delta, 0.5f - 195.28f);
}

TEST_F(Clock, WithoutMusicTimeStandsAtZero) {
    MusicClock silent;
    silent.update();
    silent.seek(10);
    silent.pause();
    EXPECT_EQ(silent.time(), 0);
    EXPECT_EQ(silent.frameRate(), 0);
    EXPECT_EQ(silent.spectrum()[511], 0);
}

TEST_F(Clock, SeekTruncatesToMillisecondsAndNeverGoesBelowTheStart) {
    clock.seek(12.5f);
    EXPECT_EQ(music.ms, 12500);
    clock.seek(0.0019f);
    EXPECT_EQ(music.ms, 1);
    for (const float start : {-3.f, 0.f, -0.0001f, std::numeric_limits<float>::quiet_NaN()}) {
        music.ms = 77;
        clock.seek(start);
        EXPECT_EQ(music.ms, 0) << start;
    }
    clock.seek(std::numeric_limits<float>::infinity());
    EXPECT_GT(music.ms, 2000000000);
}

TEST_F(Clock, SecondPausePausesAgain) {
    clock.pause();
    EXPECT_TRUE(clock.paused);
    clock.pause();
    EXPECT_FALSE(clock.paused);
    EXPECT_EQ(music.pauseCount, 2);
}

TEST_F(Clock, PulseFallsFromTheBeatWithinThreeTenths) {
    EXPECT_EQ(clock.pulseLength, 0.05f);
    goTo(20000);
    EXPECT_EQ(clock.beatPulse(), 0) << "no beat yet";
    EXPECT_EQ(clock.pulseLength, 0.3f);

    clock.registerBeat();
    EXPECT_EQ(clock.beatCount, 1);
    EXPECT_EQ(clock.beatPulse(), 1);
    goTo(20150);
    EXPECT_NEAR(clock.beatPulse(), 0.5f, 1e-5f);
    goTo(20301);
    EXPECT_EQ(clock.beatPulse(), 0);
    goTo(19700);
    EXPECT_NEAR(clock.beatPulse(), 2, 1e-5f) << "before the last beat the pulse is above 1";

    clock.setPulseLength(9);
    EXPECT_NEAR(clock.beatPulse(), 2, 1e-5f) << "every query sets the length";
}

TEST_F(Clock, AutomaticBeatFollowsTheGrid) {
    EXPECT_EQ(beatsBetween(16000, 16999, 1), std::vector<int>{});

    // Just before beat 0 the phase is negative, so the first one comes at 17 s and uses up the first period.
    EXPECT_EQ(beatsBetween(17000, 18600, 1), (std::vector{17000, 17615, 18091, 18567}));

    // At the pace of frames every beat of a minute fires once.
    EXPECT_EQ(beatsBetween(20400, 80399, 16).size(), size_t(showtime::beatsPerMinute));
}

TEST_F(Clock, AutomaticBeatWaitsForTheSecondPartOfThePeriod) {
    const auto atPhase = [](float beats) { return int(1000 * (showtime::beatZero + beats / 2.1f)) + 1; };
    goTo(atPhase(50.5f));
    clock.runAutoBeat();
    EXPECT_EQ(clock.beatCount, 0) << "between 0.4 and 0.6 nothing fires";
    goTo(atPhase(51.1f));
    clock.runAutoBeat();
    goTo(atPhase(52.1f));
    clock.runAutoBeat();
    EXPECT_EQ(clock.beatCount, 1) << "frames a whole beat apart miss the release";
    goTo(atPhase(52.7f));
    clock.runAutoBeat();
    EXPECT_FALSE(clock.autoBeatLatch);
    goTo(atPhase(53.39f));
    clock.runAutoBeat();
    EXPECT_EQ(clock.beatCount, 2);
    EXPECT_EQ(clock.lastBeatTime, clock.time());
}

TEST_F(Clock, FrameRateIsSampledOverMoreThanHalfASecond) {
    clock.frameCount = 30;
    music.ms = 500;
    EXPECT_EQ(clock.frameRate(), 0);
    EXPECT_EQ(clock.frameCount, 30);
    music.ms = 501;
    EXPECT_EQ(clock.frameRate(), 60);
    EXPECT_EQ(clock.frameCount, 0);
    clock.frameCount = 7;
    EXPECT_EQ(clock.frameRate(), 60) << "held until the next sample";
}

}  // namespace
