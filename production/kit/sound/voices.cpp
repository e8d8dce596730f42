#include "production/kit/sound/voices.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "production/kit/sound/filter.h"
#include "production/kit/sound/oscillator.h"

namespace audio {

namespace {

// From low at way 0 to high at way 1, in equal steps to the ear.
float between(float low, float high, float way) {
    return low * std::pow(high / low, way);
}

float cutOffOf(const LowPass& filter, const Note& note) {
    return between(filter.darkest, filter.brightest, note.brightness);
}

// The same note sounds the same wherever it is played from.
uint32_t seedOf(const Note& note) {
    return uint32_t(std::lround((note.beat + 64) * 48)) * 131 + uint32_t(note.pitch) + 1;
}

// Plays one note. `tune` is called for its first frame, and for each so many frames further on, with the
// frames since the first; `next` gives every frame's sound.
template <class Tune, class Next>
void playNote(const Note& note, const Adsr& shape, float voiceGain, size_t interval, Stereo& out, Tune tune,
              Next next) {
    Envelope level(shape, note.length);
    const float gain = voiceGain * note.velocity;
    const size_t from = frameAt(note.start), end = std::min(out.frames(), from + level.frames());
    for (size_t i = from; i < end; i++) {
        if ((i - from) % interval == 0) tune(i - from);
        out.add(i, gain * level.next() * next());
    }
}

}  // namespace

void play(const SawVoice& voice, const Note& note, Stereo& out) {
    Decay closing(voice.sweep);
    Supersaw saws(voice.saws.detune, voice.saws.spread, seedOf(note));
    saws.tune(hertzOf(note.pitch));
    Both<StateVariable> filter;
    const float open = cutOffOf(voice.filter, note);
    const float closed = std::min(open, 1.5f * hertzOf(note.pitch));
    const float bloom = voice.bloom * sampleRate;
    const auto tune = [&](size_t frame) {
        const float way = voice.sweep > 0 ? closing.next(tuningInterval) : 1;
        const float opened = bloom > 0 ? std::min(1.0f, float(frame) / bloom) : 1;
        const float cut = closed + (open - closed) * way * opened;
        filter.tune({cut, cut * 1.04f}, voice.filter.resonance);
    };
    playNote(note, voice.level, voice.gain, tuningInterval, out, tune,
             [&] { return filter.low(saws.next()); });
}

namespace {

// Plays notes that touch as one bow stroke; a stressed note, or the same pitch again, is struck anew.
void playPhrase(const LeadVoice& voice, std::span<const Note> phrase, Stereo& out) {
    const double start = phrase.front().start;
    const float length = float(phrase.back().start + phrase.back().length - start);
    Envelope level({0.006f, 1.5f, 0.8f, voice.release}, length);
    Supersaw saws(voice.saws.detune, voice.saws.spread, seedOf(phrase.front()));
    Wave hollow;
    Both<Ladder> filter;
    Decay stroke(0.25f);
    const float glide = 1 - std::exp(-float(tuningInterval) / std::max(1.0f, voice.glide * sampleRate / 3));
    const size_t dip = frameAt(0.03);
    const float above = 12 * voice.above;
    float pitch = phrase.front().pitch + above, hertz = hertzOf(pitch), swing = 0;
    size_t current = 0, held = dip;
    bool struck = false;
    const size_t from = frameAt(start), end = std::min(out.frames(), from + level.frames());
    for (size_t i = from; i < end; i++, held++) {
        if (current + 1 < phrase.size() && i >= frameAt(phrase[current + 1].start)) {
            current++;
            held = 0;
            struck = phrase[current].pitch == phrase[current - 1].pitch ||
                     phrase[current].velocity > 1.2f * phrase[current - 1].velocity;
            stroke = Decay(0.25f);
        }
        const Note& note = phrase[current];
        const float accent = stroke.next();
        if ((i - from) % tuningInterval == 0) {
            pitch += glide * (note.pitch + above - pitch);
            swing += stepOf(5.6f) * tuningInterval;
            const float depth =
                voice.vibrato * std::clamp((float(held) / sampleRate - 0.25f) * 3, 0.0f, 1.0f);
            hertz = hertzOf(pitch + depth * sineOf(swing));
            saws.tune(hertz);
            const float open = cutOffOf(voice.filter, note);
            const float cut = open * (0.55f + 0.45f * accent);
            filter.tune({cut, cut * 1.03f}, voice.filter.resonance);
        }
        const float pulse = 0.9f * voice.hollow * hollow.pulse(stepOf(hertz / 2), 0.42f);
        const float attack = struck && held < dip ? 0.25f + 0.75f * float(held) / dip : 1;
        const float loudness = voice.gain * note.velocity * attack * level.next();
        out.add(i, loudness * filter.next((1 - voice.hollow) * saws.next() + pulse));
    }
}

}  // namespace

Instrument playedBy(const LeadVoice& voice) {
    return [voice](std::span<const Note> notes, Stereo& out) {
        constexpr double touching = 0.01;  // seconds
        for (size_t first = 0; first < notes.size();) {
            size_t last = first;
            while (last + 1 < notes.size() &&
                   notes[last + 1].start < notes[last].start + notes[last].length + touching)
                last++;
            playPhrase(voice, notes.subspan(first, last - first + 1), out);
            first = last + 1;
        }
    };
}

namespace {

// What a bass has on each side. Both begin their turns together: what is apart at the start cancels in the
// middle.
struct BassSaws {
    Wave saw{0.1f}, high{0.3f};

