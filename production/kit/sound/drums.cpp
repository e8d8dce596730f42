#include "production/kit/sound/drums.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "production/kit/sound/dynamics.h"
#include "production/kit/sound/envelope.h"
#include "production/kit/sound/filter.h"
#include "production/kit/sound/oscillator.h"

namespace audio {

namespace {

// The frames of a sound that falls to 2 % in `length` seconds, and then to nothing.
size_t framesOf(float length) {
    return frameAt(length * 1.6);
}

void endQuietly(Stereo& sound) {
    fadeEnds(sound, 0, 0.01f);
}

// Such a sound, of which `next` gives each frame.
template <class Next>
Stereo soundOf(float length, float drive, Next next) {
    Stereo sound(framesOf(length));
    for (size_t i = 0; i < sound.frames(); i++) sound.set(i, next(i));
    if (drive > 0) saturate(sound, drive);
    endQuietly(sound);
    return sound;
}

}  // namespace

Stereo kickDrum(float tone, float length, float punch) {
    Stereo sound(framesOf(length));
    Decay body(length), drop(0.09f), snap(0.03f);
    float phase = 0.02f;
    for (size_t i = 0; i < sound.frames(); i++) {
        phase += stepOf(tone * (1 + 2.0f * drop.next() + 10 * punch * snap.next()));
        sound.set(i, body.next() * sineOf(phase));
    }
    saturate(sound, 2 + 3.5f * punch);

    // The beater: what a small loudspeaker hears of the drum.
    Decay beater(0.011f);
    Noise noise(1);
    StateVariable band;
    band.tune(3200, 0.6f);
    for (size_t i = 0; i < frameAt(0.03); i++)
        sound.add(i, 2.7f * punch * beater.next() * band.band(noise.next()));
    endQuietly(sound);
    return sound;
}

Stereo snareDrum(float tone, float length, float rattle) {
    Stereo sound(framesOf(length));
    Decay low(0.1f), high(0.06f), drop(0.02f), snap(0.035f), tail(length);
    Noise left(3), right(4), middle(5), wires(6);
    Both<StateVariable> cut;
    StateVariable middleCut, crackLow, crackHigh;
    cut.tune({2600, 2800}, 0.6f);
    middleCut.tune(1700, 0.6f);
    crackLow.tune(2300, 0.9f);
    crackHigh.tune(4300, 0.9f);
    float phase = 0;
    for (size_t i = 0; i < sound.frames(); i++) {
        phase += stepOf(tone * (1 + 0.9f * drop.next()));
        const float head = 0.6f * low.next() * sineOf(phase) + 0.35f * high.next() * sineOf(phase * 1.62f);
        // The crack stands in the middle, where every loudspeaker hears it.
        const float hit = middle.next() * snap.next();
        const float crack = 2.2f * crackLow.band(hit) + 2.4f * crackHigh.band(hit);
        const float fall = tail.next();
        const float shared = 0.4f * middleCut.high(wires.next());
        const Sides rattling = shared + 0.16f * cut.high({left.next(), right.next()});
        sound.set(i, head + rattle * (crack + fall * rattling));
    }
    saturate(sound, 4);
    Equalizer::highCut(11000).apply(sound);
    endQuietly(sound);
    return sound;
}

Stereo handClap(float length) {
    constexpr std::array<float, 4> hands = {0, 0.009f, 0.019f, 0.028f};  // seconds
    Stereo sound(framesOf(length) + frameAt(hands.back()));
    for (size_t hand = 0; hand < hands.size(); hand++) {
        const bool last = hand + 1 == hands.size();
        WideNoise noise(20 + hand, 10);
        Both<StateVariable> band;
        band.tune({1150.0f + 90 * hand, 1250.0f - 60 * hand}, 1.3f);
        Decay fall(last ? length : 0.018f);
        const float lean = hand % 2 ? 0.35f : -0.35f;
        for (size_t i = frameAt(hands[hand]); i < sound.frames(); i++)
            sound.add(i, Sides{1 - lean, 1 + lean} * (4 * fall.next()) * band.band(noise.next()));
    }
    Equalizer::lowCut(500).apply(sound);
    saturate(sound, 3);
    endQuietly(sound);
    return sound;
}

Stereo hiHat(float length, float brightness, uint32_t seed) {
    constexpr std::array<float, 6> plates = {1, 1.483f, 1.800f, 2.546f, 2.630f, 3.897f};
    Noise left(seed), right(seed + 100), middle(seed + 200);
    std::array<Wave, 6> metal;
    for (size_t i = 0; i < metal.size(); i++) metal[i] = Wave(0.5f + 0.49f * left.next());
    Both<StateVariable> cut, top;
    StateVariable ring;
    // Every take has its own plates: cymbals that are struck again never ring alike.
    const float tune = 385 * (1 + 0.05f * middle.next()), centre = 6200 + 2600 * brightness;
    cut.tune({centre * 0.8f, centre * 0.84f}, 0.9f);
    top.tune(centre * 1.25f, 0.7f);
    ring.tune(centre, 0.9f);
    Decay fall(length), stroke(0.012f);
    return soundOf(length, 0, [&](size_t) {
        float plate = 0;
        for (size_t each = 0; each < metal.size(); each++)
            plate += metal[each].pulse(stepOf(tune * plates[each]), 0.5f);
        plate = ring.band(0.35f * plate) + 0.6f * middle.next();
        const float level = 2.6f * fall.next() + 2 * stroke.next();
        return level * top.low(cut.high(plate + 0.22f * Sides{left.next(), right.next()}));
    });
}

Stereo crashCymbal(float length, uint32_t seed) {
    Noise left(seed), right(seed + 50), middle(seed + 90);
    Both<StateVariable> cut, top;
    cut.tune({2300, 2500}, 0.7f);
    std::array<float, 5> phase{};
    std::array<float, 5> modes = {2670, 3710, 5230, 6390, 8110};  // Hz
    for (float& mode : modes) mode *= 1 + 0.05f * middle.next();
    Decay fall(length), stroke(0.08f), dark(length * 0.6f);
    return soundOf(length, 0, [&](size_t i) {
        if (i % tuningInterval == 0) top.tune(4500 + 8000 * dark.next(tuningInterval), 0.6f);
        float metal = 0;
        for (size_t mode = 0; mode < modes.size(); mode++) {
            phase[mode] += stepOf(modes[mode] * (1 + 0.3f * metal));
            phase[mode] -= std::floor(phase[mode]);
            metal += 0.06f * sineOf(phase[mode]);
        }
        // Mostly the same on both sides, so that it is still a cymbal on one loudspeaker.
        metal += 0.85f * middle.next();
        const float level = 0.55f * fall.next() + 0.5f * stroke.next();
        return level * top.low(cut.high(0.45f * Sides{left.next(), right.next()} + metal));
    });
}

Stereo tomDrum(float tone, float length) {
    Decay body(length), drop(0.12f), skin(0.03f);
    Noise noise(8);
    OnePole cut;
    cut.tune(3500);
    float phase = 0;
    return soundOf(length, 4, [&](size_t) {
        phase += stepOf(tone * (1 + 0.8f * drop.next()));
        const float head = sineOf(phase) + 0.3f * sineOf(phase * 1.59f);
        return 0.8f * body.next() * head + 0.5f * skin.next() * cut.low(noise.next());
    });
}

Stereo boxKnock(float tone, float hardness) {
    struct Mode {
        float ratio, seconds, level;
    };
    constexpr std::array<Mode, 4> modes = {
        {{1, 0.16f, 1}, {2.57f, 0.07f, 0.6f}, {4.95f, 0.045f, 0.35f}, {7.1f, 0.03f, 0.25f}}};
    Stereo sound(framesOf(0.2f));
    Noise noise(9);
    for (size_t each = 0; each < modes.size(); each++) {
        const Mode& mode = modes[each];
        Decay fall(mode.seconds), drop(0.02f);
        const float level = mode.level * (each == 0 ? 1 : 0.4f + 0.8f * hardness);
        const float lean = each % 2 ? 0.2f : -0.2f;
        float phase = 0;
        for (size_t i = 0; i < sound.frames(); i++) {
            phase += stepOf(tone * mode.ratio * (1 + 0.25f * drop.next()));
            sound.add(i, Sides{1 - lean, 1 + lean} * (level * fall.next() * sineOf(phase)));
        }
    }
    Decay stick(0.004f);
    for (size_t i = 0; i < frameAt(0.02); i++) sound.add(i, 0.6f * hardness * stick.next() * noise.next());
    saturate(sound, 3);
    endQuietly(sound);
    return sound;
}

Stereo shaker(float length, uint32_t seed) {
    WideNoise noise(seed, 10);
    Both<StateVariable> band;
    band.tune({7900, 8200}, 1.1f);
    Decay fall(length);
    const size_t rise = frameAt(0.006);
    return soundOf(length, 0, [&](size_t i) {
        const float level = 4 * fall.next() * std::min(1.0f, float(i) / rise);
        return level * band.band(noise.next());
    });
}

Stereo tick(float tone) {
    Noise noise(12);
    StateVariable band;
    band.tune(tone * 2.4f, 2);
    Decay ring(0.035f), stroke(0.003f);
    float phase = 0;
    return soundOf(0.05f, 0, [&](size_t) {
        phase += stepOf(tone);
        return 1.2f * ring.next() * sineOf(phase) + 4 * band.band(noise.next()) * stroke.next();
    });
}

Stereo impact(float length, float depth) {
    WideNoise noise(15);
    Both<StateVariable> cut;
    Decay boom(length * 0.8f), drop(length * 0.35f), burst(length * 0.5f), dark(length * 0.45f),
        metal(length * 0.6f);
    float phase = 0, ring = 0;
    return soundOf(length, 5, [&](size_t i) {
        const float openness = dark.next();
        if (i % tuningInterval == 0)
            cut.tune({160 + 7000 * openness * openness, 150 + 7400 * openness * openness}, 0.7f);
        phase += stepOf(34 + 90 * drop.next());
        ring += stepOf(97);
        const float low = depth * boom.next() * sineOf(phase);
        const float clang = 0.16f * metal.next() * sineOf(ring + 0.5f * openness * sineOf(ring * 2.76f));
        return low + clang + 0.55f * burst.next() * cut.low(noise.next());
    });
}

namespace {

Stereo repitched(const Stereo& take, float semitones) {
    const double rate = std::exp2(semitones / 12);
    Stereo sound(size_t(take.frames() / rate));
    for (size_t i = 0; i < sound.frames(); i++) {
        const size_t at = size_t(i * rate), next = std::min(at + 1, take.frames() - 1);
        const float part = float(i * rate - at);
        sound.set(i, take.at(at) + part * (take.at(next) - take.at(at)));
    }
    return sound;
}

}  // namespace

Instrument struck(std::vector<Stereo> takes, float base) {
    return eachBy([takes = std::move(takes), base](const Note& note, Stereo& out) {
        // The take goes by the sixteenth that it falls on, whatever was played before.
        const Stereo& take = takes[size_t(std::lround((note.beat + 64) * 4)) % takes.size()];
        const std::ptrdiff_t at = std::ptrdiff_t(frameAt(note.start));
        if (note.pitch == base)
            mixAt(out, take, at, note.velocity);
        else
            mixAt(out, repitched(take, note.pitch - base), at, note.velocity);
    });
}

namespace {

// How far a note's noise is.
struct Moment {
    float seconds, way;  // way: 0..1
    float ending;        // 1, and down to 0 over the last frames
};

// Noise of a note through a band. `centre` (Hz) and `level` tell what both sides have at a moment.
template <class Centre, class Level>
void blow(const Note& note, uint32_t seed, float resonance, Stereo& out, Centre centre, Level level) {
    WideNoise noise(seed);
    Both<StateVariable> band;
    const size_t at = frameAt(note.start), frames = frameAt(note.length);
    for (size_t i = 0; i < frames && at + i < out.frames(); i++) {
        const Moment now = {float(i) / sampleRate, float(i) / frames,
                            std::min(1.0f, float(frames - i) / 200)};
        if (i % tuningInterval == 0) band.tune(centre(now), resonance);
        out.add(at + i, level(now) * band.band(noise.next()));
    }
}

}  // namespace

void playRiser(const Note& note, Stereo& out) {
    const auto centre = [&](const Moment& now) {
        const float hertz = 260 * std::exp2((2 + 3 * note.brightness) * now.way);
        return Sides{hertz, hertz * 1.05f};
    };
    const auto level = [&](const Moment& now) { return note.velocity * now.way * now.way * now.ending; };
    blow(note, 41, 1.6f, out, centre, level);
}

void playClimb(const Note& note, Stereo& out) {
    Supersaw saws(0.25f, 0.5f, 7);
    Both<Ladder> filter;
    const size_t at = frameAt(note.start), frames = frameAt(note.length);
    for (size_t i = 0; i < frames && at + i < out.frames(); i++) {
        const float way = float(i) / frames;
        if (i % tuningInterval == 0) {
            saws.tune(hertzOf(note.pitch + 12 * way));
            filter.tune(300 * std::exp2((2 + 3 * note.brightness) * way), 0.5f);
        }
        // Sixteen gates a note in its first half, as many in the next quarter, and so on.
        const float gates = -16 * std::log2(std::max(1.0f / 32, 1 - way)) / (note.length > 3 ? 1 : 2);
        const float turn = gates - std::floor(gates);
        const float open = std::min(1.0f, 8 * turn) * std::min(1.0f, 3 * (1 - turn));
        const float swell = note.velocity * (0.2f + 0.8f * way * way) *
                            std::min(1.0f, float(frames - i) / 200) * (0.25f + 0.75f * open);
        out.add(at + i, swell * filter.next(saws.next()));
    }
}

void playFall(const Note& note, Stereo& out) {
    const auto centre = [](const Moment& now) {
        const float hertz = 9000 * std::exp2(-5 * now.way);
        return Sides{hertz, hertz * 0.92f};
    };
    const auto level = [&](const Moment& now) { return note.velocity * (1 - now.way) * (1 - now.way); };
    blow(note, 43, 0.9f, out, centre, level);
}

void playReverse(const Note& note, Stereo& out) {
    Stereo crash = crashCymbal(2.2f, 61);
    std::reverse(crash.left.begin(), crash.left.end());
    std::reverse(crash.right.begin(), crash.right.end());
    const size_t frames = std::min(frameAt(note.length), crash.frames());
    Stereo part = sliceOf(crash, crash.frames() - frames, crash.frames());
    fadeEnds(part, note.length * 0.3f, 0.002f);
    mixAt(out, part, std::ptrdiff_t(frameAt(note.start)), note.velocity);
}

void playWind(const Note& note, Stereo& out) {
    const float middle = 400 * std::exp2(4 * note.brightness);
    const auto drifting = [&](float turns) { return middle * std::exp2(0.7f * sineOf(turns)); };
    const auto centre = [&](const Moment& now) {
        return Sides{drifting(0.13f * now.seconds), drifting(0.13f * now.seconds + 0.05f)};
    };
    const auto level = [&](const Moment& now) {
        const float drift = 0.4f * sineOf(0.17f * now.seconds);
        return note.velocity * sineOf(now.way / 2) * Sides{1 - drift, 1 + drift};
    };
    blow(note, 51, 4, out, centre, level);
}

}  // namespace audio
