// The spectrum of the last moments of the mix.
#pragma once

#include <fftw3.h>

namespace sound {

class Spectrum {
public:
    static constexpr int windowFrames = 1024;
    static constexpr int bands = windowFrames / 2;

    Spectrum();
    ~Spectrum();
    Spectrum(const Spectrum&) = delete;
    Spectrum& operator=(const Spectrum&) = delete;

    // From `windowFrames` mono samples to `bands` magnitudes, 1 for a full-scale sine in the middle of its
    // band.
    void analyse(const float* samples, float* magnitudes);

private:
    float window[windowFrames];
    float weighted[windowFrames];
    fftwf_complex bins[bands + 1];
    fftwf_plan plan;
};

}  // namespace sound
