// Music as text: melodies and patterns of marks, read into a grid of sixteenths. A text that can't be read is
// read as empty, and a line tells its section, its bar and its part, and shows it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace audio {

constexpr int stepsPerBar = 16;  // sixteenths

// One sound to be played.
struct Note {
    double start;      // seconds
    float length;      // seconds
    float pitch;       // MIDI, 69 is the A of 440 Hz; for hits the semitones by which the drum is tuned up
    float velocity;    // 0..1
    float brightness;  // 0..1; each instrument decides what it does with it
    double beat = 0;   // where it stands in the song, from bar 0 on: what swings in time goes by it
    float stroke = 0;  // 0..1: velocity before its cue's level
};

// What can't be read in a score, a line each.
using Problems = std::vector<std::string>;

// Where a text stands in the score, and who wants to know what can't be read in it.
struct Place {
    std::string section, part;
    int bar = 0;  // of the text's first mark
    Problems* problems = nullptr;
};
void refuse(const Place& place, const std::string& what, std::string_view text);

struct Step {
    float at, length;  // sixteenths from the pattern's start
    float pitch;       // MIDI
    float velocity;    // 0..1
};

struct Pattern {
    std::vector<Step> steps;
    int length = 0;  // sixteenths
};

// "G4:3 D5:7 -:6 | Bb4+D5:16": pitch and length in sixteenths, "-" rests, "+" stacks, "'" behind the length
// stresses and "," softens it; "|" ends a bar, which must then be full.
Pattern melodyOf(std::string_view text, const Place& place);

// The bars from `from` up to `to` of a melody, counted from 0.
std::string barsOf(std::string_view melody, int from, int to);

// A sign that isn't '.' (a rest) or '-' (which holds the sign before it).
struct Mark {
    int at, length;  // sixteenths
    char sign;
};

struct Marks {
    std::vector<Mark> marks;
    int length = 0;  // sixteenths
};

// "x..x..o.x..x..o. x...": signs a sixteenth each, blanks between bars. Only the last may be shorter than a
// bar; signs that are not among `allowed` are refused.
Marks marksOf(std::string_view text, std::string_view allowed, const Place& place);

// Of the signs for hits and chords: X stressed, x plain, o soft, : hardly there.
constexpr std::string_view strokes = "Xxo:";
float velocityOf(char stroke);

// Reads "Eb", "F#", "G" off the front of the text as a pitch class (0 is C); -1 where there is none.
int takePitchClass(std::string_view& text);

// The pieces of a text between such signs, at least one.
std::vector<std::string_view> split(std::string_view text, char border);

// The words of a text split by blanks.
std::vector<std::string_view> wordsOf(std::string_view text);

// "Bb3", with flats, as the messages show a pitch.
std::string nameOf(int pitch);

}  // namespace audio
