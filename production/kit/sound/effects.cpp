#include "production/kit/sound/effects.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <numbers>

#include "production/kit/sound/loudness.h"
#include "production/kit/sound/oscillator.h"

namespace audio {

namespace {

// A ring of samples that is read at a distance behind the newest one.
class DelayLine {
public:
    explicit DelayLine(size_t longest) {
        size_t size = 1;
        while (size < longest + 4) size *= 2;
        ring.assign(size, 0.0f);
        mask = size - 1;
    }
    void push(float sample) { ring[++newest & mask] = sample; }
    float at(size_t back) const { return ring[(newest - back) & mask]; }
    float between(float back) const {
        const size_t whole = size_t(back);
        const float part = back - float(whole);
        return at(whole) + part * (at(whole + 1) - at(whole));
    }

private:
    std::vector<float> ring;
    size_t mask, newest = 0;
};

// Passes all frequencies alike and smears them in time (Schroeder 1962).
class Diffuser {
public:
    explicit Diffuser(size_t frames) : line(frames), frames(frames) {}
    float next(float in) {
        constexpr float share = 0.62f;
        const float old = line.at(frames - 1);
        const float into = in + share * old;
        line.push(into);
        return old - share * into;
    }

private:
    DelayLine line;
    size_t frames;
};

}  // namespace

void chorus(Stereo& sound, float depth, float mix) {
    constexpr float centre = 0.011f, drift = 0.0045f;                     // seconds
    constexpr std::array<float, 4> rates = {0.31f, 0.43f, 0.37f, 0.53f};  // Hz, two for each side
    DelayLine left(frameAt(0.05)), right(frameAt(0.05));
    std::array<float, 4> phase = {0, 0.25f, 0.5f, 0.75f};
    for (size_t i = 0; i < sound.frames(); i++) {
        left.push(sound.left[i]);
        right.push(sound.right[i]);
        std::array<float, 4> back;
        for (int voice = 0; voice < 4; voice++) {
            phase[voice] += stepOf(rates[voice]);
            phase[voice] -= phase[voice] >= 1 ? 1.0f : 0.0f;
            back[voice] = (centre + drift * depth * sineOf(phase[voice])) * sampleRate;
        }
        sound.left[i] += mix * (left.between(back[0]) + right.between(back[1]) - sound.left[i]) / 1.4f;
        sound.right[i] += mix * (right.between(back[2]) + left.between(back[3]) - sound.right[i]) / 1.4f;
    }
}

void pingPong(Stereo& sound, double delay, float feedback, float lowCut, float highCut) {
    const size_t frames = frameAt(delay);
    DelayLine left(frames), right(frames);
    std::array<OnePole, 4> cuts;
    cuts[0].tune(lowCut);
    cuts[1].tune(highCut);
    cuts[2].tune(lowCut);
    cuts[3].tune(highCut);
    for (size_t i = 0; i < sound.frames(); i++) {
        const float heardLeft = left.at(frames - 1), heardRight = right.at(frames - 1);
        const float in = (sound.left[i] + sound.right[i]) * 0.7f;
        left.push(cuts[1].low(cuts[0].high(in + feedback * heardRight)));
        right.push(
            cuts[3].low(cuts[2].high(feedback * heardLeft + 0.25f * (sound.right[i] - sound.left[i]))));
        sound.left[i] = heardLeft;
        sound.right[i] = heardRight;
    }
}

namespace {

constexpr int lineCount = 8;

// Eight delay lines that feed each other through a Hadamard matrix; every loop has the same time to fall.
class Network {
public:
    explicit Network(const Room& room) {
        constexpr std::array<float, lineCount> seconds = {0.0297f, 0.0371f, 0.0411f, 0.0437f,
                                                          0.0531f, 0.0587f, 0.0673f, 0.0741f};
        for (int i = 0; i < lineCount; i++) {
            length[i] = seconds[i] * room.size * sampleRate;
            keep[i] = std::pow(10.0f, -3 * length[i] / sampleRate / room.decay);
            lines.emplace_back(size_t(length[i]) + 64);
            damping[i].tune(room.damping);
        }
    }
    void next(float& left, float& right) {
        std::array<float, lineCount> out;
        for (int i = 0; i < lineCount; i++) {
            // Lines that breathe by a fraction of a millisecond hide the network's own pitches.
            phase[i] += stepOf(0.35f + 0.07f * i);
            phase[i] -= phase[i] >= 1 ? 1.0f : 0.0f;
            out[i] = keep[i] * damping[i].low(lines[i].between(length[i] + 9 * sineOf(phase[i])));
        }
        std::array<float, lineCount> mixed = out;
        for (int half = 1; half < lineCount; half *= 2) {
            for (int i = 0; i < lineCount; i += 2 * half) {
                for (int j = i; j < i + half; j++) {
                    const float a = mixed[j], b = mixed[j + half];
                    mixed[j] = a + b;
                    mixed[j + half] = a - b;
                }
            }
        }
        constexpr float orthonormal = 0.35355339f;  // 1 / sqrt(8)
        for (int i = 0; i < lineCount; i++) lines[i].push(orthonormal * mixed[i] + (i % 2 ? right : left));
        left = 0.5f * (out[0] + out[2] - out[4] - out[6]);
        right = 0.5f * (out[1] + out[3] - out[5] - out[7]);
    }

private:
    std::vector<DelayLine> lines;
    std::array<float, lineCount> length, keep, phase{};
    std::array<OnePole, lineCount> damping;
};

}  // namespace

void reverberate(Stereo& sound, const Room& room) {
    Network network(room);
    DelayLine earlyLeft(frameAt(room.preDelay)), earlyRight(frameAt(room.preDelay));
    std::vector<Diffuser> diffuseLeft, diffuseRight;
    for (const int frames : {229, 347, 463, 577}) {
        diffuseLeft.emplace_back(frames);
        diffuseRight.emplace_back(frames + 22);
    }
    OnePole cutLeft, cutRight;
    cutLeft.tune(room.lowCut);
    cutRight.tune(room.lowCut);
    const size_t back = frameAt(room.preDelay);
    for (size_t i = 0; i < sound.frames(); i++) {
        earlyLeft.push(cutLeft.high(sound.left[i]));
        earlyRight.push(cutRight.high(sound.right[i]));
        float left = earlyLeft.at(back), right = earlyRight.at(back);
        for (Diffuser& diffuser : diffuseLeft) left = diffuser.next(left);
        for (Diffuser& diffuser : diffuseRight) right = diffuser.next(right);
        network.next(left, right);
        sound.left[i] = left;
        sound.right[i] = right;
    }
}

void saturate(Stereo& sound, float drive) {
    const float gain = gainOf(drive), back = 1 / rounded(gain);
    for (std::vector<float>* side : {&sound.left, &sound.right})
        for (float& sample : *side) sample = back * rounded(gain * sample);
}

void compress(Stereo& sound, float threshold, float ratio, float attack, float release, float makeup) {
    const float rise = 1 - std::exp(-1 / (attack * sampleRate)),
                fall = 1 - std::exp(-1 / (release * sampleRate));
    const float start = gainOf(threshold), slope = 1 / ratio - 1, lift = gainOf(makeup);
    float level = 0;
    for (size_t i = 0; i < sound.frames(); i++) {
        const float peak = std::max(std::fabs(sound.left[i]), std::fabs(sound.right[i]));
        level += (peak > level ? rise : fall) * (peak - level);
        const float gain = lift * (level > start ? std::pow(level / start, slope) : 1.0f);
        sound.left[i] *= gain;
        sound.right[i] *= gain;
    }
}

namespace {

constexpr int fineness = 4;  // how many points of the fine grid lie in a frame
constexpr int reach = 16;    // frames to each side that a point between frames is made of

// A windowed sinc for each of the points: tap t of point p weighs the frame that lies t - reach + 1 ahead.
using Kernels = std::array<std::array<float, 2 * reach>, fineness>;

Kernels sincKernels() {
    Kernels kernels;
    for (int point = 0; point < fineness; point++) {
        for (int tap = 0; tap < 2 * reach; tap++) {
            const float x = std::numbers::pi_v<float> * (tap - reach + 1 - float(point) / fineness);
            const float window = std::cos(x / (2 * reach));
            kernels[point][tap] = (x == 0 ? 1 : std::sin(x) / x) * window * window;
        }
    }
    return kernels;
}

// The hyperbolic tangent of a positive number; C libraries differ in its last bit, but not in the
// exponential's.
float hyperbolicTangentOf(float x) {
    return 1 - 2 / (std::exp(2 * x) + 1);
}

// What a sample loses by the clip.
float clipped(float x) {
    constexpr float knee = 0.7071f;
    const float over = std::fabs(x) - knee;
    if (over <= 0) return 0;
    return std::copysign(over - (1 - knee) * hyperbolicTangentOf(over / (1 - knee)), x);
}

}  // namespace

void clipSoftly(Stereo& sound, float drive) {
    scale(sound, gainOf(drive));
    const Kernels kernels = sincKernels();
    constexpr float harmless = 0.6f;  // far enough under the knee that no peak hides between samples
    for (std::vector<float>* side : {&sound.left, &sound.right}) {
        const std::vector<float> before = *side;
        if (before.size() < 2 * reach) continue;
        for (size_t i = reach; i + reach < before.size(); i++) {
            if (std::fabs(before[i]) < harmless && std::fabs(before[i + 1]) < harmless) continue;
            const float* from = before.data() + i - (reach - 1);
            for (int point = 0; point < fineness; point++) {
                float value = 0;
                for (int tap = 0; tap < 2 * reach; tap++) value += kernels[point][tap] * from[tap];
                const float lost = clipped(value) / fineness;
                if (lost == 0) continue;
                // The same kernel backwards takes the fine grid's loss down to the frames.
                float* to = side->data() + i - (reach - 1);
                for (int tap = 0; tap < 2 * reach; tap++) to[tap] -= kernels[point][tap] * lost;
            }
        }
    }
}

void shapeSides(Stereo& sound, const std::vector<Equalizer>& shapes) {
    Stereo middleAndSide(sound.frames());
    for (size_t i = 0; i < sound.frames(); i++) {
        middleAndSide.left[i] = (sound.left[i] + sound.right[i]) / 2;
        middleAndSide.right[i] = (sound.left[i] - sound.right[i]) / 2;
    }
    Stereo shaped = middleAndSide;
    for (const Equalizer& shape : shapes) shape.apply(shaped);
    for (size_t i = 0; i < sound.frames(); i++) {
        sound.left[i] = middleAndSide.left[i] + shaped.right[i];
        sound.right[i] = middleAndSide.left[i] - shaped.right[i];
    }
}

void centreBelow(Stereo& sound, float hertz) {
    shapeSides(sound, {Equalizer::lowCut(hertz)});
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
    for (size_t i = 0; i < sound.frames() && at + i < curve.size(); i++) {
        const float gain = 1 - depth * (1 - curve[at + i]);
        sound.left[i] *= gain;
        sound.right[i] *= gain;
    }
}

void sweepLowPass(Stereo& sound, const FilterSweep& sweep) {
    constexpr size_t tuning = 16;  // frames between changes of the cut-off
    const size_t from = frameAt(sweep.from), to = std::min(frameAt(sweep.to), sound.frames());
    for (std::vector<float>* side : {&sound.left, &sound.right}) {
        StateVariable first, second;
        for (size_t i = from; i < to; i++) {
            if ((i - from) % tuning == 0) {
                const float way = float(i - from) / (to - from);
                const float hertz = sweep.fromHertz * std::pow(sweep.toHertz / sweep.fromHertz, way);
                first.tune(hertz, sweep.resonance);
                second.tune(hertz, 0.707f);
            }
            (*side)[i] = second.low(first.low((*side)[i]));
        }
    }
}

void stutter(Stereo& sound, const Stutter& stutter) {
    constexpr size_t edge = 96;  // frames: repeats fade in and out over 2 ms
    const size_t at = frameAt(stutter.at), slice = frameAt(stutter.slice);
    const size_t end = std::min(frameAt(stutter.at + stutter.length), sound.frames());
    if (at + slice > sound.frames() || slice <= 2 * edge) return;
    const size_t sounding = std::max<size_t>(2 * edge, size_t(slice * stutter.gate));
    for (std::vector<float>* side : {&sound.left, &sound.right}) {
        const std::vector<float> original(side->begin() + at, side->begin() + at + slice);
        for (size_t i = at; i < end; i++) {
            const size_t within = (i - at) % slice;
            const size_t held = stutter.crush > 1 ? within - within % stutter.crush : within;
            float gain = within >= sounding ? 0 : std::min(1.0f, float(sounding - within) / edge);
            if (i - at >= slice) gain *= std::min(1.0f, float(within) / edge);
            (*side)[i] = gain * original[held];
        }
    }
}

std::vector<float> limit(Stereo& sound, float ceiling, float release) {
    constexpr size_t window = sampleRate / 200;
    const float top = gainOf(ceiling), rise = 1 - std::exp(-1 / (release * sampleRate));
    std::vector<float> gain = peakBetweenSamples(sound);
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
        sound.left[i] *= gain[i];
        sound.right[i] *= gain[i];
    }
    return gain;
}

}  // namespace audio
