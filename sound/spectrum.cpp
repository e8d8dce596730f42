#include "sound/spectrum.h"

#include <cmath>
#include <numbers>

namespace sound {

Spectrum::Spectrum() {
    // A Hann window: a steady tone stays within three bands.
    for (int i = 0; i < windowFrames; i++)
        window[i] = 0.5f - 0.5f * std::cos(2 * std::numbers::pi_v<float> * float(i) / windowFrames);
    plan = fftwf_plan_dft_r2c_1d(windowFrames, weighted, bins, FFTW_ESTIMATE);
}

Spectrum::~Spectrum() {
    fftwf_destroy_plan(plan);
}

void Spectrum::analyse(const float* samples, float* magnitudes) {
    for (int i = 0; i < windowFrames; i++) weighted[i] = samples[i] * window[i];
    fftwf_execute(plan);
    // A sine is halved by its mirror image, and again by the window's mean.
    const float scale = 4.0f / windowFrames;
    for (int i = 0; i < bands; i++) magnitudes[i] = std::hypot(bins[i][0], bins[i][1]) * scale;
}

}  // namespace sound
