#include "production/kit/sound/effects.h"

#include <algorithm>
#include <array>
#include <cmath>

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

void chorus(Stereo& sound, float mix) {
    constexpr float centre = 0.011f, drift = 0.0045f;                     // seconds
    constexpr std::array<float, 4> rates = {0.31f, 0.43f, 0.37f, 0.53f};  // Hz, two for each side
    DelayLine left(frameAt(0.05)), right(frameAt(0.05));
    std::array<float, 4> phase = {0, 0.25f, 0.5f, 0.75f};
    for (size_t i = 0; i < sound.frames(); i++) {
        const Sides in = sound.at(i);
        left.push(in.left);
        right.push(in.right);
        std::array<float, 4> back;
        for (int voice = 0; voice < 4; voice++) {
            phase[voice] += stepOf(rates[voice]);
            phase[voice] -= phase[voice] >= 1 ? 1.0f : 0.0f;
            back[voice] = (centre + drift * sineOf(phase[voice])) * sampleRate;
        }
        sound.left[i] += mix * (left.between(back[0]) + right.between(back[1]) - in.left) / 1.4f;
        sound.right[i] += mix * (right.between(back[2]) + left.between(back[3]) - in.right) / 1.4f;
    }
}

void pingPong(Stereo& sound, double delay, const Echo& echo) {
    const size_t frames = frameAt(delay);
    DelayLine left(frames), right(frames);
    Both<OnePole> lowCut, highCut;
    lowCut.tune(echo.lowCut);
    highCut.tune(echo.highCut);
    for (size_t i = 0; i < sound.frames(); i++) {
        const Sides heard = {left.at(frames - 1), right.at(frames - 1)}, in = sound.at(i);
        const Sides fed = {(in.left + in.right) * 0.7f + echo.feedback * heard.right,
                           echo.feedback * heard.left + 0.25f * (in.right - in.left)};
        const Sides passed = highCut.low(lowCut.high(fed));
        left.push(passed.left);
        right.push(passed.right);
        sound.set(i, heard);
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
    Sides next(Sides in) {
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
        for (int i = 0; i < lineCount; i++)
            lines[i].push(orthonormal * mixed[i] + (i % 2 ? in.right : in.left));
        return 0.5f * Sides{out[0] + out[2] - out[4] - out[6], out[1] + out[3] - out[5] - out[7]};
    }

private:
    std::vector<DelayLine> lines;
    std::array<float, lineCount> length, keep, phase{};
    std::array<OnePole, lineCount> damping;
};

// What a sound passes on its way into the network, on one side.
class Entrance {
public:
    // apart: frames by which the diffusers are longer than the other side's.
    Entrance(const Room& room, size_t apart) : early(frameAt(room.preDelay)), back(frameAt(room.preDelay)) {
        cut.tune(room.lowCut);
        for (const size_t frames : {229, 347, 463, 577}) diffusers.emplace_back(frames + apart);
    }
    float next(float in) {
        early.push(cut.high(in));
        float out = early.at(back);
        for (Diffuser& diffuser : diffusers) out = diffuser.next(out);
        return out;
    }

private:
    DelayLine early;
    size_t back;
    OnePole cut;
    std::vector<Diffuser> diffusers;
};

}  // namespace

void reverberate(Stereo& sound, const Room& room) {
    Network network(room);
    Entrance left(room, 0), right(room, 22);
    for (size_t i = 0; i < sound.frames(); i++)
        sound.set(i, network.next({left.next(sound.left[i]), right.next(sound.right[i])}));
}

void shapeSides(Stereo& sound, const std::vector<Equalizer>& shapes) {
    std::vector<float> side(sound.frames());
    for (size_t i = 0; i < side.size(); i++) side[i] = (sound.left[i] - sound.right[i]) / 2;
    for (const Equalizer& shape : shapes) shape.apply(side);
    for (size_t i = 0; i < side.size(); i++) {
        const float middle = (sound.left[i] + sound.right[i]) / 2;
        sound.set(i, {middle + side[i], middle - side[i]});
    }
}

void sweepLowPass(Stereo& sound, const FilterSweep& sweep) {
    const size_t from = frameAt(sweep.from), to = std::min(frameAt(sweep.to), sound.frames());
    Both<StateVariable> first, second;
    for (size_t i = from; i < to; i++) {
        if ((i - from) % tuningInterval == 0) {
            const float way = float(i - from) / (to - from);
            const float hertz = sweep.fromHertz * std::pow(sweep.toHertz / sweep.fromHertz, way);
            first.tune(hertz, sweep.resonance);
            second.tune(hertz, 0.707f);
        }
        sound.set(i, second.low(first.low(sound.at(i))));
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

}  // namespace audio
