#include "production/kit/sound/dynamics.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <numbers>

namespace audio {

namespace {

constexpr int fineness = 4;  // how many points of the fine grid lie in a frame

// A windowed sinc for each of the points, which it makes of `reach` frames to each side: tap t of point p
// weighs the frame that lies t - reach + 1 ahead.
template <int reach>
using Kernels = std::array<std::array<float, 2 * reach>, fineness>;

template <int reach>
Kernels<reach> sincKernels() {
    Kernels<reach> kernels;
    for (int point = 0; point < fineness; point++) {
        for (int tap = 0; tap < 2 * reach; tap++) {
            const float x = std::numbers::pi_v<float> * (tap - reach + 1 - float(point) / fineness);
            const float window = std::cos(x / (2 * reach));
            kernels[point][tap] = (x == 0 ? 1 : std::sin(x) / x) * window * window;
        }
    }
    return kernels;
}

// from: the first of the frames that the kernel weighs.
template <size_t taps>
float pointOf(const std::array<float, taps>& kernel, const float* from) {
    float sum = 0;
    for (size_t tap = 0; tap < taps; tap++) sum += kernel[tap] * from[tap];
    return sum;
}

// For each frame, the larger absolute value of both sides on the fine grid.
std::vector<float> peaksOf(const Stereo& sound) {
    constexpr int reach = 6;
    const Kernels<reach> kernels = sincKernels<reach>();
    std::vector<float> peaks(sound.frames(), 0.0f);
    for (const std::vector<float>* side : {&sound.left, &sound.right}) {
        for (size_t i = 0; i < peaks.size(); i++) peaks[i] = std::max(peaks[i], std::fabs((*side)[i]));
        for (size_t i = reach - 1; i + reach < peaks.size(); i++)
            for (int point = 1; point < fineness; point++)
                peaks[i] =
                    std::max(peaks[i], std::fabs(pointOf(kernels[point], side->data() + i - (reach - 1))));
    }
    return peaks;
}

// What a sample loses by the clip.
float clipped(float x) {
    constexpr float knee = 0.7071f;
    const float over = std::fabs(x) - knee;
    if (over <= 0) return 0;
    // C libraries differ in the last bit of the hyperbolic tangent, but not in the exponential's.
    const float tangent = 1 - 2 / (std::exp(2 * (over / (1 - knee))) + 1);
    return std::copysign(over - (1 - knee) * tangent, x);
}

// The share of a change that is made in a frame, for it to be made within some seconds but for 1 / e.
float shareOf(float seconds) {
    return 1 - std::exp(-1 / (seconds * sampleRate));
}

}  // namespace

void saturate(Stereo& sound, float drive) {
    const float gain = gainOf(drive), back = 1 / rounded(gain);
    for (size_t i = 0; i < sound.frames(); i++) sound.set(i, back * rounded(gain * sound.at(i)));
}

void clipSoftly(Stereo& sound, float drive, const Stereo* whole) {
    constexpr int reach = 16;
    const Kernels<reach> kernels = sincKernels<reach>();
    constexpr float harmless = 0.6f;  // far enough under the knee that no peak hides between samples
    const float gain = gainOf(drive);
    scale(sound, gain);
    for (std::vector<float> Stereo::*const side : {&Stereo::left, &Stereo::right}) {
        std::vector<float>& heard = sound.*side;
        const std::vector<float> before = heard;
        std::vector<float> all = whole ? whole->*side : before;
        if (whole) {
            for (float& sample : all) sample *= gain;
        }
        for (size_t i = reach; i + reach < all.size(); i++) {
            if (std::fabs(all[i]) < harmless && std::fabs(all[i + 1]) < harmless) continue;
            const size_t from = i - (reach - 1);
            for (const auto& kernel : kernels) {
                const float point = pointOf(kernel, all.data() + from);
                float lost = clipped(point) / fineness;
                if (lost == 0) continue;
                if (whole) lost *= pointOf(kernel, before.data() + from) / point;
                // The same kernel backwards takes the fine grid's loss down to the frames.
                for (size_t tap = 0; tap < kernel.size(); tap++) heard[from + tap] -= kernel[tap] * lost;
            }
        }
    }
}

std::vector<float> compress(Stereo& sound, const Compressor& compressor) {
    std::vector<float> gain(sound.frames(), 1.0f);
    const float rise = shareOf(compressor.attack), fall = shareOf(compressor.release);
    const float start = gainOf(compressor.threshold), slope = 1 / compressor.ratio - 1;
    float level = 0;
    for (size_t i = 0; i < sound.frames(); i++) {
        const float peak = std::max(std::fabs(sound.left[i]), std::fabs(sound.right[i]));
        level += (peak > level ? rise : fall) * (peak - level);
        if (level > start) gain[i] = std::pow(level / start, slope);
        sound.set(i, gain[i] * sound.at(i));
    }
    return gain;
}

std::vector<float> duckingCurve(size_t frames, const std::vector<size_t>& triggers, double recovery) {
    constexpr double fallTime = 0.004;  // seconds: short enough to be out of the way, too long to click
    std::vector<float> curve(frames, 1.0f);
    const size_t fall = frameAt(fallTime), rise = frameAt(recovery);
    for (const size_t trigger : triggers) {
        for (size_t i = 0; i < fall + rise && trigger + i < frames; i++) {
            const float up = i < fall ? 0 : float(i - fall) / rise;
            const float value = i < fall ? 1 - float(i) / fall : up * up * (3 - 2 * up);
            curve[trigger + i] = std::min(curve[trigger + i], value);
        }
    }
    return curve;
}

void duck(Stereo& sound, const std::vector<float>& curve, float depth, size_t at) {
    for (size_t i = 0; i < sound.frames() && at + i < curve.size(); i++)
        sound.set(i, (1 - depth * (1 - curve[at + i])) * sound.at(i));
}

std::vector<float> limit(Stereo& sound, const Limiter& limiter) {
    constexpr size_t window = sampleRate / 200;
    const float top = gainOf(limiter.ceiling), rise = shareOf(limiter.release);
    std::vector<float> gain = peaksOf(sound);
    for (float& value : gain) value = value > top ? top / value : 1;

    // The least gain of the window that lies ahead, let go slowly ...
    std::vector<float> held(gain.size());
    std::deque<size_t> least;
    float now = 1;
    for (size_t i = 0, ahead = 0; i < gain.size(); i++) {
        for (; ahead < gain.size() && ahead <= i + window; ahead++) {
            while (!least.empty() && gain[least.back()] >= gain[ahead]) least.pop_back();
            least.push_back(ahead);
        }
        while (least.front() < i) least.pop_front();
        const float target = gain[least.front()];
        now = target < now ? target : now + rise * (target - now);
        held[i] = now;
    }
    // ... and averaged over the same window, so that it has arrived when the peak does.
    if (held.empty()) return gain;
    double sum = double(window) * held[0];
    for (size_t i = 0; i < held.size(); i++) {
        sum += held[i] - held[i >= window ? i - window : 0];
        gain[i] = float(sum / window);
        sound.set(i, gain[i] * sound.at(i));
    }
    return gain;
}

}  // namespace audio
