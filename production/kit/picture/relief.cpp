#include "production/kit/picture/relief.h"

#include "production/kit/picture/noise.h"

namespace picture {

Relief::Relief(int size, Rgba ground)
    : size(size), heights(size_t(size) * size), colours(heights.size(), ground), glows(heights.size()) {}

namespace {

constexpr float sunX = -0.50f, sunY = -0.62f, sunZ = 0.60f;  // towards the light, rows running down

// Heights over the mean of their surroundings: positive on edges, negative in corners.
Canvas heightsBlurred(const Relief& relief, float sigma) {
    Canvas heights(relief.size, relief.size);
    for (size_t i = 0; i < relief.heights.size(); i++) heights.pixels[i].r = relief.heights[i];
    return blurred(heights, sigma, Edge::Wrap);
}

}  // namespace

Canvas lit(const Relief& relief, const Weather& weather) {
    const int size = relief.size, last = size - 1;
    const Canvas near = heightsBlurred(relief, 2.5f), wide = heightsBlurred(relief, 12);
    auto height = [&](int x, int y) { return relief.heights[size_t(y & last) * size + (x & last)]; };

    Canvas canvas(size, size);
    paint(canvas, [&](float px, float py, Rgba) {
        const int x = int(px), y = int(py);
        const size_t i = size_t(y) * size + x;
        const float slopeX = (height(x + 1, y) - height(x - 1, y)) * 0.5f;
        const float slopeY = (height(x, y + 1) - height(x, y - 1)) * 0.5f;
        const float facing =
            (sunZ - slopeX * sunX - slopeY * sunY) / std::sqrt(1 + slopeX * slopeX + slopeY * slopeY);
        const float edge = relief.heights[i] - near.pixels[i].r,
                    hollow = relief.heights[i] - wide.pixels[i].r;

        const float u = px * 8 / size, v = py * 8 / size;
        const float cloud = fractalNoise(u, v, 8, 6, weather.seed);
        const float scratch = gradientNoise(px * 96 / size, py * 24 / size, 24, weather.seed + 20) *
                              gradientNoise(u, v, 8, weather.seed + 21);
        const float runs = fractalNoise(px * 64 / size, py * 4 / size, 4, 3, weather.seed + 30);

        const float shadow = 1 / (1 + 0.22f * std::fmax(-hollow, 0.0f) + 0.30f * std::fmax(-edge, 0.0f));
        const float dirt =
            unit(0.10f * std::fmax(-hollow, 0.0f) + 0.25f * std::fmax(runs, 0.0f) + 0.2f * cloud) *
            weather.grime;
        const float bare = smoothstep(0.35f, 1.1f, edge + 1.2f * cloud) * weather.wear;
        Rgba metal = relief.colours[i] * (1 + weather.grain * (1.4f * cloud + 1.2f * scratch));
        metal = mix(metal, opaque(0.74f, 0.76f, 0.78f), bare);
        metal = metal * (1 - 0.6f * dirt);
        Rgba seen = metal * (std::fmax(facing, 0.0f) * 1.25f + 0.22f) * shadow + relief.glows[i];
        seen.a = 1;
        return seen;
    });
    return canvas;
}

}  // namespace picture
