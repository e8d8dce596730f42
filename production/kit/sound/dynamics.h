// Effects on a whole stretch of sound, in place, that follow its level. Levels in decibels, times in seconds.
#pragma once

#include <vector>

#include "production/kit/sound/signal.h"

namespace audio {

// Soft clipping around `drive` dB of gain, level kept at full scale.
void saturate(Stereo& sound, float drive);

// Rounds the peaks from -3 dBFS up so that none passes full scale, on a grid four times as fine, as sharp
// edges would fold back. drive: dB of gain before it. With `whole`, that the sound is a part of, it is
// rounded as it is within that: parts add up to the whole.
void clipSoftly(Stereo& sound, float drive, const Stereo* whole = nullptr);

struct Compressor {
    float threshold, ratio;  // ratio above 1
    float attack, release;
};
// Both sides follow one gain. Returns what it was for each frame.
std::vector<float> compress(Stereo& sound, const Compressor& compressor);

// Gain over time that dips at each trigger and comes back over `recovery` seconds. Multiplying by it makes
// room for a kick without listening to one.
std::vector<float> duckingCurve(size_t frames, const std::vector<size_t>& triggers, double recovery);
// depth: 0 leaves the sound, 1 takes it all away at the bottom of a dip. `at` is the curve's value for the
// sound's first frame; past its end nothing dips.
void duck(Stereo& sound, const std::vector<float>& curve, float depth, size_t at);

struct Limiter {
    float ceiling;  // dBTP
    float release;
};
// Keeps the peak between samples at or under the ceiling by looking ahead five milliseconds. Returns the
// gain that it gave each frame, for meters.
std::vector<float> limit(Stereo& sound, const Limiter& limiter);

}  // namespace audio
