// The faults that a synthesiser can have without anybody hearing at once, nor the soundtrack's hash telling:
// filters that run away, notes that end with a click, tables that are read wrong.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "production/kit/sound/arrangement.h"
#include "production/kit/sound/check.h"
#include "production/kit/sound/filter.h"
#include "production/kit/sound/notation.h"
#include "production/kit/sound/oscillator.h"
#include "production/kit/sound/vorbis.h"
#include "production/kit/sound/wav.h"
#include "production/music/band.h"
#include "tests/production/meter.h"
#include "tests/scratch.h"

using namespace audio;

TEST(SoundKit, FiltersStayBoundedWhereverTheyAreTuned) {
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

TEST(SoundKit, NotationIsReadAsItIsWritten) {
    const Place place{"verse", "flute", 4};
    const Pattern melody = melodyOf("Bb4+D5:4' -:4 F#4:8, | Cb5:16", place);
    ASSERT_EQ(melody.steps.size(), 4u);
    EXPECT_EQ(melody.length, 32);
    EXPECT_EQ(melody.steps[0].pitch, 70);
    EXPECT_EQ(melody.steps[1].pitch, 74);
    EXPECT_EQ(melody.steps[2].at, 8);
    EXPECT_EQ(melody.steps[2].length, 8);
    EXPECT_GT(melody.steps[0].velocity, melody.steps[3].velocity);
    EXPECT_GT(melody.steps[3].velocity, melody.steps[2].velocity);
    EXPECT_EQ(melody.steps[3].pitch, 71);
    EXPECT_EQ(barsOf("C4:16 | D4:16 | E4:16", 1, 3), " D4:16 | E4:16");

    // Holds go on across a bar line, and a rest ends what they lengthen.
    const Marks marks = marksOf("............x--- --.-x", strokes, place);
    ASSERT_EQ(marks.marks.size(), 2u);
    EXPECT_EQ(marks.marks[0].length, 6);
    EXPECT_EQ(marks.marks[1].at, 20);
    EXPECT_EQ(marks.length, 21);
}

namespace {

// Four bars of two chords for one part and what doubles it.
Song smallSong(Notation notation, const std::string& pattern, const char* part = "flute") {
    const auto silent = [](std::span<const Note>, Stereo&) {};
    return {.grid = {.beatsPerMinute = 120, .barZero = 0},
            .seconds = 8,
            .parts = {{"flute", Role::lead, notation, {41, 72}, silent, {}, 3},
                      {"shadow", Role::bass, Notation::bass, {26, 39}, silent, {}, 0, "flute"}},
            .sections = {{"verse", 0, 4, "G minor", "Gm D7b9", 0, {}, {{part, pattern}}}},
            .mixer = {}};
}

std::vector<int> pitchesOf(const Song& song, size_t part) {
    std::vector<int> pitches;
    for (const Note& note : notesOf(song, song.parts[part])) pitches.push_back(int(note.pitch));
    return pitches;
}

}  // namespace

TEST(SoundKit, PatternsFollowTheHarmony) {
    // Over G minor, then D: root, octave, fifth, third and the scale's steps to both sides.
    const Song bass = smallSong(Notation::bass, "r.o.f.t.s.a..... r.....t.........");
    EXPECT_EQ(pitchesOf(bass, 0),
              (std::vector{43, 55, 50, 46, 41, 45, 50, 54, 43, 55, 50, 46, 41, 45, 50, 54}));
    // What doubles it folds each pitch into its own range, and has its strokes without its cue's level.
    EXPECT_EQ(pitchesOf(bass, 1),
              (std::vector{31, 31, 38, 34, 29, 33, 38, 30, 31, 31, 38, 34, 29, 33, 38, 30}));
    Song louder = bass;
    louder.sections[0].cues[0].level = 6;
    EXPECT_GT(notesOf(louder, louder.parts[0])[0].velocity, notesOf(bass, bass.parts[0])[0].velocity);
    EXPECT_EQ(notesOf(louder, louder.parts[1])[0].velocity, notesOf(bass, bass.parts[1])[0].velocity);
    // Over another bass note the fifth is still the chord's.
    Song slash = smallSong(Notation::bass, "r.f.............");
    slash.sections[0].chords = "F/A Bb/F Gm9 F#dim";
    EXPECT_EQ(pitchesOf(slash, 0), (std::vector{45, 48, 53, 65, 43, 50, 54, 60}));
    const Song line = smallSong(Notation::line, "1-------3------- 1-------7-------");
    for (const auto& pitches = pitchesOf(line, 0); size_t i : {1, 2, 3})
        EXPECT_LE(std::abs(pitches[i] - pitches[i - 1]), 6);
    EXPECT_EQ(pitchesOf(smallSong(Notation::arpeggio, "0123............ 0..............."), 0)[4] % 12, 6);
    // A chord that is held over a change moves with it.
    EXPECT_EQ(pitchesOf(smallSong(Notation::chords, "x--------------- ----------------"), 0).size(), 12u);
}

TEST(SoundKit, WhatCannotBeReadIsShownWithItsPlaceAndLeftOut) {
    const auto problems = [](const Song& song) {
        std::string all;
        for (const std::string& line : problemsOf(song)) all += line + "\n";
        return all;
    };
    struct Mistake {
        Notation notation;
        const char *pattern, *line;
    };
    const Mistake mistakes[] = {
        {Notation::melody, "G4:16 | G4:4 A5", "bar 1, flute: a note without a length: \"A5\""},
        {Notation::melody, "G4+:4", "bar 0, flute: no pitch: \"G4+:4\""},
        {Notation::melody, "G4:4294967300", "bar 0, flute: too long: \"G4:4294967300\""},
        {Notation::melody, "G4:4.5", "bar 0, flute: an unknown sign: \"G4:4.5\""},
        {Notation::melody, "G4:12 | A4:4", "bar 0, flute: doesn't fill its bar: \"G4:12 \""},
        {Notation::melody, "G4:16 | A4:20 | G4:4", "bar 1, flute: too long for its bar: \" A4:20 \""},
        {Notation::melody, "G4:16 | C7:16", "bar 1, flute: C7 is out of its range: \"G4:16 | C7:16\""},
        {Notation::melody, "G4:80", "bar 0, flute: longer than its bars: \"G4:80\""},
        {Notation::hits, "x............... x.y.", "bar 1, flute: an unknown sign: \"x.y.\""},
        {Notation::hits, "x...............x", "bar 0, flute: too long for its bar: \"x...............x\""},
        {Notation::chords, "", "bar 0, flute: nothing to play: \"\""},
    };
    for (const auto& [notation, pattern, line] : mistakes) {
        const Song song = smallSong(notation, pattern);
        EXPECT_EQ(problems(song), std::string("verse, ") + line + "\n");
        EXPECT_TRUE(notesOf(song, song.parts[0]).empty()) << pattern;
    }
    for (const char* chords : {"Gm/", "Gsus5", "Cm,Hm"}) {
        Song song = smallSong(Notation::hits, "x...");
        song.sections[0].chords = chords;
        EXPECT_TRUE(problems(song).starts_with("verse, bar 0, harmony: no chord: \"")) << chords;
    }

    // All of them are told at once, and the rest is read.
    Song song = smallSong(Notation::bass, "r...");
    const Cue good = song.sections[0].cues[0];
    song.sections[0].cues = {good, {"tuba", "x..."}, {"flute", "r...", {3, 5}}, {"choir", "x..."}};
    song.sections.push_back({"bridge", 4, 8, "G mixed", "Gm", 0, {}, {good}});
    song.sections.push_back({"end", 8, 12, "G minor", "Gm Hm", 0, {}, {good}});
    song.parts.push_back({"choir", Role::chords, Notation::chords, {41, 72}, {}, {}});
    song.parts.push_back({"deep", Role::bass, Notation::bass, {14, 18}, {}, {}, 0, "flute"});
    song.parts.push_back({"echo", Role::bass, Notation::bass, {26, 39}, {}, {}, 0, "echo horn"});
    EXPECT_EQ(problems(song),
              "verse, bar 0, tuba: no part has this name: \"tuba\"\n"
              "verse, bar 3, flute: bars that the section doesn't have: \"r...\"\n"
              "verse, bar 0, choir: no voicing lies in its range: \"Gm\"\n"
              "bridge, bar 4, harmony: no scale: \"G mixed\"\n"
              "end, bar 9, harmony: no chord: \"Hm\"\n"
              "verse, bar 0, deep: G0 is out of its range: \"flute\"\n"
              "band, bar 0, echo: a part that doubles others itself: \"echo\"\n"
              "band, bar 0, echo: no part has this name: \"horn\"\n");
    EXPECT_EQ(notesOf(song, song.parts[0]).size(), 16u);
    EXPECT_FALSE(remarksOn(song).empty());
}

TEST(SoundKit, ScoreIsRemarkedOn) {
    const auto remarks = [](const std::string& melody) {
        std::string all;
        for (const std::string& each : remarksOn(smallSong(Notation::melody, melody))) all += each + "\n";
        return all;
    };
    EXPECT_EQ(remarks("G4:8 A4:7 -:1 | D4:16 | Bb4:4 -:12 | F#4:8 Eb4:8"), "");
    EXPECT_EQ(remarks("Ab4:8 G4:8 | D4:16 | Bb4:16 | A4:16"),
              "verse, bar 0, flute: Ab4 is neither in Gm nor in G minor\n"
              "verse, bar 0, shadow: Ab1 is neither in Gm nor in G minor\n");
    EXPECT_EQ(remarks("D4+Eb4:8 G4:8 | D4:16 | Bb4:16 | A4:16"), "verse, bar 0, flute: D4 against Eb4\n");
    EXPECT_EQ(remarks("G4:16 | D4:16 | G4:16 | F#4:16"), "verse, bar 2, all: the same as bar 0\n");
    Song song = smallSong(Notation::melody, "G4:16 | D4:16 | Bb4:16");
    song.sections[0].cues[0].bars = {0, 3};
    EXPECT_EQ(remarksOn(song), std::vector<std::string>{"verse, bar 3, all: nothing sounds"});
    song = smallSong(Notation::melody, "G4:16 | D4:16 | Bb4:16 | D4:16");
    song.sections[0].to = 12;
    const std::vector<std::string> breathless = remarksOn(song);
    EXPECT_TRUE(std::find(breathless.begin(), breathless.end(),
                          "verse, bar 0, flute: more than eight bars without a rest") != breathless.end());
}

TEST(SoundKit, FilesAreWhatAnotherProgramReads) {
    const ScratchDirectory scratch;
    Stereo sound(frameAt(0.1));
    Noise noise(1);
    for (size_t i = 0; i < sound.frames(); i++) sound.set(i, 0.9f * Sides{noise.next(), noise.next()});
    ASSERT_TRUE(writeWav(scratch.file("noise.wav"), sound));
    const Stereo read = decode(scratch.file("noise.wav"));
    ASSERT_EQ(read.frames(), sound.frames());
    for (size_t i = 0; i < read.frames(); i++) {
        ASSERT_NEAR(read.left[i], sound.left[i], 1e-4);
        ASSERT_NEAR(read.right[i], sound.right[i], 1e-4);
    }
    EXPECT_FALSE(writeWav("no/such/folder/file.wav", sound));
    EXPECT_FALSE(writeVorbis("no/such/folder/file.ogg", {sound.left}, {}));
}

TEST(SoundKit, InstrumentsPlayCleanNotesThatEnd) {
    for (const Part& part : band()) {
        const int pitch = part.notation == Notation::hits ? 0 : (part.range.low + part.range.high) / 2;
        const Note note = {
            .start = 0.1, .length = 0.5, .pitch = float(pitch), .velocity = 1, .brightness = 1};
        Stereo sound(frameAt(8));
        part.play({&note, 1}, sound);
        float most = 0;
        double sum = 0;
        size_t last = 0;
        for (size_t i = 0; i < sound.frames(); i++) {
            const float sample = sound.left[i] + sound.right[i];
            ASSERT_TRUE(std::isfinite(sample)) << part.name;
            most = std::max(most, std::fabs(sample));
            sum += sample;
            if (sample != 0) last = i;
        }
        EXPECT_TRUE(most > 0.02f && most < 10) << part.name << ", peak " << most;
        EXPECT_LT(last + 1, sound.frames()) << part.name << " goes on";
        // The low cut of its channel takes what little a saturated voice is off.
        EXPECT_LT(std::fabs(sum) / double(last + 1), 0.15 * most) << part.name << " is off centre";
        for (size_t i = last - 4; i <= last; i++)
            EXPECT_LT(std::fabs(sound.left[i]), 0.02f * most) << part.name << " ends with a click";
    }
}
