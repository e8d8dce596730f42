#include "production/kit/sound/loudness.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "production/kit/sound/filter.h"

namespace audio {

namespace {

// Mean square of 400 ms blocks that begin every 100 ms, both sides together.
std::vector<double> blockPowers(const Stereo& weighted) {
    constexpr size_t hop = sampleRate / 10;
    std::vector<double> hops;
    for (size_t at = 0; at + hop <= weighted.frames(); at += hop) {
        double sum = 0;
        for (size_t i = at; i < at + hop; i++)
            sum += weighted.left[i] * weighted.left[i] + weighted.right[i] * weighted.right[i];
        hops.push_back(sum / hop);
    }
    std::vector<double> blocks;
    for (size_t i = 0; i + 4 <= hops.size(); i++)
        blocks.push_back((hops[i] + hops[i + 1] + hops[i + 2] + hops[i + 3]) / 4);
    return blocks;
}

double meanAbove(const std::vector<double>& blocks, double gate) {
    double sum = 0;
    size_t count = 0;
    for (const double block : blocks) {
        if (block <= gate) continue;
        sum += block;
        count++;
    }
    return count ? sum / count : 0;
}

}  // namespace

float integratedLoudness(const Stereo& sound) {
    Stereo weighted = sound;
    // The two stages of the K weighting: the head's shelf and the low cut.
    Equalizer::highShelf(1500, 4).apply(weighted);
    Equalizer::lowCut(38.1f, 0.5f).apply(weighted);
    const std::vector<double> blocks = blockPowers(weighted);
    const double absoluteGate = std::pow(10, (-70 + 0.691) / 10);
    const double mean = meanAbove(blocks, std::max(absoluteGate, meanAbove(blocks, absoluteGate) / 10));
    return float(-0.691 + 10 * std::log10(std::max(mean, 1e-12)));
}

std::vector<float> peakBetweenSamples(const Stereo& sound) {
    // A windowed sinc for each of the three points between two samples.
    constexpr int reach = 6;
    std::array<std::array<float, 2 * reach>, 3> kernels;
    for (int quarter = 1; quarter <= 3; quarter++) {
        for (int tap = 0; tap < 2 * reach; tap++) {
            const float x = std::numbers::pi_v<float> * (tap - reach + 1 - quarter / 4.0f);
            const float window = std::cos(x / (2 * reach));
            kernels[quarter - 1][tap] = std::sin(x) / x * window * window;
        }
    }
    std::vector<float> peaks(sound.frames(), 0.0f);
    for (const std::vector<float>* side : {&sound.left, &sound.right}) {
        for (size_t i = 0; i < peaks.size(); i++) peaks[i] = std::max(peaks[i], std::fabs((*side)[i]));
        for (size_t i = reach - 1; i + reach < peaks.size(); i++) {
            const float* from = side->data() + i - (reach - 1);
            for (const auto& kernel : kernels) {
                float sum = 0;
                for (int tap = 0; tap < 2 * reach; tap++) sum += kernel[tap] * from[tap];
                peaks[i] = std::max(peaks[i], std::fabs(sum));
            }
        }
    }
    return peaks;
}

}  // namespace audio
