// Music as text: chord names, melodies and step patterns, read into notes on a grid of sixteenths.
// A bar has 16 steps. A text that can't be read ends the process with a line that shows it.
#pragma once

#include <string_view>
#include <vector>

namespace audio {

// One sound to be played. Patterns give times in steps; a performance turns them into seconds.
struct Note {
    double start;      // seconds
    float length;      // seconds
    float pitch;       // MIDI, 69 is the A of 440 Hz
    float velocity;    // 0..1
    float brightness;  // 0..1, what an instrument makes of it is its own affair
};

struct Step {
    float at, length;  // sixteenths from the pattern's start
    float pitch;       // MIDI; for hits 0
    float velocity;    // 0..1
};

struct Pattern {
    std::vector<Step> steps;
    int length = 0;  // sixteenths
};

// "Gm", "Eb", "Bb/D", "F#dim", "Dsus4", "Cm7", "Ebmaj7", "Gm9", "D5": tones as semitones, the lowest (the
// bass) apart.
struct Chord {
    int bass;                // pitch class, 0 is C
    std::vector<int> tones;  // pitch classes from the root up
};
Chord chordOf(std::string_view name);

// One chord a bar, split by blanks.
std::vector<Chord> chordsOf(std::string_view names);

// "G4:3 D5:7 -:6 | Bb4+D5:4": pitch and length in sixteenths, "-" rests, "+" stacks, "'" behind the length
// stresses and "," softens it; "|" must fall on a bar line.
Pattern melodyOf(std::string_view text);

// "X..x..o.": a mark a sixteenth, X stressed, x plain, o soft, '.' rests.
Pattern hitsOf(std::string_view text);

// The next four read a pattern of marks over a progression: bar b of the pattern lies over chords[b % size].
// In all of them '.' rests and '-' holds the note before.

// Digits are chord tones counted up from the root at or above `lowest`, beyond the last tone an octave
// higher.
Pattern arpeggioOf(std::string_view text, const std::vector<Chord>& chords, int lowest);

// r bass note, o its octave, f the fifth above, s the seventh below it, h the half step above; capitals
// stress. The bass note is the first at or above `lowest`.
Pattern bassOf(std::string_view text, const std::vector<Chord>& chords, int lowest);

// X, x, o: the whole chord, each tone in the octave around `centre`, so that common tones stay where they
// are.
Pattern stabsOf(std::string_view text, const std::vector<Chord>& chords, int centre);

}  // namespace audio
