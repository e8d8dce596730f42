// Effects that work on a whole stretch of sound in place. Times in seconds.
#pragma once

#include <vector>

#include "production/kit/sound/filter.h"
#include "production/kit/sound/signal.h"

namespace audio {

// Two voices a side whose delays drift: width for thin sounds. mix: 0..1.
void chorus(Stereo& sound, float mix);

struct Echo {
    float feedback;         // 0..1
    float lowCut, highCut;  // Hz between which they pass once more at each turn
};
// Echoes that change sides; what comes in is replaced by them.
void pingPong(Stereo& sound, double delay, const Echo& echo);

struct Room {
    float preDelay;  // seconds until the first reflection
    float size;      // 1 is a hall; scales the eight delay lines
    float decay;     // seconds to fall by 60 dB
    float damping;   // Hz where the highs begin to die sooner
    float lowCut;    // Hz below which nothing enters
};
// Reverberation by a feedback delay network (Jot and Chaigne 1991) of eight lines behind diffusers; what
// comes in is replaced by the reverberation alone.
void reverberate(Stereo& sound, const Room& room);

// Equalizes what differs between the sides and leaves their middle.
void shapeSides(Stereo& sound, const std::vector<Equalizer>& shapes);

// A low pass that moves from one cut-off to another, exponentially, between two times, and then lets go.
struct FilterSweep {
    double from, to;  // seconds
    float fromHertz, toHertz;
    float resonance;
};
void sweepLowPass(Stereo& sound, const FilterSweep& sweep);

// Repeats the first `slice` seconds from `at` over `length` seconds. gate: 0..1, the share of each repeat
// that sounds; crush: 0 leaves it, more holds samples for that many frames (a coarse, broken tone).
struct Stutter {
    double at, length, slice;
    float gate;
    int crush;
};
void stutter(Stereo& sound, const Stutter& stutter);

}  // namespace audio
