// What a finished sound measures: loudness after ITU-R BS.1770 and the peak between its samples.
#pragma once

#include "production/kit/sound/signal.h"

namespace audio {

// Integrated loudness in LUFS, gated at -70 LUFS and 10 LU below the level that this leaves.
float integratedLoudness(const Stereo& sound);

// For each frame, the larger absolute value of both sides on a grid four times as fine.
std::vector<float> peakBetweenSamples(const Stereo& sound);

}  // namespace audio
