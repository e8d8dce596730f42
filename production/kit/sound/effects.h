// Effects that work on a whole stretch of sound in place. Times in seconds, levels in decibels.
#pragma once

#include <vector>

#include "production/kit/sound/filter.h"
#include "production/kit/sound/signal.h"

namespace audio {

// Two voices a side whose delays drift: width for thin sounds. depth: 0..1 of the full drift, mix: 0..1.
void chorus(Stereo& sound, float depth, float mix);

// Echoes that change sides; what comes in is replaced by them. feedback: 0..1; they pass between the two
// cut-offs (Hz) once more at each turn.
void pingPong(Stereo& sound, double delay, float feedback, float lowCut, float highCut);

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

// Soft clipping around `drive` dB of gain, level kept at full scale.
void saturate(Stereo& sound, float drive);

// Both sides follow one gain. ratio above 1; attack and release in seconds; makeup in dB.
void compress(Stereo& sound, float threshold, float ratio, float attack, float release, float makeup);

// Rounds the peaks from -3 dBFS up so that none passes full scale, on a grid four times as fine, as sharp
// edges would fold back. drive: dB of gain before it.
void clipSoftly(Stereo& sound, float drive);

// Takes what differs between the sides away below a frequency (Hz), where it only costs headroom.
void centreBelow(Stereo& sound, float hertz);

// Equalizes what differs between the sides and leaves their middle.
void shapeSides(Stereo& sound, const std::vector<Equalizer>& shapes);

// Gain over time that dips at each trigger and comes back over `recovery` seconds. Multiplying by it makes
// room for a kick without listening to one.
std::vector<float> duckingCurve(size_t frames, const std::vector<size_t>& triggers, double recovery);
// depth: 0 leaves the sound, 1 takes it all away at the bottom of a dip. `at` is the curve's value for the
// sound's first frame; past its end nothing dips.
void duck(Stereo& sound, const std::vector<float>& curve, float depth, size_t at = 0);

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

// Keeps the peak between samples at or under `ceiling` dBTP by looking ahead five milliseconds. Returns the
// gain that it gave each frame, for meters.
std::vector<float> limit(Stereo& sound, float ceiling, float release);

}  // namespace audio
