#include "production/kit/audio_voices.h"

#include <cmath>

#include "production/kit/audio_effects.h"
#include "production/kit/audio_envelope.h"
#include "production/kit/audio_filter.h"
#include "production/kit/audio_oscillator.h"

namespace {

constexpr size_t tuning = 16;  // frames between changes of a filter's cut-off

// Hz from a brightness of 0..1 on a musical (exponential) scale.
float between(float low, float high, float way) {
    return low * std::pow(high / low, way);
}

}  // namespace

void playBass(std::span<const Note> notes, Stereo& out) {
    for (const Note& note : notes) {
        Envelope level({0.003f, 0.5f, 0.75f, 0.05f}, note.length),
            sweep({0.002f, 0.14f, 0.15f, 0.05f}, note.length);
        Wave sub, first(0.1f), second(0.6f);
        Ladder filter;
        const float hertz = hertzOf(note.pitch);
        const float top = between(200, 3200, note.brightness);
        const size_t at = frameAt(note.start);
        for (size_t i = 0; i < level.frames() && at + i < out.frames(); i++) {
            const float open = sweep.next();
            if (i % tuning == 0) filter.tune(90 + top * open, 0.35f);
            const float saws =
                first.saw(stepOf(hertz * 1.003f)) + second.pulse(stepOf(2 * hertz * 0.998f), 0.4f);
            const float value = note.velocity * level.next() *
                                (0.75f * sub.sine(stepOf(hertz)) + 0.4f * filter.next(0.7f * saws));
            out.left[at + i] += value;
            out.right[at + i] += value;
        }
    }
}

void playPad(std::span<const Note> notes, Stereo& out) {
    uint32_t seed = 1;
    for (const Note& note : notes) {
        Envelope level({0.35f, 2, 0.8f, 1.1f}, note.length);
        Supersaw saws(0.16f, 1, seed++);
        saws.tune(hertzOf(note.pitch));
        StateVariable leftFilter, rightFilter;
        const float cut = between(250, 9000, note.brightness);
        leftFilter.tune(cut, 0.6f);
        rightFilter.tune(cut * 1.06f, 0.6f);
        const size_t at = frameAt(note.start);
        for (size_t i = 0; i < level.frames() && at + i < out.frames(); i++) {
            float left, right;
            saws.next(left, right);
            const float gain = 0.25f * note.velocity * level.next();
            out.left[at + i] += gain * leftFilter.low(left);
            out.right[at + i] += gain * rightFilter.low(right);
        }
    }
}

void playPluck(std::span<const Note> notes, Stereo& out) {
    uint32_t seed = 1;
    for (const Note& note : notes) {
        Envelope level({0.002f, 0.4f, 0.1f, 0.15f}, note.length);
        Decay sweep(0.22f);
        Supersaw saws(0.09f, 0.7f, seed++);
        saws.tune(hertzOf(note.pitch));
        StateVariable leftFilter, rightFilter;
        const float top = between(500, 12000, note.brightness);
        const size_t at = frameAt(note.start);
        for (size_t i = 0; i < level.frames() && at + i < out.frames(); i++) {
            float left, right;
            saws.next(left, right);
            const float open = sweep.next();
            if (i % tuning == 0) {
                leftFilter.tune(200 + top * open, 1.1f);
                rightFilter.tune(200 + top * open, 1.1f);
            }
            const float gain = 0.35f * note.velocity * level.next();
            out.left[at + i] += gain * leftFilter.low(left);
            out.right[at + i] += gain * rightFilter.low(right);
        }
    }
}