    float next(float step) { return saw.saw(step) + 0.6f * high.pulse(2 * step, 0.4f); }
};

}  // namespace

void play(const BassVoice& voice, const Note& note, Stereo& out) {
    Decay closing(voice.sweep);
    Wave sub;
    BassSaws left, right;
    Both<Ladder> filter;
    const float hertz = hertzOf(note.pitch), bend = std::exp2(voice.detune / 24);
    const float leftStep = stepOf(hertz / bend), rightStep = stepOf(hertz * bend);
    const float open = cutOffOf(voice.filter, note);
    const float drive = gainOf(voice.drive), back = 1 / std::sqrt(drive);
    const auto tune = [&](size_t) {
        const float way = voice.sweep > 0 ? closing.next(tuningInterval) : 1;
        filter.tune(80 + open * (0.12f + 0.88f * way), voice.filter.resonance);
    };
    playNote(note, voice.level, voice.gain, tuningInterval, out, tune, [&] {
        const Sides saws = {left.next(leftStep), right.next(rightStep)};
        return voice.sub * sub.sine(stepOf(hertz)) + back * filter.next(0.5f * drive * saws);
    });
}

void play(const BellVoice& voice, const Note& note, Stereo& out) {
    // High bells die sooner, as real ones do.
    const float fall = voice.fall * std::exp2((72 - note.pitch) / 36);
    const size_t from = frameAt(note.start), rise = 40;
    const size_t end = std::min(out.frames(), from + frameAt(fall * 1.6f));
    const float bend = std::exp2(voice.shimmer / 24);
    const std::array<float, 2> steps = {stepOf(hertzOf(note.pitch) / bend),
                                        stepOf(hertzOf(note.pitch) * bend)};
    std::array<float, 2> carrier{}, modulator{};
    Decay level(fall), index(voice.indexFall), stroke(0.04f);
    for (size_t i = from; i < end; i++) {
        const float attack = std::min(1.0f, float(i - from) / rise) * std::min(1.0f, float(end - i) / 2000);
        const float loudness = voice.gain * note.velocity * attack * level.next();
        const float turns =
            voice.index * (0.2f + 0.8f * note.brightness) * index.next() + 0.05f * stroke.next();
        for (int side = 0; side < 2; side++) {
            carrier[side] += steps[side];
            modulator[side] += steps[side] * voice.ratio;
            carrier[side] -= carrier[side] >= 1 ? 1.0f : 0.0f;
            modulator[side] -= std::floor(modulator[side]);
        }
        out.add(i, loudness * Sides{sineOf(carrier[0] + turns * sineOf(modulator[0])),
                                    sineOf(carrier[1] + turns * sineOf(modulator[1]))});
    }
}

namespace {

// Formants of a man's voice (Hz, dB), after the tables of the sung vowels.
struct Vowel {
    std::array<float, 4> hertz, decibels;
};
constexpr std::array<Vowel, 5> vowels = {{
    {{350, 600, 2700, 2900}, {0, -16, -17, -14}},   // u
    {{400, 800, 2600, 2800}, {0, -10, -12, -12}},   // o
    {{650, 1080, 2650, 2900}, {0, -6, -7, -8}},     // a
    {{400, 1700, 2600, 3200}, {0, -12, -10, -12}},  // e
    {{290, 1870, 2800, 3250}, {0, -12, -14, -16}},  // i
}};

struct Formants {
    std::array<float, 4> lift = {1, 1, 1, 1};  // of each one's gain
    std::array<StateVariable, 4> filters{};
    std::array<float, 4> gains{};

