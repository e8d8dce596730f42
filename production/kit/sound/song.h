// A song as tables: who plays which pattern in which bars, through which channel of the mix.
#pragma once

#include <string>
#include <vector>

#include "production/kit/sound/effects.h"
#include "production/kit/sound/instrument.h"

namespace audio {

// A value that moves in a straight line over a cue, or stays.
struct Ramp {
    float from, to;
    Ramp(float both) : from(both), to(both) {}
    Ramp(float from, float to) : from(from), to(to) {}
    float at(float way) const { return from + way * (to - from); }
};

enum class Notation { melody, hits, arpeggio, bass, stabs };

constexpr float off = -120;  // dB: a send that is not used

// Where a part sits: levels and sends in dB, pan -1..1, width as in widen(), lowCut in Hz, duck 0..1.
struct Channel {
    float level = 0, pan = 0, width = 1, lowCut = 20, duck = 0;
    float room = off, hall = off, echo = off;
    float chorus = 0;  // 0..1
};

struct Part {
    const char* name;
    Notation notation;
    int pitch;  // lowest or centre pitch for patterns over chords (MIDI), transposition in semitones for
                // melodies
    Instrument play;
    Channel channel;
};

// Bars may be fractions. The pattern starts at `from` and is repeated up to `to`.
struct Cue {
    const char* part;
    float from, to;
    std::string pattern;
    Ramp level = 0;      // dB
    Ramp bright = 0.5f;  // 0..1
    int transpose = 0;   // semitones, or for hits what the drum makes of a pitch
};

// The chords from a bar on, one a bar, repeated until the next row.
struct Harmony {
    int from;
    const char* chords;
};

struct Song {
    double beatsPerMinute, barZero;  // barZero: seconds at which bar 0 begins
    double seconds;                  // length of the whole
    std::vector<Part> parts;
    std::vector<Cue> cues;
    std::vector<Harmony> harmony;
    const char* duckedBy;  // the part whose notes dip the channels with a `duck`
    double duckRecovery;   // seconds
    Room room, hall;       // where the sends of those names go
    float echoFeedback;    // echoes come a dotted eighth apart

    double secondsAt(double bar) const { return barZero + bar * 240 / beatsPerMinute; }
};

}  // namespace audio
