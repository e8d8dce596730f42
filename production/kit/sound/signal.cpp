#include "production/kit/sound/signal.h"

#include <cmath>
#include <numbers>

namespace audio {

size_t frameAt(double seconds) {
    return seconds <= 0 ? 0 : size_t(std::llround(seconds * sampleRate));
}

float gainOf(float decibels) {
    return std::pow(10.0f, decibels / 20);
}

float hertzOf(float pitch) {
    return 440 * std::exp2((pitch - 69) / 12);
}

void mixAt(Stereo& to, const Stereo& from, std::ptrdiff_t at, float gain, float pan) {
    const std::ptrdiff_t first = std::max<std::ptrdiff_t>(0, -at);
    const std::ptrdiff_t end = std::min(std::ptrdiff_t(from.frames()), std::ptrdiff_t(to.frames()) - at);
    const float angle = (pan + 1) * std::numbers::pi_v<float> / 4;
    const Sides gains = gain * Sides{std::cos(angle), std::sin(angle)} * std::numbers::sqrt2_v<float>;
    for (std::ptrdiff_t i = first; i < end; i++) to.add(size_t(at + i), gains * from.at(size_t(i)));
}

Stereo sliceOf(const Stereo& sound, size_t from, size_t to) {
    Stereo slice;
    slice.left.assign(sound.left.begin() + from, sound.left.begin() + to);
    slice.right.assign(sound.right.begin() + from, sound.right.begin() + to);
    return slice;
}

void scale(Stereo& sound, float gain) {
    for (size_t i = 0; i < sound.frames(); i++) sound.set(i, gain * sound.at(i));
}

void widen(Stereo& sound, float width) {
    for (size_t i = 0; i < sound.frames(); i++) {
        const float middle = (sound.left[i] + sound.right[i]) / 2;
        const float side = (sound.left[i] - sound.right[i]) / 2 * width;
        sound.set(i, {middle + side, middle - side});
    }
}

void fadeEnds(Stereo& sound, float in, float out) {
    const size_t frames = sound.frames();
    const size_t rise = std::min(frameAt(in), frames), fall = std::min(frameAt(out), frames);
    for (size_t i = 0; i < rise; i++) sound.set(i, float(i) / rise * sound.at(i));
    for (size_t i = 0, last = frames - 1; i < fall; i++)
        sound.set(last - i, float(i) / fall * sound.at(last - i));
}

}  // namespace audio
