// Sources of sound that make one sample a call: waves without audible aliasing, and noise.
// Phases and steps are in turns: a step is frequency over sample rate.
#pragma once

#include <array>
#include <cstdint>

#include "production/kit/sound/signal.h"

namespace audio {

inline float stepOf(float hertz) {
    return hertz / sampleRate;
}

// Sine of a phase in turns, any sign; a polynomial, off by less than 0.0002.
float sineOf(float turns);

// White noise from -1 to 1 (xorshift, Marsaglia 2003): the same sequence for the same seed.
class Noise {
public:
    explicit Noise(uint32_t seed) : state(seed * 2654435769u | 1) {}
    float next() {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        return int32_t(state) * (1.0f / 2147483648.0f);
    }

private:
    uint32_t state;
};

// White noise of which the sides have the most in common, so that it is still there on one loudspeaker.
class WideNoise {
public:
    // Its three sequences have seeds that far apart.
    explicit WideNoise(uint32_t seed, uint32_t apart = 1)
        : left(seed), right(seed + apart), middle(seed + 2 * apart) {}
    Sides next() {
        const float shared = 0.8f * middle.next();
        return shared + 0.5f * Sides{left.next(), right.next()};
    }

private:
    Noise left, right, middle;
};

// Sawtooth and pulse whose steps are rounded by a polynomial (PolyBLEP; Välimäki and Huovilainen 2007).
class Wave {
public:
    explicit Wave(float startPhase = 0) : phase(startPhase) {}
    float saw(float step);
    float pulse(float step, float width);  // width: the share of a turn that is high, 0..1
    float sine(float step);

private:
    void advance(float step) {
        phase += step;
        if (phase >= 1) phase -= 1;
    }
    float phase;
};

// Eight detuned saws spread over the stereo field; each a differentiated parabola (Välimäki 2005), which
// needs no branch, so that the eight are computed side by side.
class Supersaw {
public:
    // detune: semitones from the middle to the outermost saw; spread: 0 all in the middle, 1 over the whole
    // field; seed: where in its turn each saw starts.
    Supersaw(float detune, float spread, uint32_t seed);
    void tune(float hertz);
    Sides next();

private:
    static constexpr int count = 8;
    alignas(16) std::array<float, count> phase, square, step, scale, leftGain, rightGain, ratio;
};

}  // namespace audio
