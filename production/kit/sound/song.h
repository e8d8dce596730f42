// A song as tables: its sections with their chords, who plays which pattern in which bars, and through which
// channel of the mix.
#pragma once

#include <string>
#include <vector>

#include "production/kit/sound/dynamics.h"
#include "production/kit/sound/effects.h"
#include "production/kit/sound/filter.h"
#include "production/kit/sound/harmony.h"
#include "production/kit/sound/instrument.h"

namespace audio {

// A value that moves in a straight line over a stretch, or stays.
struct Ramp {
    float from, to;
    Ramp(float both) : from(both), to(both) {}
    Ramp(float from, float to) : from(from), to(to) {}
    float at(float way) const { return from + way * (to - from); }
};

// How a part's patterns are written.
//   hits      strokes
//   melody    pitches with lengths
//   line      degrees of the chord, 1 3 5 7, each in the octave nearest to the note before it
//   arpeggio  digits count the chord's tones up from the part's lowest pitch
//   bass      r the chord's bass note, o its octave, f the chord's fifth above it, t its third, s and a the
//             scale's steps below and above it; capitals are stressed
//   chords    strokes: the whole chord, led from the one before it
enum class Notation { hits, melody, line, arpeggio, bass, chords };

// What a part is to the others: for the check, and for the bus that it is mixed on.
enum class Role { drums, noise, bass, chords, lead };

constexpr float off = -120;  // dB: a send that is not used

// Where a part sits: levels and sends in dB, pan -1..1, width as in widen(), cuts in Hz, duck 0..1.
struct Channel {
    float level = 0, pan = 0, width = 1, lowCut = 20, highCut = 20000, monoBelow = 0, duck = 0;
    float room = off, hall = off, echo = off;
    float chorus = 0;  // 0..1
};

struct Part {
    const char* name;
    Role role;
    Notation notation;
    Span range;  // what it may play; for hits the semitones that it may be tuned by
    Instrument play;
    Channel channel;
    int voices = 0;         // of its chords
    std::string follows{};  // parts whose rhythm and pitches it doubles, folded into its range, by ' '
};

// A whole section where both are 0. Bars may be fractions.
struct Bars {
    float from = 0, to = 0;
    bool whole() const { return from == 0 && to == 0; }
};

// The pattern begins with its bars and is repeated to their end.
struct Cue {
    const char* part;
    std::string pattern;
    Bars bars = {};
    Ramp level = 0;      // dB
    Ramp bright = 0.5f;  // 0..1
    int transpose = 0;   // semitones
};

// The colour that the mix has in a section, in dB: below 150 Hz, around 900 Hz, and from 4 kHz up.
struct Tone {
    float low = 0, middle = 0, high = 0;
};

struct Section {
    const char* name;
    int from, to;        // bars
    const char* scale;   // "G minor"
    const char* chords;  // as chordsOf() reads them, repeated to the section's end
    Ramp level;          // dB, of the whole mix
    Tone tone;
    std::vector<Cue> cues;
    float swing = 0;  // of a sixteenth, by which every second one comes late, whoever plays it
};

// A bus's soft clip at full scale: dB into it and behind it.
struct Clip {
    float drive, level;
};

// Where a section's tone turns, in Hz, and how many octaves its middle spans.
struct ToneCorners {
    float low, middle, octaves, high;
};

// What the whole passes last. Frequencies in Hz, levels in dB.
struct Master {
    float lowCut;
    std::vector<Bell> bells;
    Shelf highs;
    float centredBelow;  // where the sides are one
    float gain;
    Compressor compressor;
    Limiter limiter;
};

// What the parts share in the mix.
struct Mixer {
    const char* duckedBy;  // the part whose notes dip the channels with a `duck`
    double duckRecovery;   // seconds
    Room room, hall;       // where the sends of those names go
    Echo echo;             // and that of the third, a dotted eighth apart
    float echoToHall;      // gain
    float hallDuck;        // 0..1
    float width;           // of echo and hall, as in widen()
    Clip drums, music;     // the two buses; what the sends return passes neither
    ToneCorners tone;
    Master master;
};

// Where bars lie in time.
struct Grid {
    double beatsPerMinute, barZero;  // barZero: seconds at which bar 0 begins

    constexpr double secondsAt(double bar) const { return barZero + bar * 240 / beatsPerMinute; }
    constexpr double barAt(double seconds) const { return (seconds - barZero) * beatsPerMinute / 240; }
    constexpr double sixteenth() const { return 15 / beatsPerMinute; }  // seconds
};

struct Song {
    Grid grid;
    double seconds;  // length of the whole
    std::vector<Part> parts;
    std::vector<Section> sections;  // in order, without gaps
    Mixer mixer;

    // The section that sounds in a bar; the first or the last one beyond the ends.
    const Section& sectionAt(double bar) const;
};

}  // namespace audio
