// The faults that a synthesiser can have without anybody hearing at once: filters that run away, a limiter
// that lets peaks through, meters that are off, tables that are read wrong.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "production/kit/sound/effects.h"
#include "production/kit/sound/filter.h"
#include "production/kit/sound/loudness.h"
#include "production/kit/sound/mix.h"
#include "production/kit/sound/notation.h"
#include "production/kit/sound/oscillator.h"
#include "production/kit/sound/vorbis.h"
#include "tests/production/meter.h"

using namespace audio;

namespace {

Stereo noise(double seconds, float gain) {
    Stereo sound(frameAt(seconds));
    Noise left(1), right(2);
    for (size_t i = 0; i < sound.frames(); i++) {
        sound.left[i] = gain * left.next();
        sound.right[i] = gain * right.next();
    }
    return sound;
}

Stereo tone(double seconds, float hertz, float gain, double phase = 0) {
    Stereo sound(frameAt(seconds));
    for (size_t i = 0; i < sound.frames(); i++) {
        const double turns = double(i) * hertz / sampleRate + phase;
        sound.left[i] = sound.right[i] = float(gain * std::sin(2 * std::numbers::pi * turns));
    }
    return sound;
}

// How strong one frequency is among the samples, as the amplitude of a sine (Goertzel 1958, windowed).
double strengthAt(const std::vector<float>& samples, double hertz) {
    double real = 0, imaginary = 0;
    for (size_t i = 0; i < samples.size(); i++) {
        const double window = 1 - std::cos(2 * std::numbers::pi * double(i) / double(samples.size()));
        const double angle = 2 * std::numbers::pi * hertz * double(i) / sampleRate;
        real += window * samples[i] * std::cos(angle);
        imaginary += window * samples[i] * std::sin(angle);
    }
    return 2 * std::hypot(real, imaginary) / double(samples.size());
}

}  // namespace

TEST(SoundKit, filtersStayBoundedWhereverTheyAreTuned) {
    Noise input(3), chance(4);
    StateVariable state;
    Ladder ladder;
    float most = 0, mostOfLadder = 0;
    for (int i = 0; i < 400000; i++) {
        if (i % 50 == 0) {
            const float hertz = 12000 * (1 + chance.next());
            state.tune(hertz, 0.5f + 5 * (1 + chance.next()));
            ladder.tune(hertz, 0.5f + 0.5f * chance.next());
        }
        most = std::max(most, std::fabs(state.low(input.next())));
        mostOfLadder = std::max(mostOfLadder, std::fabs(ladder.next(4 * input.next())));
        ASSERT_TRUE(std::isfinite(most) && std::isfinite(mostOfLadder)) << i;
    }
    EXPECT_LT(most, 40);  // gain at the highest resonance, and what retuning adds
    EXPECT_LT(mostOfLadder, 4);
}

TEST(SoundKit, wavesDoNotFoldBack) {
    // A saw that is drawn without care folds its harmonics above half the sample rate back between the
    // others.
    const float hertz = 2300;
    Wave wave;
    Supersaw saws(0, 0, 1);
    saws.tune(hertz);
    std::vector<float> single(sampleRate), eight(sampleRate);
    float unused;
    for (size_t i = 0; i < single.size(); i++) {
        single[i] = wave.saw(stepOf(hertz));
        saws.next(eight[i], unused);
    }
    const double folded = sampleRate - 14 * hertz;  // where the 14th harmonic would go
    for (const std::vector<float>* saw : {&single, &eight}) {
        EXPECT_GT(strengthAt(*saw, hertz), 0.1);
        EXPECT_LT(strengthAt(*saw, folded), 0.01 * strengthAt(*saw, hertz));
    }
}

TEST(SoundKit, loudnessIsWhatAnotherMeterReads) {
    Stereo lateNoise(frameAt(12));
    mixAt(lateNoise, noise(5, 0.2f), frameAt(6));
    for (const Stereo& sound : {tone(5, 1000, 0.25f), tone(5, 60, 0.5f), tone(5, 8000, 0.1f), lateNoise})
        EXPECT_NEAR(integratedLoudness(sound), measure(sound).integrated, 0.15);
}

TEST(SoundKit, limiterHoldsPeaksBetweenSamplesToo) {
    // At a quarter of the sample rate, an eighth of a turn off, the wave is 3 dB higher than its samples.
    Stereo sound = tone(3, sampleRate / 4.0f, 1.3f, 0.125);
    Stereo burst = noise(1, 2);
    Equalizer::highCut(12000).apply(burst);
    mixAt(sound, burst, frameAt(1));
    fadeEnds(sound, 0.001f, 0.001f);
    limit(sound, -2, 0.1f);
    EXPECT_NEAR(measure(sound).truePeak, -2, 0.35);

    // What is under the ceiling passes as it is, but for the five milliseconds of looking ahead.
    Stereo soft = tone(1, 440, 0.5f);
    const Stereo before = soft;
    limit(soft, -2, 0.1f);
    for (size_t i = 0; i < soft.frames(); i += 100) ASSERT_NEAR(soft.left[i], before.left[i], 1e-4);
}

