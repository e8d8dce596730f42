#include "production/kit/sound/oscillator.h"

#include <cmath>
#include <numbers>

namespace audio {

float sineOf(float turns) {
    // A half turn to each side of 0, folded to the quarter where the series of the sine is short.
    float x = turns - std::floor(turns + 0.5f);
    const float fold = 0.25f - std::fabs(std::fabs(x) - 0.25f);
    x = std::copysign(fold, x) * 2 * std::numbers::pi_v<float>;
    const float square = x * x;
    return x * (1 - square * (1 / 6.0f - square * (1 / 120.0f - square / 5040)));
}

namespace {

// What a step of height 2 at phase 0 lacks or exceeds in the two samples around it.
float roundedStep(float phase, float step) {
    if (phase < step) {
        const float x = phase / step;
        return x + x - x * x - 1;
    }
    if (phase > 1 - step) {
        const float x = (phase - 1) / step;
        return x * x + x + x + 1;
    }
    return 0;
}

}  // namespace

float Wave::saw(float step) {
    const float value = 2 * phase - 1 - roundedStep(phase, step);
    advance(step);
    return value;
}

float Wave::pulse(float step, float width) {
    const float fall = phase + 1 - width - (phase + 1 - width >= 1 ? 1 : 0);
    const float value = (phase < width ? 1.0f : -1.0f) + roundedStep(phase, step) - roundedStep(fall, step);
    advance(step);
    return value;
}

float Wave::sine(float step) {
    const float value = sineOf(phase);
    advance(step);
    return value;
}

Supersaw::Supersaw(float detune, float spread, uint32_t seed) {
    // Unevenly spaced, so that no two pairs of saws beat at one rate.
    constexpr std::array<float, count> offset = {-1.0f, -0.62f, -0.29f, -0.07f, 0.11f, 0.33f, 0.58f, 0.97f};
    constexpr std::array<float, count> place = {-0.9f, 0.7f, -0.5f, 0.2f, -0.2f, 0.5f, -0.7f, 0.9f};
    Noise noise(seed);
    for (int i = 0; i < count; i++) {
        ratio[i] = std::exp2(offset[i] * detune / 12);
        const float angle = (place[i] * spread + 1) * std::numbers::pi_v<float> / 4;
        const float weight = std::fabs(offset[i]) < 0.2f ? 0.8f : 0.55f;
        leftGain[i] = weight * std::cos(angle);
        rightGain[i] = weight * std::sin(angle);
        phase[i] = noise.next();
        square[i] = phase[i] * phase[i];
    }
    tune(440);
}

void Supersaw::tune(float hertz) {
    for (int i = 0; i < count; i++) {
        step[i] = 2 * stepOf(hertz) * ratio[i];  // the phase here runs from -1 to 1
        scale[i] = 1 / (2 * step[i]);
    }
}

Sides Supersaw::next() {
    float left = 0, right = 0;
    for (int i = 0; i < count; i++) {
        float x = phase[i] + step[i];
        x -= x >= 1 ? 2.0f : 0.0f;
        const float parabola = x * x;
        const float saw = (parabola - square[i]) * scale[i];
        phase[i] = x;
        square[i] = parabola;
        left += saw * leftGain[i];
        right += saw * rightGain[i];
    }
    return {left, right};
}

}  // namespace audio
