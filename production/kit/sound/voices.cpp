#include "production/kit/sound/voices.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "production/kit/sound/filter.h"
#include "production/kit/sound/oscillator.h"

namespace audio {

namespace {

constexpr size_t tuning = 16;  // frames between changes of a filter's cut-off

// From low at way 0 to high at way 1, in equal steps to the ear.
float between(float low, float high, float way) {
    return low * std::pow(high / low, way);
}

// The same note sounds the same wherever it is played from.
uint32_t seedOf(const Note& note) {
    return uint32_t(std::lround((note.beat + 64) * 48)) * 131 + uint32_t(note.pitch) + 1;
}

size_t lastFrame(const Note& note, size_t frames, const Stereo& out) {
    return std::min(out.frames(), frameAt(note.start) + frames);
}

void playSaws(const SawVoice& voice, std::span<const Note> notes, Stereo& out) {
    for (const Note& note : notes) {
        Envelope level(voice.level, note.length);
        Decay closing(std::max(0.001f, voice.sweep));
        Supersaw saws(voice.detune, voice.spread, seedOf(note));
        saws.tune(hertzOf(note.pitch));
        StateVariable left, right;
        const float open = between(voice.darkest, voice.brightest, note.brightness);
        const float closed = std::min(open, 1.5f * hertzOf(note.pitch));
        const float bloom = voice.bloom * sampleRate;
        const float gain = voice.gain * note.velocity;
        const size_t from = frameAt(note.start), end = lastFrame(note, level.frames(), out);
        for (size_t i = from; i < end; i++) {
            const float way = voice.sweep > 0 ? closing.next() : 1;
            if ((i - from) % tuning == 0) {
                const float opened = bloom > 0 ? std::min(1.0f, float(i - from) / bloom) : 1;
                const float cut = closed + (open - closed) * way * opened;
                left.tune(cut, voice.resonance);
                right.tune(cut * 1.04f, voice.resonance);
            }
            float a, b;
            saws.next(a, b);
            const float loudness = gain * level.next();
            out.left[i] += loudness * left.low(a);
            out.right[i] += loudness * right.low(b);
        }
    }
}

// Plays notes that touch as one bow stroke; a stressed note, or the same pitch again, is struck anew.
void playPhrase(const LeadVoice& voice, std::span<const Note> phrase, Stereo& out) {
    const double start = phrase.front().start;
    const float length = float(phrase.back().start + phrase.back().length - start);
    Envelope level({0.006f, 1.5f, 0.8f, voice.release}, length);
    Supersaw saws(voice.detune, voice.spread, seedOf(phrase.front()));
    Wave hollow;
    Ladder left, right;
    Decay stroke(0.25f);
    const float glide = 1 - std::exp(-float(tuning) / std::max(1.0f, voice.glide * sampleRate / 3));
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
        if ((i - from) % tuning == 0) {
            pitch += glide * (note.pitch + above - pitch);
            swing += stepOf(5.6f) * tuning;
            const float depth =
                voice.vibrato * std::clamp((float(held) / sampleRate - 0.25f) * 3, 0.0f, 1.0f);
            hertz = hertzOf(pitch + depth * sineOf(swing));
            saws.tune(hertz);
            const float open = between(voice.darkest, voice.brightest, note.brightness);
            const float cut = open * (0.55f + 0.45f * accent);
            left.tune(cut, voice.resonance);
            right.tune(cut * 1.03f, voice.resonance);
        }
        float a, b;
        saws.next(a, b);
        const float pulse = 0.9f * voice.hollow * hollow.pulse(stepOf(hertz / 2), 0.42f);
        const float attack = struck && held < dip ? 0.25f + 0.75f * float(held) / dip : 1;
        const float loudness = voice.gain * note.velocity * attack * level.next();
        out.left[i] += loudness * left.next((1 - voice.hollow) * a + pulse);
        out.right[i] += loudness * right.next((1 - voice.hollow) * b + pulse);
    }
}

void playLead(const LeadVoice& voice, std::span<const Note> notes, Stereo& out) {
    constexpr double touching = 0.01;  // seconds
    for (size_t first = 0; first < notes.size();) {
        size_t last = first;
        while (last + 1 < notes.size() &&
               notes[last + 1].start < notes[last].start + notes[last].length + touching)
            last++;
        playPhrase(voice, notes.subspan(first, last - first + 1), out);
        first = last + 1;
    }
}

void playBass(const BassVoice& voice, std::span<const Note> notes, Stereo& out) {
    for (const Note& note : notes) {
        Envelope level(voice.level, note.length);
        Decay closing(std::max(0.001f, voice.sweep));
        // Both sides begin their turns together: what is apart at the start cancels in the middle.
        Wave sub, left(0.1f), right(0.1f), leftHigh(0.3f), rightHigh(0.3f);
        Ladder leftFilter, rightFilter;
        const float hertz = hertzOf(note.pitch), bend = std::exp2(voice.detune / 24);
        const float leftStep = stepOf(hertz / bend), rightStep = stepOf(hertz * bend);
        const float open = between(voice.darkest, voice.brightest, note.brightness);
        const float drive = gainOf(voice.drive), back = 1 / std::sqrt(drive);
        const float gain = voice.gain * note.velocity;
        const size_t from = frameAt(note.start), end = lastFrame(note, level.frames(), out);
        for (size_t i = from; i < end; i++) {
            const float way = voice.sweep > 0 ? closing.next() : 1;
            if ((i - from) % tuning == 0) {
                const float cut = 80 + open * (0.12f + 0.88f * way);
                leftFilter.tune(cut, voice.resonance);
                rightFilter.tune(cut, voice.resonance);
            }
            const float a = left.saw(leftStep) + 0.6f * leftHigh.pulse(2 * leftStep, 0.4f);
            const float b = right.saw(rightStep) + 0.6f * rightHigh.pulse(2 * rightStep, 0.4f);
            const float middle = voice.sub * sub.sine(stepOf(hertz));
            const float loudness = gain * level.next();
            out.left[i] += loudness * (middle + back * leftFilter.next(0.5f * drive * a));
            out.right[i] += loudness * (middle + back * rightFilter.next(0.5f * drive * b));
        }
    }
}

void playBells(const BellVoice& voice, std::span<const Note> notes, Stereo& out) {
    for (const Note& note : notes) {
        // High bells die sooner, as real ones do.
        const float fall = voice.fall * std::exp2((72 - note.pitch) / 36);
        const size_t from = frameAt(note.start), frames = frameAt(fall * 1.6f);
        const size_t end = lastFrame(note, frames, out), rise = 40;
        const float bend = std::exp2(voice.shimmer / 24);
        const std::array<float, 2> steps = {stepOf(hertzOf(note.pitch) / bend),
                                            stepOf(hertzOf(note.pitch) * bend)};
        std::array<float, 2> carrier{}, modulator{};
        Decay level(fall), index(voice.indexFall), stroke(0.04f);
        for (size_t i = from; i < end; i++) {
            const float attack =
                std::min(1.0f, float(i - from) / rise) * std::min(1.0f, float(end - i) / 2000);
            const float loudness = voice.gain * note.velocity * attack * level.next();
            const float turns =
                voice.index * (0.2f + 0.8f * note.brightness) * index.next() + 0.05f * stroke.next();
            for (int side = 0; side < 2; side++) {
                carrier[side] += steps[side];
                modulator[side] += steps[side] * voice.ratio;
                carrier[side] -= carrier[side] >= 1 ? 1.0f : 0.0f;
                modulator[side] -= std::floor(modulator[side]);
            }
            out.left[i] += loudness * sineOf(carrier[0] + turns * sineOf(modulator[0]));
            out.right[i] += loudness * sineOf(carrier[1] + turns * sineOf(modulator[1]));
        }
    }
}

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
    std::array<StateVariable, 4> filters;
    std::array<float, 4> gains{};

