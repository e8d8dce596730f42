// How a note's loudness or brightness moves through its length.
#pragma once

#include "production/kit/sound/signal.h"

namespace audio {

// Seconds, except for sustain (0..1, the level that the decay ends on).
struct Adsr {
    float attack, decay, sustain, release;
};

// Level of an envelope at a time after the note's start: a straight attack, then an exponential decay that
// comes within 2 % of sustain after `decay`, and from `length` on the same kind of fall to 0.
class Envelope {
public:
    Envelope(const Adsr& shape, float length);
    float next();
    // Frames until the release has run out: what a note needs of the buffer it is played into.
    size_t frames() const { return held + tail; }

private:
    size_t frame = 0, rise, held, tail;
    float level = 0, sustain, riseStep, decayKeep, releaseKeep;
};

// A level that falls to 2 % in `seconds`, from 1.
class Decay {
public:
    explicit Decay(float seconds);
    // The level before so many frames of its fall.
    float next(size_t frames = 1) {
        const float now = level;
        while (frames--) level *= keep;
        return now;
    }

private:
    float level = 1, keep;
};

}  // namespace audio
