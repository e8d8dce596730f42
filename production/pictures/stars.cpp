// "star" (star2.png): the sky round the robot, repeated several times over its dome and drawn unlit. A
// repeat is a quarter of the screen: few stars, large enough to outlive that, and no cloud that would be
// seen to repeat. Mostly black, since the glow adds it to itself.
#include "production/kit/picture.h"
#include "production/kit/picture_noise.h"
#include "production/pictures/pictures.h"

namespace {

constexpr int size = 512;
constexpr int starCount = 210;

// Adds a star, its light wrapping round the picture's edges.
void addStar(Canvas& canvas, float x, float y, float brightness, Rgba tint) {
    const float core = 1.0f + 0.9f * brightness, arm = 34 * brightness * brightness;
    const int reach = static_cast<int>(5 * core + arm) + 2;
    for (int row = -reach; row <= reach; row++) {
        for (int column = -reach; column <= reach; column++) {
            const int px = static_cast<int>(x) + column, py = static_cast<int>(y) + row;
            const float dx = px + 0.5f - x, dy = py + 0.5f - y;
            float glow = bell(std::hypot(dx, dy), core);
            if (arm > 9) {
                glow += 0.35f * bell(dx, 0.9f) * std::exp(-std::fabs(dy) * 4 / arm);
                glow += 0.35f * bell(dy, 0.9f) * std::exp(-std::fabs(dx) * 4 / arm);
            }
            Rgba& pixel = canvas.at((px + size) % size, (py + size) % size);
            pixel = pixel + tint * (glow * mix(0.12f, 0.95f, brightness));
        }
    }
}

}  // namespace

void makeStars(const char* path) {
    Canvas canvas(size, size, opaque(0, 0, 0));
    paint(canvas, [&](float x, float y, Rgba ground) {
        const float u = x * 5 / size, v = y * 5 / size;
        const float bend = fractalNoise(u, v, 5, 3, 301);
        const float dust =
            smoothstep(-0.25f, 0.6f, fractalNoise(u + 0.5f * bend, v - 0.4f * bend, 5, 6, 307));
        return ground + opaque(0.016f, 0.020f, 0.042f) * dust;
    });
    for (int i = 0; i < starCount; i++) {
        const float brightness = std::pow(randomAt(i, 3, 17), 5.0f), warmth = randomAt(i, 4, 17);
        const Rgba tint = mix(opaque(0.62f, 0.80f, 1), opaque(1, 0.78f, 0.52f), warmth * warmth);
        addStar(canvas, randomAt(i, 0, 17) * size, randomAt(i, 1, 17) * size, brightness, tint);
    }
    saveRgb(canvas, path, Rows::TopFirst);
}