    void shape(float vowel, float size) {
        const float place = std::clamp(vowel, 0.0f, 1.0f) * (vowels.size() - 1);
        const size_t low = std::min<size_t>(size_t(place), vowels.size() - 2);
        const float way = place - float(low);
        for (size_t i = 0; i < filters.size(); i++) {
            const float hertz = between(vowels[low].hertz[i], vowels[low + 1].hertz[i], way) * size;
            filters[i].tune(hertz, hertz / (70 + 20 * i));
            const float loudness =
                vowels[low].decibels[i] + way * (vowels[low + 1].decibels[i] - vowels[low].decibels[i]);
            gains[i] = gainOf(loudness);
        }
    }
    float next(float in) {
        float sum = 0;
        for (size_t i = 0; i < filters.size(); i++) sum += gains[i] * filters[i].band(in);
        return sum;
    }
    // With the upper formants as loud as a shout has them.
    float bright(float in) {
        constexpr std::array<float, 4> lift = {1, 1.8f, 4, 4};
        float sum = 0;
        for (size_t i = 0; i < filters.size(); i++) sum += lift[i] * gains[i] * filters[i].band(in);
        return sum;
    }
};

void sing(const SingingVoice& voice, std::span<const Note> notes, Stereo& out) {
    for (const Note& note : notes) {
        Envelope level(voice.level, note.length);
        const uint32_t seed = seedOf(note);
        Noise noise(seed);
        Supersaw saws(0.13f, 0.7f, seed);
        Formants left, right;
        // Higher voices sit in smaller heads.
        const float size = std::exp2((note.pitch - 55) / 60);
        float swing = 0.1f * float(seed % 7);
        const size_t from = frameAt(note.start), end = lastFrame(note, level.frames(), out);
        for (size_t i = from; i < end; i++) {
            if ((i - from) % (4 * tuning) == 0) {
                const float seconds = float(i - from) / sampleRate;
                const float open = voice.opening > 0 ? std::min(1.0f, seconds / voice.opening) : 1;
                left.shape(note.brightness * open, size);
                right.shape(note.brightness * open, size * 1.02f);
                swing += stepOf(5.2f) * 4 * tuning;
                saws.tune(hertzOf(note.pitch + voice.vibrato * std::min(1.0f, seconds * 2) * sineOf(swing)));
            }
            float a, b;
            saws.next(a, b);
            const float breath = voice.breath * noise.next();
            const float loudness = voice.gain * note.velocity * level.next();
            out.left[i] += loudness * left.next(a + breath);
            out.right[i] += loudness * right.next(b + breath);
        }
    }
}

