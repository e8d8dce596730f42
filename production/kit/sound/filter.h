// Filters that take one sample a call. Cut-offs in Hz may be changed between samples without clicks.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "production/kit/sound/signal.h"

namespace audio {

constexpr size_t tuningInterval = 16;  // frames between changes of a cut-off that moves

// 6 dB an octave.
class OnePole {
public:
    void tune(float hertz);
    float low(float in) { return state += share * (in - state); }
    float high(float in) { return in - low(in); }

private:
    float share = 0, state = 0;
};

// Low, band and high pass of 12 dB an octave in one (state variable filter after Simper's trapezoidal form).
// resonance: 0.5 is soft, 0.707 flat, 10 whistles.
class StateVariable {
public:
    void tune(float hertz, float resonance);
    float low(float in) {
        run(in);
        return lowPart;
    }
    float band(float in) {  // the peak of the band has gain 1
        run(in);
        return bandPart * damping;
    }
    float high(float in) {
        run(in);
        return in - damping * bandPart - lowPart;
    }

private:
    void run(float in) {
        const float drive = in - second;
        bandPart = a1 * first + a2 * drive;
        lowPart = second + a2 * first + a3 * drive;
        first = 2 * bandPart - first;
        second = 2 * lowPart - second;
    }
    float damping = 1, a1 = 0, a2 = 0, a3 = 0;
    float first = 0, second = 0, bandPart = 0, lowPart = 0;
};

// Low pass of 24 dB an octave that saturates (Zavalishin's zero-delay ladder, "The Art of VA Filter Design").
// resonance: 0..1, at 1 it is about to oscillate.
class Ladder {
public:
    void tune(float hertz, float resonance);
    float next(float in);

private:
    float share = 0, feedback = 0;
    std::array<float, 4> state{};
};

// A filter for each side.
template <class Filter>
struct Both {
    Filter left, right;

    template <class... Resonance>
    void tune(Sides hertz, Resonance... resonance) {
        left.tune(hertz.left, resonance...);
        right.tune(hertz.right, resonance...);
    }
    Sides low(Sides in) { return {left.low(in.left), right.low(in.right)}; }
    Sides band(Sides in) { return {left.band(in.left), right.band(in.right)}; }
    Sides high(Sides in) { return {left.high(in.left), right.high(in.right)}; }
    Sides next(Sides in) { return {left.next(in.left), right.next(in.right)}; }
};

struct Bell {
    float hertz, decibels, octaves;
};
struct Shelf {
    float hertz, decibels;
};

// Second-order shapes for the mix (Bristow-Johnson, "Cookbook formulae for audio equalizer coefficients").
class Equalizer {
public:
    static Equalizer lowCut(float hertz) { return cut(hertz, -1); }
    static Equalizer highCut(float hertz) { return cut(hertz, 1); }
    static Equalizer lowShelf(const Shelf& at) { return shelf(at, -1); }
    static Equalizer highShelf(const Shelf& at) { return shelf(at, 1); }
    static Equalizer bell(const Bell& bell);
    // Over a whole sound.
    void apply(std::vector<float>& samples) const;
    void apply(Stereo& sound) const;

private:
    // side: 1 for what is cut or shelved above, -1 for below.
    static Equalizer cut(float hertz, int side);
    static Equalizer shelf(const Shelf& shelf, int side);
    Equalizer(double b0, double b1, double b2, double a0, double a1, double a2);
    double b0, b1, b2, a1, a2;
};

}  // namespace audio
