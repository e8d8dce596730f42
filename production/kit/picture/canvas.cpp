#include "production/kit/picture/canvas.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include "image/image.h"
#include "production/kit/picture/noise.h"

namespace picture {

Rgba gradient(const std::vector<Stop>& stops, float place) {
    if (place <= stops.front().place) return stops.front().colour;
    for (size_t i = 1; i < stops.size(); i++) {
        if (place > stops[i].place) continue;
        const Stop& from = stops[i - 1];
        return mix(from.colour, stops[i].colour, (place - from.place) / (stops[i].place - from.place));
    }
    return stops.back().colour;
}

namespace {

int edgeIndex(int i, int count, Edge edge) {
    if (i >= 0 && i < count) return i;
    return edge == Edge::Clamp ? std::clamp(i, 0, count - 1) : ((i % count) + count) % count;
}

// One running mean over 2 * radius + 1 samples, `step` apart in memory.
void boxPass(const Rgba* from, Rgba* to, int count, size_t step, int radius, Edge edge) {
    auto sample = [&](int i) { return from[edgeIndex(i, count, edge) * step]; };
    const float weight = 1.0f / (2 * radius + 1);
    Rgba sum;
    for (int i = -radius; i <= radius; i++) sum = sum + sample(i);
    for (int i = 0; i < count; i++) {
        to[i * step] = sum * weight;
        sum = sum + sample(i + radius + 1) + sample(i - radius) * -1;
    }
}

// Radii of three box passes whose variances, ((2r + 1)^2 - 1) / 12 each, add up to sigma^2 as nearly as whole
// radii can.
void boxRadii(float sigma, int radii[3]) {
    const float ideal = (std::sqrt(4 * sigma * sigma + 1) - 1) / 2;
    const int low = int(ideal);
    auto variance = [](int r) { return ((2 * r + 1) * (2 * r + 1) - 1) / 12.0f; };
    for (int i = 0; i < 3; i++) radii[i] = low;
    for (int i = 0; i < 3; i++) {
        const float have = variance(radii[0]) + variance(radii[1]) + variance(radii[2]);
        const float gain = variance(low + 1) - variance(low);
        if (sigma * sigma - have > gain / 2) radii[i] = low + 1;
    }
}

uint8_t eightBits(float value, float noise) {
    if (value <= 0) return 0;
    if (value >= 1) return 255;
    return uint8_t(std::clamp(value * 255 + 0.5f + noise, 0.0f, 255.0f));
}

void save(const Canvas& canvas, const char* path, Rows rows, int channels) {
    std::vector<uint8_t> bytes(size_t(canvas.width) * canvas.height * channels);
    uint8_t* out = bytes.data();
    for (int row = 0; row < canvas.height; row++) {
        const int y = rows == Rows::TopFirst ? row : canvas.height - 1 - row;
        for (int x = 0; x < canvas.width; x++) {
            const Rgba& pixel = canvas.at(x, y);
            const float clear = channels == 4 && pixel.a > 0 ? 1 / pixel.a : 1;
            const float noise = randomAt(x, y, 77) - 0.5f;
            *out++ = eightBits(pixel.r * clear, noise);
            *out++ = eightBits(pixel.g * clear, noise);
            *out++ = eightBits(pixel.b * clear, noise);
            if (channels == 4) *out++ = eightBits(pixel.a, noise);
        }
    }
    const std::string name = path;
    const bool jpeg = name.size() > 4 && name.compare(name.size() - 4, 4, ".jpg") == 0;
    const auto write = jpeg ? writeJpeg : writePng;
    const uint32_t stride = uint32_t(canvas.width) * channels;
    if (write(path, canvas.width, canvas.height, channels, channels, stride, bytes.data()) != 0) {
        fprintf(stderr, "can't write %s\n", path);
        exit(1);
    }
}

}  // namespace

Rgba sampled(const Canvas& canvas, float x, float y) {
    const float left = std::clamp(x - 0.5f, 0.0f, canvas.width - 1.001f);
    const float top = std::clamp(y - 0.5f, 0.0f, canvas.height - 1.001f);
    const int x0 = int(left), y0 = int(top);
    const Rgba* upper = &canvas.at(x0, y0);
    const Rgba* lower = upper + canvas.width;
    const float u = left - x0, v = top - y0;
    return mix(mix(upper[0], upper[1], u), mix(lower[0], lower[1], u), v);
}

Canvas blurred(const Canvas& source, float sigma, Edge edge) {
    Canvas result = source;
    Canvas other = source;
    int radii[3];
    boxRadii(sigma, radii);
    // Along all rows or all columns.
    const auto pass = [&](int lines, size_t lineStep, int count, size_t step, int radius) {
        if (radius == 0) return;
        for (int i = 0; i < lines; i++)
            boxPass(&result.pixels[i * lineStep], &other.pixels[i * lineStep], count, step, radius, edge);
        std::swap(result, other);
    };
    for (int radius : radii) pass(source.height, source.width, source.width, 1, radius);
    for (int radius : radii) pass(source.width, 1, source.height, source.width, radius);
    return result;
}

Canvas streamed(const Canvas& source, float centreX, float centreY, float reach) {
    Canvas result = source;
    Canvas other = source;
    // Each pass doubles the number of samples behind a pixel, so seven give 128 of them.
    const int passes = 7;
    for (int pass = 0; pass < passes; pass++) {
        const float scale = std::pow(1 - reach, std::ldexp(1.0f, pass - passes));
        paint(other, [&](float x, float y, Rgba) {
            const Rgba far =
                sampled(result, centreX + (x - centreX) * scale, centreY + (y - centreY) * scale);
            return (result.at(int(x), int(y)) + far) * 0.5f;
        });
        std::swap(result, other);
    }
    return result;
}

void saveRgb(const Canvas& canvas, const char* path, Rows rows) {
    save(canvas, path, rows, 3);
}
void saveRgba(const Canvas& canvas, const char* path, Rows rows) {
    save(canvas, path, rows, 4);
}

}  // namespace picture
