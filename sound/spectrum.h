// The spectrum of the last moments of the mix.
#pragma once

namespace sound {

inline constexpr int spectrumFrames = 1024;
inline constexpr int spectrumBands = spectrumFrames / 2;

// From `spectrumFrames` mono samples to `spectrumBands` magnitudes, 1 for a full-scale sine in the middle of
// its band.
void analyseSpectrum(const float* samples, float* magnitudes);

}  // namespace sound
