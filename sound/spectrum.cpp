#include "sound/spectrum.h"

#include <kiss_fftr.h>

#include <cmath>
#include <numbers>

namespace sound {

void analyseSpectrum(const float* samples, float* magnitudes) {
    static const kiss_fftr_cfg plan = kiss_fftr_alloc(spectrumFrames, 0, nullptr, nullptr);
    float weighted[spectrumFrames];
    // A Hann window: a steady tone stays within three bands.
    for (int i = 0; i < spectrumFrames; i++) {
        const float phase = 2 * std::numbers::pi_v<float> * float(i) / spectrumFrames;
        weighted[i] = samples[i] * (0.5f - 0.5f * std::cos(phase));
    }
    kiss_fft_cpx bins[spectrumBands + 1];
    kiss_fftr(plan, weighted, bins);
    // A sine is halved by its mirror image, and again by the window's mean.
    constexpr float scale = 4.0f / spectrumFrames;
    for (int i = 0; i < spectrumBands; i++) magnitudes[i] = std::hypot(bins[i].r, bins[i].i) * scale;
}

}  // namespace sound
