// What a composer hears before the whole is made: it is what the soundtrack has there, and what it can't do
// it says.
#include "production/music/audition.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "production/kit/sound/arrangement.h"
#include "production/music/soundtrack.h"
#include "tests/production/meter.h"
#include "tests/scratch.h"

using namespace audio;

TEST(Audition, APartSoundsAsInTheWhole) {
    // Parts without a room: those drift on their own.
    const ScratchDirectory scratch;
    const std::string few = scratch.file("few.wav"), more = scratch.file("more.wav");
    ASSERT_EQ(audition({"--hear", few, "--bars", "6-7", "--parts", "bass,sub,hat"}), 0);
    ASSERT_EQ(audition({"--hear", more, "--parts", "bass,sub,hat", "--bars", "4-7"}), 0);
    const Song song = soundtrack();
    const size_t bar = frameAt(song.grid.secondsAt(6)), end = frameAt(song.grid.secondsAt(7));
    const Stereo heard = decode(few), longer = decode(more);
    ASSERT_EQ(heard.frames(), end - bar);
    Stereo difference = sliceOf(longer, longer.frames() - heard.frames(), longer.frames());
    mixAt(difference, heard, 0, -1);
    EXPECT_GT(levelOf(heard, 0, 2), -40);
    EXPECT_LT(levelOf(difference, 0, 2), levelOf(heard, 0, 2) - 40);
}

TEST(Audition, ACutIsHeardFromItsMiddleOn) {
    // From bar 16.75 on each sixteenth is cut in halves, the second of them silent.
    const ScratchDirectory scratch;
    ASSERT_EQ(audition({"--hear", scratch.file("cut.wav"), "--bars", "16.875-17"}), 0);
    const Stereo heard = decode(scratch.file("cut.wav"));
    EXPECT_GT(levelOf(heard, 0.01, 0.05), levelOf(heard, 0.07, 0.11) + 30);
}

// Through cuts, clips, compressor and limiter.
TEST(Audition, StemsAddUpToTheWhole) {
    const Song song = soundtrack();
    const Window window = {frameAt(song.grid.secondsAt(16)), frameAt(song.grid.secondsAt(18))};
    const Finished whole = finish(song, window);
    EXPECT_LT(*std::min_element(whole.gains.limiter.begin(), whole.gains.limiter.end()), 0.9f);
    std::vector<Stereo> stems;
    EXPECT_TRUE(finishStems(song, window, stemsOf(song), [&](const Stem&, const Stereo& sound) {
        stems.push_back(sound);
        return true;
    }));
    ASSERT_EQ(stems.size(), 5u);
    Stereo rest = whole.sound;
    for (const Stereo& stem : stems) mixAt(rest, stem, 0, -1);
    EXPECT_LT(levelOf(rest, 0, 9), levelOf(whole.sound, 0, 9) - 90);
    EXPECT_GT(levelOf(stems[0], 0, 9), levelOf(whole.sound, 0, 9) - 10);
}

TEST(Audition, EveryPartPlays) {
    const Song song = soundtrack();
    EXPECT_TRUE(proofread(song));
    for (const Part& part : song.parts) EXPECT_FALSE(notesOf(song, part).empty()) << part.name;
}

TEST(Audition, WhatItCannotDoItSays) {
    const ScratchDirectory scratch;
    const std::string file = scratch.file("x.wav");
    const std::pair<std::vector<std::string>, const char*> wrong[] = {
        {{"--hear"}, "usage: "},
        {{"--check", "please"}, "usage: "},
        {{"--hear", file, "--parts", "lead,tuba"}, "No part has the name \"tuba\""},
        {{"--hear", file, "--parts", ""}, "No part has the name \"\""},
        {{"--hear", file, "--bars", "9-8"}, "No bars: \"9-8\""},
        {{"--hear", file, "--bars", "four"}, "No bars: \"four\""},
        {{"--hear", file, "--bars", "200-208"}, "would be empty"},
        {{"--hear", file, "--bars"}, "--bars needs a word"},
        {{"--hear", file, "--loud", "1"}, "doesn't know \"--loud\""},
    };
    for (const auto& [words, line] : wrong) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(audition(words), 1);
        EXPECT_NE(testing::internal::GetCapturedStderr().find(line), std::string::npos) << line;
        EXPECT_FALSE(std::filesystem::exists(file));
    }
}

TEST(Audition, ARestIsNoSilenceWithoutAWord) {
    const ScratchDirectory scratch;
    const Song song = soundtrack();
    const std::vector<Note> notes = notesOf(song, *partOf(song, "lead"));
    int bar = 20;
    while (
        std::any_of(notes.begin(), notes.end(), [&](const Note& note) { return int(note.beat / 4) == bar; }))
        bar++;
    testing::internal::CaptureStderr();
    const std::string bars = std::to_string(bar), end = std::to_string(bar + 1);
    EXPECT_EQ(audition({"--hear", scratch.file("x.wav"), "--bars", bars + "-" + end, "--parts", "lead"}), 0);
    const std::string line = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(line.starts_with("Bars " + bars + " to " + end + ": resting: lead; playing: ")) << line;
}
