// Sound as the kit's parts pass it on: whole stretches of stereo samples at 44.1 kHz, full scale at 1.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace audio {

constexpr int sampleRate = 44100;

// One frame, or what each side has of something else; a single number is for both.
struct Sides {
    float left, right;

    Sides(float both) : left(both), right(both) {}
    Sides(float left, float right) : left(left), right(right) {}
};
inline Sides operator+(Sides a, Sides b) {
    return {a.left + b.left, a.right + b.right};
}
inline Sides operator-(Sides a, Sides b) {
    return {a.left - b.left, a.right - b.right};
}
inline Sides operator*(Sides a, Sides b) {
    return {a.left * b.left, a.right * b.right};
}

struct Stereo {
    std::vector<float> left, right;

    explicit Stereo(size_t frames = 0) : left(frames, 0.0f), right(frames, 0.0f) {}
    size_t frames() const { return left.size(); }
    Sides at(size_t frame) const { return {left[frame], right[frame]}; }
    void set(size_t frame, Sides sides) {
        left[frame] = sides.left;
        right[frame] = sides.right;
    }
    void add(size_t frame, Sides sides) { set(frame, at(frame) + sides); }
};

// The frame nearest to a time in seconds; times before 0 count as 0.
size_t frameAt(double seconds);

// Amplitude factor of a level in decibels.
float gainOf(float decibels);

// Frequency in Hz of a MIDI pitch (69 is the A of 440 Hz); fractions lie between the keys.
float hertzOf(float pitch);

// A rational stand-in for tanh: cheaper and as round.
inline float rounded(float x) {
    const float held = std::clamp(x, -3.0f, 3.0f);
    return held * (27 + held * held) / (27 + 9 * held * held);
}
inline Sides rounded(Sides sides) {
    return {rounded(sides.left), rounded(sides.right)};
}

// Adds `from` to `to` with its first frame on `at`; what would lie before or past `to` is left out.
// `pan` goes from -1 (left) to 1 (right) at constant power, 0 leaves both sides as they are.
void mixAt(Stereo& to, const Stereo& from, std::ptrdiff_t at, float gain = 1, float pan = 0);

// The frames from one up to another, which the sound must have.
Stereo sliceOf(const Stereo& sound, size_t from, size_t to);

void scale(Stereo& sound, float gain);

// Side against middle: 0 makes it mono, 1 leaves it, 2 doubles the difference of the sides.
void widen(Stereo& sound, float width);

// Straight fades over the first and the last seconds of a sound.
void fadeEnds(Stereo& sound, float in, float out);

}  // namespace audio
