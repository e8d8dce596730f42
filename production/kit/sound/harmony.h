// Chords, scales, and chords as hands would play them one after another.
#pragma once

#include <string_view>
#include <vector>

#include "production/kit/sound/notation.h"

namespace audio {

// "Gm", "Eb", "Bb/D", "F#dim", "Dsus4", "Cm7", "Ebmaj7", "Gm9", "D5".
struct Chord {
    int bass;                // pitch class, 0 is C
    std::vector<int> tones;  // semitones from the C below the root up, the root first
    std::string_view name;
};

// The pitch classes of a key, from its root up.
struct Scale {
    std::vector<int> tones;  // 0..11
    bool has(int pitch) const;
    // The scale's next pitch above (way 1) or below (-1) one.
    int stepFrom(int pitch, int way) const;
};

// The chords of a section, one a bar split by blanks; "Cm,D" has two in one bar, half each. Two entries a
// bar; none if one of them can't be read. The names stay views of the text.
std::vector<Chord> chordsOf(std::string_view names, const Place& place);

// "G minor", "G dorian", "G phrygian", "A major", "A harmonic" (minor with a leading note). Without tones if
// it can't be read.
Scale scaleOf(std::string_view name, const Place& place);

bool has(const Chord& chord, int pitch);

// Semitones, as the chord's tones: its fifth, perfect where the chord leaves it out.
int fifthOf(const Chord& chord);

// The lowest pitch of that class at or above one.
int atOrAbove(int pitchClass, int lowest);

struct Span {
    int low, high;  // MIDI, both included
};

// A chord in `voices` voices between two pitches, spread: no cluster in the depth, every tone there where the
// voices suffice. Of all such settings the one that moves least from `previous` (none where it is empty).
std::vector<int> voicingOf(const Chord& chord, Span range, int voices, const std::vector<int>& previous);

}  // namespace audio