    // vowel: 0..1, a place in the table.
    void shape(float vowel, float size) {
        const float place = std::clamp(vowel, 0.0f, 1.0f) * (vowels.size() - 1);
        const size_t low = std::min<size_t>(size_t(place), vowels.size() - 2);
        const float way = place - float(low);
        for (size_t i = 0; i < filters.size(); i++) {
            const float hertz = between(vowels[low].hertz[i], vowels[low + 1].hertz[i], way) * size;
            filters[i].tune(hertz, hertz / (70 + 20 * i));
            const float loudness =
                vowels[low].decibels[i] + way * (vowels[low + 1].decibels[i] - vowels[low].decibels[i]);
            gains[i] = lift[i] * gainOf(loudness);
        }
    }
    float next(float in) {
        float sum = 0;
        for (size_t i = 0; i < filters.size(); i++) sum += gains[i] * filters[i].band(in);
        return sum;
    }
};

}  // namespace

void play(const SingingVoice& voice, const Note& note, Stereo& out) {
    constexpr size_t interval = 4 * tuningInterval;
    const uint32_t seed = seedOf(note);
    Noise noise(seed);
    Supersaw saws(0.13f, 0.7f, seed);
    Both<Formants> mouth;
    // Higher voices sit in smaller heads.
    const float size = std::exp2((note.pitch - 55) / 60);
    float swing = 0.1f * float(seed % 7);
    const auto tune = [&](size_t frame) {
        const float seconds = float(frame) / sampleRate;
        const float open = voice.opening > 0 ? std::min(1.0f, seconds / voice.opening) : 1;
        mouth.left.shape(note.brightness * open, size);
        mouth.right.shape(note.brightness * open, size * 1.02f);
        swing += stepOf(5.2f) * interval;
        saws.tune(hertzOf(note.pitch + voice.vibrato * std::min(1.0f, seconds * 2) * sineOf(swing)));
    };
    playNote(note, voice.level, voice.gain, interval, out, tune,
             [&] { return mouth.next(saws.next() + voice.breath * noise.next()); });
}

namespace {

// A torn sound through a mouth, with the hiss of its tearing.
struct Throat {
    Formants mouth{.lift = {1, 1.8f, 4, 4}};  // as a shout has them
    StateVariable teeth;

    void shape(float vowel, float size, float bite) {
        mouth.shape(vowel, size);
        teeth.tune(bite, 1.2f);
    }
    float next(float torn, float hiss) { return mouth.next(torn) + hiss * teeth.band(torn); }
};

}  // namespace

void play(const GrowlVoice& voice, const Note& note, Stereo& out) {
    Wave saw(0.1f), low(0.3f), left(0.2f), right(0.2f);
    Ladder body;
    Throat throat, leftThroat, rightThroat;
    Both<StateVariable> top;
    top.tune(2400, 0.707f);  // above, each turn of the saw would tick like a stroke of its own
    const float hertz = hertzOf(note.pitch), bend = std::exp2(voice.detune / 24);
    const float step = stepOf(hertz), leftStep = stepOf(hertz / bend), rightStep = stepOf(hertz * bend);
    const float drive = gainOf(voice.drive);
    const double bar = std::floor(note.beat / 4);
    const float rate = voice.rates[size_t(bar + 64) % voice.rates.size()];
    float beat = float(note.beat - 4 * bar);
    const auto tune = [&](size_t) {
        // Most open on the bar's first beat.
        const float swing = 0.5f + 0.5f * sineOf(beat * rate + 0.25f);
        const float vowel = voice.from + (voice.to - voice.from) * swing * (0.4f + note.brightness);
        const float bite = between(1500, 3400, swing);
        throat.shape(vowel, voice.size, bite);
        leftThroat.shape(vowel, voice.size * 0.97f, bite * 0.96f);
        rightThroat.shape(vowel, voice.size * 1.03f, bite * 1.04f);
        body.tune(180 + 1400 * swing * note.brightness, 0.3f);
    };
    playNote(note, voice.level, voice.gain, tuningInterval, out, tune, [&] {
        beat += voice.beatsPerSecond / sampleRate;
        const float middle = saw.saw(step) + 0.7f * low.pulse(step, 0.35f);
        // The hiss stands more to the sides than in the middle.
        const float sung = throat.next(rounded(drive * middle), 0.6f * voice.teeth);
        const Sides beside = {leftThroat.next(rounded(drive * left.saw(leftStep)), 1.5f * voice.teeth),
                              rightThroat.next(rounded(drive * right.saw(rightStep)), 1.5f * voice.teeth)};
        return top.low(rounded(voice.chest * body.next(middle) + voice.throat * (sung + 0.5f * beside)));
    });
}

void playDrone(const Note& note, Stereo& out) {
    constexpr int partials = 14;
    constexpr size_t interval = 8 * tuningInterval;
    Noise chance(seedOf(note));
    std::array<float, partials> phase{}, wander, rate, place, step, gain{};
    for (int k = 0; k < partials; k++) {
        wander[k] = chance.next();
        rate[k] = 0.11f + 0.08f * chance.next();
        place[k] = k == 0 ? 0 : chance.next();
        step[k] = stepOf(hertzOf(note.pitch) * (k + 1) * (1 + 0.0015f * chance.next()));
    }
    // Each partial swells on its own; the tilt between low and high ones is the brightness.
    const auto tune = [&](size_t) {
        for (int k = 0; k < partials; k++) {
            wander[k] += stepOf(rate[k]) * interval;
            const float swell = std::max(0.0f, 0.4f + 0.6f * sineOf(wander[k]));
            gain[k] = (k == 0 ? 1 : swell) * std::pow(0.35f + 0.6f * note.brightness, float(k));
        }
    };
    playNote(note, {1.5f, 1, 1, 1.2f}, 0.3f, interval, out, tune, [&] {
        Sides sum = 0;
        for (int k = 0; k < partials; k++) {
            phase[k] += step[k];
            phase[k] -= phase[k] >= 1 ? 1.0f : 0.0f;
            sum = sum + gain[k] * sineOf(phase[k]) * Sides{1 - place[k], 1 + place[k]};
        }
        return sum;
    });
}

}  // namespace audio
