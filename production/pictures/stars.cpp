// "star" (star2.png): the sky round the robot, repeated several times over its dome and drawn unlit. Mostly
// black, since the glow adds it to itself.
#include "production/kit/picture.h"
#include "production/kit/picture_noise.h"
#include "production/pictures/pictures.h"

namespace {

constexpr int size = 1024;

// Adds a star, its light wrapping round the picture's edges.
void addStar(Canvas& canvas, float x, float y, float brightness, Rgba tint) {
    const float core = 0.7f + 0.8f * brightness, arm = 26 * brightness * brightness;
    const int reach = static_cast<int>(4 * core + arm) + 2;
    for (int row = -reach; row <= reach; row++) {
        for (int column = -reach; column <= reach; column++) {
            const int px = static_cast<int>(x) + column, py = static_cast<int>(y) + row;
            const float dx = px + 0.5f - x, dy = py + 0.5f - y;
            float glow = bell(std::hypot(dx, dy), core);
            if (arm > 4) {
                glow += 0.4f * bell(dx, 0.7f) * std::exp(-std::fabs(dy) * 4 / arm);
                glow += 0.4f * bell(dy, 0.7f) * std::exp(-std::fabs(dx) * 4 / arm);
            }
            Rgba& pixel = canvas.at((px + size) % size, (py + size) % size);
            pixel = pixel + tint * (glow * mix(0.25f, 1, brightness));
        }
    }
}

}  // namespace

void makeStars(const char* path) {
    Canvas canvas(size, size, opaque(0, 0, 0));
    paint(canvas, [&](float x, float y, Rgba ground) {
        const float u = x * 3 / size, v = y * 3 / size;
        const float bend = fractalNoise(u, v, 3, 3, 301);
        const float cloud =
            smoothstep(0.02f, 0.55f, fractalNoise(u + 0.6f * bend, v - 0.4f * bend, 3, 7, 307));
        const float dust = smoothstep(0.25f, 0.85f, ridgedNoise(u - 0.3f * bend, v + 0.3f * bend, 3, 6, 331));
        return ground + opaque(0.020f, 0.030f, 0.075f) * cloud +
               opaque(0.05f, 0.022f, 0.05f) * (cloud * dust);
    });
    for (int i = 0; i < 1500; i++) {
        const float chance = randomAt(i, 2, 17);
        const float brightness = 0.04f / (0.04f + chance) * std::pow(randomAt(i, 3, 17), 0.7f);
        const float warmth = randomAt(i, 4, 17);
        const Rgba tint = mix(opaque(0.65f, 0.82f, 1), opaque(1, 0.80f, 0.55f), warmth * warmth);
        addStar(canvas, randomAt(i, 0, 17) * size, randomAt(i, 1, 17) * size, brightness, tint);
    }
    saveRgb(canvas, path, Rows::TopFirst);
}