void playGrowl(const GrowlVoice& voice, std::span<const Note> notes, Stereo& out) {
    for (const Note& note : notes) {
        Envelope level(voice.level, note.length);
        Wave saw(0.1f), low(0.3f), left(0.2f), right(0.2f);
        Ladder body;
        Formants mouth, leftMouth, rightMouth;
        StateVariable teeth, leftTeeth, rightTeeth, leftTop, rightTop;
        // Above, each turn of the saw would tick like a stroke of its own.
        leftTop.tune(2400, 0.707f);
        rightTop.tune(2400, 0.707f);
        const float hertz = hertzOf(note.pitch), bend = std::exp2(voice.detune / 24);
        const float drive = gainOf(voice.drive);
        const double bar = std::floor(note.beat / 4);
        const float rate = voice.rates[size_t(bar + 64) % voice.rates.size()];
        const float beatsPerFrame = voice.beatsPerSecond / sampleRate;
        float beat = float(note.beat - 4 * bar);
        const size_t from = frameAt(note.start), end = lastFrame(note, level.frames(), out);
        for (size_t i = from; i < end; i++, beat += beatsPerFrame) {
            if ((i - from) % tuning == 0) {
                // Most open on the bar's first beat.
                const float swing = 0.5f + 0.5f * sineOf(beat * rate + 0.25f);
                const float vowel = voice.from + (voice.to - voice.from) * swing * (0.4f + note.brightness);
                mouth.shape(vowel, voice.size);
                leftMouth.shape(vowel, voice.size * 0.97f);
                rightMouth.shape(vowel, voice.size * 1.03f);
                body.tune(180 + 1400 * swing * note.brightness, 0.3f);
                const float bite = between(1500, 3400, swing);
                teeth.tune(bite, 1.2f);
                leftTeeth.tune(bite * 0.96f, 1.2f);
                rightTeeth.tune(bite * 1.04f, 1.2f);
            }
            const float middle = saw.saw(stepOf(hertz)) + 0.7f * low.pulse(stepOf(hertz), 0.35f);
            const float torn = rounded(drive * middle);
            const float tornLeft = rounded(drive * left.saw(stepOf(hertz / bend)));
            const float tornRight = rounded(drive * right.saw(stepOf(hertz * bend)));
            const float deep = body.next(middle);
            // The hiss stands more to the sides than in the middle.
            const float sung = mouth.bright(torn) + 0.6f * voice.teeth * teeth.band(torn);
            const float a = leftMouth.bright(tornLeft) + 1.5f * voice.teeth * leftTeeth.band(tornLeft);
            const float b = rightMouth.bright(tornRight) + 1.5f * voice.teeth * rightTeeth.band(tornRight);
            const float loudness = voice.gain * note.velocity * level.next();
            out.left[i] +=
                loudness * leftTop.low(rounded(voice.chest * deep + voice.throat * (sung + 0.5f * a)));
            out.right[i] +=
                loudness * rightTop.low(rounded(voice.chest * deep + voice.throat * (sung + 0.5f * b)));
        }
    }
}

