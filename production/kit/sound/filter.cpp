#include "production/kit/sound/filter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace audio {

namespace {

// The tangent of 0 to 1.5, as Lambert's continued fraction of seven levels: C libraries differ in its last
// bit.
float tangentOf(double x) {
    const double s = x * x;
    return float(x * (135135 - s * (17325 - s * (378 - s))) / (135135 - s * (62370 - s * (3150 - 28 * s))));
}

double angleOf(float hertz) {
    return 2 * std::numbers::pi * hertz / sampleRate;
}

// The bilinear transform's warped frequency, kept under half the sample rate where it runs away.
float warped(float hertz) {
    return tangentOf(std::numbers::pi_v<float> * std::clamp(hertz, 5.0f, 0.45f * sampleRate) / sampleRate);
}

}  // namespace

void OnePole::tune(float hertz) {
    share = 1 - std::exp(-2 * std::numbers::pi_v<float> * hertz / sampleRate);
}

void StateVariable::tune(float hertz, float resonance) {
    const float g = warped(hertz);
    damping = 1 / resonance;
    a1 = 1 / (1 + g * (g + damping));
    a2 = g * a1;
    a3 = g * a2;
}

void Ladder::tune(float hertz, float resonance) {
    const float g = warped(hertz);
    share = g / (1 + g);
    feedback = 4 * resonance;
}

float Ladder::next(float in) {
    const float hold = 1 - share;
    const float memory = hold * (state[3] + share * (state[2] + share * (state[1] + share * state[0])));
    const float gain = share * share * share * share;
    const float guess = (gain * in + memory) / (1 + feedback * gain);
    const float push = in * (1 + 0.5f * feedback / 4) - feedback * guess;
    float value = rounded(push);
    for (float& pole : state) {
        const float change = share * (value - pole);
        value = pole + change;
        pole = value + change;
    }
    return value;
}

Equalizer::Equalizer(double b0, double b1, double b2, double a0, double a1, double a2)
    : b0(b0 / a0), b1(b1 / a0), b2(b2 / a0), a1(a1 / a0), a2(a2 / a0) {}

Equalizer Equalizer::cut(float hertz, int side) {
    constexpr float flat = 0.707f;  // resonance
    const double w = angleOf(hertz), c = std::cos(w), alpha = std::sin(w) / (2 * flat), k = 1 - side * c;
    return {k / 2, side * k, k / 2, 1 + alpha, -2 * c, 1 - alpha};
}

Equalizer Equalizer::shelf(const Shelf& shelf, int side) {
    const double A = std::pow(10.0, shelf.decibels / 40), w = angleOf(shelf.hertz), k = side * std::cos(w);
    const double s = 2 * std::sqrt(A) * std::sin(w) / std::numbers::sqrt2;
    return {A * ((A + 1) + (A - 1) * k + s),    -2 * A * ((A - 1) + (A + 1) * k) * side,
            A * ((A + 1) + (A - 1) * k - s),    (A + 1) - (A - 1) * k + s,
            2 * ((A - 1) - (A + 1) * k) * side, (A + 1) - (A - 1) * k - s};
}

Equalizer Equalizer::bell(const Bell& bell) {
    const double A = std::pow(10.0, bell.decibels / 40), w = angleOf(bell.hertz), c = std::cos(w);
    const double alpha = std::sin(w) * std::sinh(std::numbers::ln2 / 2 * bell.octaves * w / std::sin(w));
    return {1 + alpha * A, -2 * c, 1 - alpha * A, 1 + alpha / A, -2 * c, 1 - alpha / A};
}

void Equalizer::apply(std::vector<float>& samples) const {
    double s1 = 0, s2 = 0;
    for (float& sample : samples) {
        const double in = sample, out = b0 * in + s1;
        s1 = b1 * in - a1 * out + s2;
        s2 = b2 * in - a2 * out;
        sample = float(out);
    }
}

void Equalizer::apply(Stereo& sound) const {
    apply(sound.left);
    apply(sound.right);
}

}  // namespace audio
