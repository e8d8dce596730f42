#include "production/kit/picture/noise.h"

#include <cmath>
#include <numbers>

namespace picture {
namespace {

uint32_t scrambled(uint32_t x) {
    x = (x ^ (x >> 16)) * 0x7feb352du;
    x = (x ^ (x >> 15)) * 0x846ca68bu;
    return x ^ (x >> 16);
}

uint32_t hashAt(int x, int y, uint32_t seed) {
    return scrambled(uint32_t(x) * 0x9e3779b9u ^ scrambled(uint32_t(y) * 0x85ebca6bu ^ seed * 0xc2b2ae35u));
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
            const float turn = i * (2 * std::numbers::pi_v<float> / count);
            x[i] = std::cos(turn);
            y[i] = std::sin(turn);
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

// Octaves of noise(octave, its frequency), each half as strong as the one before.
template <class Noise>
float summed(int octaves, Noise noise) {
    float sum = 0, strength = 0.5f;
    for (int octave = 0; octave < octaves; octave++, strength *= 0.5f)
        sum += strength * noise(octave, float(1 << octave));
    return sum;
}

}  // namespace

float randomAt(int x, int y, uint32_t seed) {
    return (hashAt(x, y, seed) >> 8) * (1.0f / 16777216.0f);
}

float gradientNoise(float x, float y, int period, uint32_t seed) {
    const int x0 = int(std::floor(x)), y0 = int(std::floor(y));
    const float dx = x - x0, dy = y - y0;
    const float a = slopeAt(x0, y0, period, seed, dx, dy);
    const float b = slopeAt(x0 + 1, y0, period, seed, dx - 1, dy);
    const float c = slopeAt(x0, y0 + 1, period, seed, dx, dy - 1);
    const float d = slopeAt(x0 + 1, y0 + 1, period, seed, dx - 1, dy - 1);
    const float u = fade(dx), v = fade(dy);
    const float top = a + (b - a) * u, bottom = c + (d - c) * u;
    return 1.5f * (top + (bottom - top) * v);
}

float gradientNoise(float x, float y, float z, uint32_t seed) {
    const int x0 = int(std::floor(x)), y0 = int(std::floor(y)), z0 = int(std::floor(z));
    const float dx = x - x0, dy = y - y0, dz = z - z0;
    float corners[2][2][2];
    for (int k = 0; k < 2; k++)
        for (int j = 0; j < 2; j++)
            for (int i = 0; i < 2; i++) {
                // Towards the middle of one of a cube's twelve edges (Perlin 2002).
                const uint32_t edge = hashAt(x0 + i, y0 + j, seed + 0x9e37u * (z0 + k)) % 12;
                const float a = edge & 1 ? 1.0f : -1.0f, b = edge & 2 ? 1.0f : -1.0f;
                corners[k][j][i] = edge < 4   ? a * (dx - i) + b * (dy - j)
                                   : edge < 8 ? a * (dx - i) + b * (dz - k)
                                              : a * (dy - j) + b * (dz - k);
            }
    const float u = fade(dx), v = fade(dy), w = fade(dz);
    float planes[2];
    for (int k = 0; k < 2; k++) {
        const float top = corners[k][0][0] + (corners[k][0][1] - corners[k][0][0]) * u;
        const float bottom = corners[k][1][0] + (corners[k][1][1] - corners[k][1][0]) * u;
        planes[k] = top + (bottom - top) * v;
    }
    return planes[0] + (planes[1] - planes[0]) * w;
}

float fractalNoise(float x, float y, float z, int octaves, uint32_t seed) {
    return summed(octaves, [&](int octave, float scale) {
        return gradientNoise(x * scale, y * scale, z * scale, seed + octave);
    });
}

float fractalNoise(float x, float y, int period, int octaves, uint32_t seed) {
    return summed(octaves, [&](int octave, float scale) {
        return gradientNoise(x * scale, y * scale, period << octave, seed + octave);
    });
}

float ridgedNoise(float x, float y, int period, int octaves, uint32_t seed) {
    return summed(octaves, [&](int octave, float scale) {
        const float crease =
            1 - std::fabs(gradientNoise(x * scale, y * scale, period << octave, seed + octave));
        return crease * crease * crease;
    });
}

}  // namespace picture