TEST(SoundKit, roomsDieAwayInTheirTime) {
    Stereo sound(frameAt(4));
    mixAt(sound, noise(0.2, 1), 0);
    reverberate(sound, {.preDelay = 0.02f, .size = 1, .decay = 2, .damping = 20000, .lowCut = 50});
    // 30 dB in a half of the time to fall by 60; the two sides are different rooms.
    EXPECT_NEAR(levelOf(sound, 0.4, 0.5) - levelOf(sound, 1.4, 1.5), 30, 6);
    double product = 0, squares = 0;
    for (size_t i = 0; i < sound.frames(); i++) {
        product += sound.left[i] * sound.right[i];
        squares += (sound.left[i] * sound.left[i] + sound.right[i] * sound.right[i]) / 2;
    }
    EXPECT_LT(std::fabs(product / squares), 0.3);
}

TEST(SoundKit, notationIsReadAsItIsWritten) {
    const Pattern melody = melodyOf("Bb4+D5:4' -:4 F#4:8, | Cb5:16");
    ASSERT_EQ(melody.steps.size(), 4u);
    EXPECT_EQ(melody.length, 32);
    EXPECT_EQ(melody.steps[0].pitch, 70);
    EXPECT_EQ(melody.steps[1].pitch, 74);
    EXPECT_EQ(melody.steps[2].at, 8);
    EXPECT_GT(melody.steps[0].velocity, melody.steps[3].velocity);
    EXPECT_GT(melody.steps[3].velocity, melody.steps[2].velocity);
    EXPECT_EQ(melody.steps[3].pitch, 71);

    // Holds lengthen all notes of a chord, across a bar line too, and the next bar has the next chord.
    const std::vector<Chord> chords = chordsOf("Gm Bb/D");
    const Pattern stabs = stabsOf("............X--- -...x...........", chords, 67);
    ASSERT_EQ(stabs.steps.size(), 6u);
    for (int i = 0; i < 3; i++) EXPECT_EQ(stabs.steps[i].length, 5);
    const Pattern bass = bassOf("R............... o.......s.......", chords, 31);
    EXPECT_EQ(bass.steps[0].pitch, 31);
    EXPECT_EQ(bass.steps[1].pitch, 50);
    EXPECT_EQ(bass.steps[2].pitch, 36);
    EXPECT_EQ(arpeggioOf("3...............", chords, 67).steps[0].pitch, 79);  // one octave over the root
}

TEST(SoundKit, whatCannotBeReadIsShown) {
    const std::vector<Chord> chords = chordsOf("Gm");
    EXPECT_EXIT(chordsOf("Gm Hm"), testing::ExitedWithCode(1), "\"Hm\"");
    EXPECT_EXIT(chordsOf("Gm/"), testing::ExitedWithCode(1), "\"Gm/\"");
    EXPECT_EXIT(chordsOf("Gsus5"), testing::ExitedWithCode(1), "\"Gsus5\"");
    EXPECT_EXIT(melodyOf("G4:4 A5"), testing::ExitedWithCode(1), "\"A5\"");
    EXPECT_EXIT(melodyOf("G:4"), testing::ExitedWithCode(1), "\"G:4\"");
    EXPECT_EXIT(melodyOf("G4:0"), testing::ExitedWithCode(1), "\"G4:0\"");
    EXPECT_EXIT(melodyOf("G4:12 | A4:4"), testing::ExitedWithCode(1), "bar line");
    EXPECT_EXIT(hitsOf("x.y."), testing::ExitedWithCode(1), "\"x\\.y\\.\"");
    EXPECT_EXIT(bassOf("r.x.", chords, 31), testing::ExitedWithCode(1), "\"r\\.x\\.\"");
    EXPECT_EXIT(arpeggioOf("0.x.", chords, 60), testing::ExitedWithCode(1), "\"0\\.x\\.\"");

    const Song song = {.beatsPerMinute = 120,
                       .barZero = 0,
                       .seconds = 1,
                       .parts = {},
                       .cues = {{"flute", 0, 1, "x"}},
                       .harmony = {{0, "Gm"}},
                       .duckedBy = "kick",
                       .duckRecovery = 0.2,
                       .room = {},
                       .hall = {},
                       .echoFeedback = 0};
    EXPECT_EXIT(perform(song), testing::ExitedWithCode(1), "\"flute\"");
    EXPECT_EXIT(writeVorbis("no/such/folder/file.ogg", Stereo(10), 0.5f, {}), testing::ExitedWithCode(1),
                "no/such/folder/file.ogg");
}
