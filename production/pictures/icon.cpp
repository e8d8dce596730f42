// The desktop's icon: the V of the title in gold, crossed by its streak of light, before northern lights on a
// night tile. Every size is drawn for its own pixels; the small ones are bolder and leave the sky out.
#include "production/pictures/icons.h"

#include "production/kit/picture/canvas.h"
#include "production/kit/picture/lettering.h"
#include "production/kit/picture/noise.h"

using namespace picture;

namespace {

// All lengths in tile sizes unless stated otherwise.
constexpr float margin = 0.03f, corner = 0.21f;
constexpr float capHeight = 0.60f, baseline = 0.80f;
constexpr float streakLine = 0.52f, flarePlace = 0.385f;

// Where the tile is dark: night above, a glow of the north low down, and folded curtains of light.
Rgba sky(float x, float y, bool curtains) {
    const Rgba night = gradient({{0.0f, opaque(0.022f, 0.030f, 0.085f)},
                                 {0.55f, opaque(0.030f, 0.062f, 0.130f)},
                                 {1.0f, opaque(0.020f, 0.105f, 0.130f)}},
                                y);
    if (!curtains) return night;
    Rgba sum = night;
    for (int i = 0; i < 2; i++) {
        const float fold = fractalNoise(x * 2.2f + 0.4f * i, 0.7f * i, 16, 3, 41 + i);
        const float rays = 0.5f + unit(fractalNoise(x * 13 + 2 * fold, 0.3f * i, 64, 3, 61 + i) + 0.3f);
        const float above = 0.60f + 0.11f * i + 0.30f * fold - y;
        const float body = above > 0 ? std::exp(-above / 0.20f) : std::exp(above / 0.015f);
        const Rgba colour =
            mix(opaque(0.03f, 0.34f, 0.30f), opaque(0.22f, 0.08f, 0.42f), smoothstep(0, 0.36f, above));
        sum = sum + colour * (body * rays * (1.15f - 0.35f * i));
    }
    return sum;
}

Rgba gold(float height, float inside, float bevel) {
    const Rgba face = gradient({{0.0f, opaque(0.52f, 0.22f, 0.04f)},
                                {0.42f, opaque(0.90f, 0.54f, 0.16f)},
                                {0.50f, opaque(1, 0.90f, 0.66f)},
                                {0.62f, opaque(0.93f, 0.58f, 0.20f)},
                                {1.0f, opaque(1, 0.84f, 0.50f)}},
                               height);
    return mix(face, opaque(1, 0.93f, 0.74f), 0.5f * bell(inside, bevel));
}

Rgba streak(float x, float y, float thickness, float strength) {
    const float along = x - flarePlace, away = y - streakLine;
    const float tail = bell(along, along < 0 ? 0.19f : 0.29f);
    const float line = tail * (bell(away, thickness) + 0.28f * bell(away, 4 * thickness));
    const float radius = std::hypot(along, away);
    const float star = 0.7f * bell(along, thickness) * std::exp(-std::fabs(away) / 0.07f);
    return (light(1, 0.90f, 0.72f) * (line + star) + light(1, 0.86f, 0.64f) * std::exp(-radius / 0.035f) +
            light(0.60f, 0.30f, 0.09f) * (0.6f * std::exp(-radius / 0.15f))) *
           strength;
}

void paintIcon(int size, const char* path) {
    const bool small = size < 64;
    const float pixels = size;
    LetteringField text(size, size, pixels / 6);
    setText(text,
            {.height = capHeight * pixels,
             .weight = small ? 0.21f : 0.19f,
             .contrast = small ? 0.36f : 0.55f,
             .gap = 0,
             .pixelAspect = 0.86f},
            {"V", pixels / 2, baseline * pixels, Align::Centre});

    Canvas canvas(size, size);
    paint(canvas, [&](float px, float py, Rgba) {
        const float x = px / pixels, y = py / pixels;
        const float tile = box({x, y}, {0.5f, 0.5f}, {0.5f - margin, 0.5f - margin}, corner) * pixels;
        const float letter = text.at(px, py);
        Rgba seen = sky(x, y, !small);
        seen = seen + light(0.22f, 0.30f, 0.36f) * (outline(tile + 0.5f, 1) * (1 - 0.7f * y));
        const float halo = std::exp(-std::fmax(letter, 0.0f) / (0.05f * pixels));
        seen = seen + light(0.50f, 0.26f, 0.07f) * (0.45f * halo);
        const float height = (baseline - y) / capHeight;
        seen = mix(seen, gold(height, letter / pixels, 0.006f), coverage(letter));
        seen = seen + streak(x, y, std::fmax(0.006f, 0.5f / pixels), small ? 0.75f : 1);
        return seen * coverage(tile);
    });
    saveRgba(canvas, path, Rows::TopFirst);
}

}  // namespace

template <int size>
void makeIcon(const char* path) {
    paintIcon(size, path);
}
template void makeIcon<256>(const char* path);
template void makeIcon<128>(const char* path);
template void makeIcon<64>(const char* path);
template void makeIcon<48>(const char* path);
template void makeIcon<32>(const char* path);