// An instrument of a voice and the function that plays it.
template <class Voice>
Instrument instrumentOf(void (*play)(const Voice&, std::span<const Note>, Stereo&), const Voice& voice) {
    return [=](std::span<const Note> notes, Stereo& out) { play(voice, notes, out); };
}

}  // namespace

Instrument playedBy(const SawVoice& voice) {
    return instrumentOf(playSaws, voice);
}

Instrument playedBy(const LeadVoice& voice) {
    return instrumentOf(playLead, voice);
}

Instrument playedBy(const BassVoice& voice) {
    return instrumentOf(playBass, voice);
}

Instrument playedBy(const BellVoice& voice) {
    return instrumentOf(playBells, voice);
}

Instrument playedBy(const GrowlVoice& voice) {
    return instrumentOf(playGrowl, voice);
}

Instrument playedBy(const SingingVoice& voice) {
    return instrumentOf(sing, voice);
}

void playDrone(std::span<const Note> notes, Stereo& out) {
    constexpr int partials = 14;
    for (const Note& note : notes) {
        Envelope level({1.5f, 1, 1, 1.2f}, note.length);
        Noise chance(seedOf(note));
        const size_t from = frameAt(note.start), end = lastFrame(note, level.frames(), out);
        std::array<float, partials> phase{}, wander, rate, place, step, gain{};
        for (int k = 0; k < partials; k++) {
            wander[k] = chance.next();
            rate[k] = 0.11f + 0.08f * chance.next();
            place[k] = k == 0 ? 0 : chance.next();
            step[k] = stepOf(hertzOf(note.pitch) * (k + 1) * (1 + 0.0015f * chance.next()));
        }
        for (size_t i = from; i < end; i++) {
            if ((i - from) % (8 * tuning) == 0) {
                // Each partial swells on its own; the tilt between low and high ones is the brightness.
                for (int k = 0; k < partials; k++) {
                    wander[k] += stepOf(rate[k]) * 8 * tuning;
                    const float swell = std::max(0.0f, 0.4f + 0.6f * sineOf(wander[k]));
                    gain[k] = (k == 0 ? 1 : swell) * std::pow(0.35f + 0.6f * note.brightness, float(k));
                }
            }
            float left = 0, right = 0;
            for (int k = 0; k < partials; k++) {
                phase[k] += step[k];
                phase[k] -= phase[k] >= 1 ? 1.0f : 0.0f;
                const float value = gain[k] * sineOf(phase[k]);
                left += (1 - place[k]) * value;
                right += (1 + place[k]) * value;
            }
            const float loudness = 0.3f * note.velocity * level.next();
            out.left[i] += loudness * left;
            out.right[i] += loudness * right;
        }
    }
}

}  // namespace audio
