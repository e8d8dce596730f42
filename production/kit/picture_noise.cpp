#include "production/kit/picture_noise.h"

#include <cmath>

namespace {

uint32_t scrambled(uint32_t x) {
    x = (x ^ (x >> 16)) * 0x7feb352du;
    x = (x ^ (x >> 15)) * 0x846ca68bu;
    return x ^ (x >> 16);
}

uint32_t hashAt(int x, int y, uint32_t seed) {
    return scrambled(static_cast<uint32_t>(x) * 0x9e3779b9u ^
                     scrambled(static_cast<uint32_t>(y) * 0x85ebca6bu ^ seed * 0xc2b2ae35u));
}

int wrapped(int i, int period) {
    return ((i % period) + period) % period;
}

// Unit vectors evenly round the circle.
struct Slopes {
    static constexpr int count = 256;
    float x[count], y[count];

    Slopes() {
        for (int i = 0; i < count; i++) {
            x[i] = std::cos(i * (6.2831853f / count));
            y[i] = std::sin(i * (6.2831853f / count));
        }
    }
};
const Slopes slopes;

float slopeAt(int x, int y, int period, uint32_t seed, float dx, float dy) {
    const uint32_t i = hashAt(wrapped(x, period), wrapped(y, period), seed) % Slopes::count;
    return slopes.x[i] * dx + slopes.y[i] * dy;
}

float fade(float k) {
    return k * k * k * (k * (k * 6 - 15) + 10);
}

}  // namespace

float randomAt(int x, int y, uint32_t seed) {
    return (hashAt(x, y, seed) >> 8) * (1.0f / 16777216.0f);
}

float gradientNoise(float x, float y, int period, uint32_t seed) {
    const int x0 = static_cast<int>(std::floor(x)), y0 = static_cast<int>(std::floor(y));
    const float dx = x - x0, dy = y - y0;
    const float a = slopeAt(x0, y0, period, seed, dx, dy);
    const float b = slopeAt(x0 + 1, y0, period, seed, dx - 1, dy);
    const float c = slopeAt(x0, y0 + 1, period, seed, dx, dy - 1);
    const float d = slopeAt(x0 + 1, y0 + 1, period, seed, dx - 1, dy - 1);
    const float u = fade(dx), v = fade(dy);
    const float top = a + (b - a) * u, bottom = c + (d - c) * u;
    return 1.5f * (top + (bottom - top) * v);
}

float fractalNoise(float x, float y, int period, int octaves, uint32_t seed) {
    float sum = 0, strength = 0.5f;
    for (int octave = 0; octave < octaves; octave++) {
        sum += strength * gradientNoise(x, y, period, seed + octave);
        x *= 2, y *= 2, period *= 2, strength *= 0.5f;
    }
    return sum;
}

float ridgedNoise(float x, float y, int period, int octaves, uint32_t seed) {
    float sum = 0, strength = 0.5f;
    for (int octave = 0; octave < octaves; octave++) {
        const float crease = 1 - std::fabs(gradientNoise(x, y, period, seed + octave));
        sum += strength * crease * crease * crease;
        x *= 2, y *= 2, period *= 2, strength *= 0.5f;
    }
    return sum;
}
