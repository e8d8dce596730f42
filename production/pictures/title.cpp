// "start": the title, revealed from its top row down by the opening's sweep and added to black; bright rows
// send rays towards the viewer. The picture lies on a square that the camera sees from the upper right: the
// screen shows all of its left side and bottom, and cuts the right side and the top off at about 0.83 and
// 0.15.
#include <vector>

#include "production/kit/picture/canvas.h"
#include "production/kit/picture/lettering.h"
#include "production/kit/picture/noise.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

constexpr int size = 1024;
constexpr float pixelAspect = 4.0f / 3;
constexpr float capHeight = 145, baseline = 546, middle = 456;
constexpr float streakLine = baseline - 0.43f * capHeight, flarePlace = 401;
// Row of the horizon, near enough to the word for the sweep to find its reflection as soon as it has passed
// it; below it lies water.
constexpr float shore = 560;

// Northern lights: curtains whose lower hems are bright and whose folds are fine vertical rays. A curtain is
// the same all down its height, so it is worked out once for each column.
struct Curtain {
    float hem;       // row of its lower edge
    float rays;      // strength of the fold here
    float presence;  // 0 where the curtain is gone
};
constexpr int curtainCount = 3;

std::vector<Curtain> curtains() {
    std::vector<Curtain> columns;
    for (int x = 0; x < size; x++) {
        const float u = (x + 0.5f) / size;
        for (int i = 0; i < curtainCount; i++) {
            const float fold = fractalNoise(u * 3 + 0.31f * i, 0.7f * i, 16, 3, 41 + i);
            const float rays = fractalNoise(u * 26 + 3 * fold, 0.2f * i, 64, 4, 61 + i);
            const float presence = fractalNoise(u * 2 + 5, 1.7f * i, 16, 2, 83);
            columns.push_back({330 + 44 * i + 150 * fold, 0.45f + 0.9f * unit(rays + 0.35f),
                               smoothstep(-0.35f, 0.35f, presence)});
        }
    }
    return columns;
}

Rgba aurora(const std::vector<Curtain>& columns, int x, float y) {
    Rgba sum;
    for (int i = 0; i < curtainCount; i++) {
        const Curtain& curtain = columns[x * curtainCount + i];
        const float above = curtain.hem - y;
        const float body = above > 0 ? std::exp(-above / (120 + 60 * curtain.rays)) : std::exp(above / 9);
        const Rgba colour =
            mix(opaque(0.03f, 0.26f, 0.26f), opaque(0.16f, 0.06f, 0.34f), smoothstep(0, 260, above));
        sum = sum + colour * (body * curtain.rays * curtain.presence * (0.95f - 0.2f * i));
        // The sweep starts at the picture's top, so that the first that is seen is the curtains' crown.
        const float crown = bell(y - 112, y < 112 ? 44 : 66) * smoothstep(0.3f, 1.15f, curtain.rays);
        const Rgba tint = i == 0   ? opaque(0.30f, 0.09f, 0.44f)
                          : i == 1 ? opaque(0.06f, 0.22f, 0.46f)
                                   : opaque(0.40f, 0.10f, 0.24f);
        sum = sum + tint * (0.95f * crown * curtain.presence);
    }
    return sum;
}

// Snow on the far fells, and a forest along the shore: the first that the sweep lifts out of the dark is
// where the sky ends.
float fellTop(float x) {
    const float u = x / size;
    const float hills = 74 * bell(u - 0.13f, 0.09f) + 34 * bell(u - 0.40f, 0.07f) +
                        62 * bell(u - 0.66f, 0.10f) + 40 * bell(u - 0.95f, 0.10f);
    return 360 - hills - 26 * fractalNoise(u * 7, 0.5f, 16, 4, 211);
}

// What is left of the day behind the fells: while the sweep crosses it, its rays light the dark half of the
// screen.
Rgba dusk(float x, float y) {
    const float above = fellTop(x) - y, u = x / size;
    return mix(opaque(0.42f, 0.20f, 0.13f), opaque(0.06f, 0.20f, 0.24f), smoothstep(0, 60, above)) *
           (0.7f * std::exp(-std::fmax(above, 0.0f) / 34) * (0.45f + 0.55f * bell(u - 0.42f, 0.22f)));
}

Rgba fells(float x, float y) {
    const float below = y - fellTop(x);
    if (below < -1) return {};
    // Slopes and gullies, lit from the aurora's side.
    const auto relief = [&](float px) {
        const float u = px / size;
        return fractalNoise(u * 13 + 0.012f * below, y / 64, 64, 4, 223) +
               0.5f * ridgedNoise(u * 12, y / 120, 16, 4, 227);
    };
    const float facing = unit(0.40f + 2.6f * (relief(x) - relief(x + 4)) + 0.22f * relief(x));
    const Rgba snow = mix(opaque(0.018f, 0.034f, 0.060f), opaque(0.13f, 0.20f, 0.25f), facing);
    const float rim = std::exp(-std::fmax(below, 0.0f) / 5) * (0.4f + 0.6f * facing);
    return (snow * std::exp(-std::fmax(below, 0.0f) / (34 + 60 * unit(relief(x * 0.2f) + 0.2f))) +
            opaque(0.10f, 0.20f, 0.24f) * (0.5f * rim)) *
           coverage(-below);
}

float forestTop(float x) {
    const float spruce = std::fabs(std::remainder(x + 9 * randomAt(int(x / 11), 0, 233), 11.0f)) / 5.5f;
    const float tall = 10 + 16 * randomAt(int(std::floor(x / 11 + 0.5f)), 1, 233);
    return shore - 10 - 22 * unit(0.5f + fractalNoise(x * 6 / size, 0.3f, 16, 3, 239)) +
           tall * (spruce - 0.6f);
}

// The streak of light that gives the show its name: it comes in from the right, falls over the fells and ends
// in the word, where it flares. The sweep draws it from its far end on, so that its head is where the sweep
// is.
struct Flight {
    float away;  // rows from the nearest place of the streak
    float gone;  // 0 at its far end, 1 in the flare
};

Flight flightAt(Point place) {
    const Point from = {960, 196}, bend = {520, 236}, to = {flarePlace, streakLine};
    const auto at = [&](float k) {
        return from * ((1 - k) * (1 - k)) + bend * (2 * k * (1 - k)) + to * (k * k);
    };
    constexpr int steps = 64;
    Flight nearest = {1e9f, 0};
    Point last = from;
    for (int i = 1; i <= steps; i++) {
        const Point next = at(float(i) / steps);
        const auto square = [](Point p) { return Point{p.x * pixelAspect, p.y}; };
        const Point a = square(last), b = square(next), p = square(place);
        const float k = unit(dot(p - a, b - a) / dot(b - a, b - a)), d = length(p - a - (b - a) * k);
        if (d < nearest.away) nearest = {d, (i - 1 + k) / steps};
        last = next;
    }
    return nearest;
}

Rgba flight(Point place) {
    if (place.y < 150 || place.y > streakLine + 40) return {};
    const Flight near = flightAt(place);
    if (near.away > 60) return {};
    const float strength = mix(0.14f, 1, near.gone * near.gone);
    const float core = bell(near.away, mix(0.9f, 1.9f, near.gone)), sheath = bell(near.away, 7),
                veil = std::exp(-near.away / 11) * smoothstep(60, 40, near.away);
    const Rgba tint = mix(opaque(0.62f, 0.86f, 1), opaque(1, 0.93f, 0.80f), near.gone);
    return tint * (strength * core) +
           opaque(0.14f, 0.36f, 0.58f) * (strength * (0.55f * sheath + 0.25f * veil));
}

// Letters cut like a wedge into gold: every side of a stroke catches the light of its own direction.
Rgba gold(const LetteringField& text, int x, int y) {
    const float facing = bevelFacing(text, x, y, pixelAspect);
    const float height = unit((baseline - y) / capHeight);
    const float glance = bell(height - 0.43f, 0.16f);
    static const std::vector<Stop> wedge = {{0, opaque(0.20f, 0.065f, 0.008f)},
                                            {0.5f, opaque(0.78f, 0.40f, 0.09f)},
                                            {1, opaque(1, 0.86f, 0.56f)}};
    const float lightness = unit(0.40f + 0.72f * facing + 0.32f * glance);
    const float rim = outline(text.at(x, y) + 1.2f, 1.8f);
    return mix(gradient(wedge, lightness), opaque(1, 0.80f, 0.46f), 0.55f * rim);
}

Rgba streak(float x, float y) {
    const float along = (x - flarePlace) / size, away = y - streakLine;
    const float tail = bell(along, along < 0 ? 0.19f : 0.27f);
    const float line = tail * (bell(away, 1.0f) + 0.20f * bell(away, 7));
    const float radius = std::hypot((x - flarePlace) * pixelAspect, away);
    const float star = 0.5f * bell((x - flarePlace) * pixelAspect, 1.2f) * std::exp(-std::fabs(away) / 34);
    return opaque(1, 0.88f, 0.68f) * (line + star) + opaque(1, 0.84f, 0.60f) * std::exp(-radius / 13) +
           opaque(0.55f, 0.26f, 0.07f) * (0.5f * std::exp(-radius / 60));
}

void addStars(Canvas& canvas) {
    for (int i = 0; i < 760; i++) {
        const float x = 6 + randomAt(i, 0, 5) * (size - 12), y = 6 + randomAt(i, 1, 5) * 420;
        const float brightness = 0.12f + 0.80f * std::pow(randomAt(i, 2, 5), 7.0f);
        for (int row = -2; row <= 2; row++) {
            for (int column = -2; column <= 2; column++) {
                const int px = int(x) + column, py = int(y) + row;
                const float away = std::hypot((px + 0.5f - x) * pixelAspect, py + 0.5f - y);
                canvas.at(px, py) =
                    canvas.at(px, py) + opaque(0.75f, 0.85f, 1) * (brightness * bell(away, 0.85f));
            }
        }
    }
}

// What stands above the shore, mirrored in water that breaks it up the more the nearer it comes.
Rgba mirrored(const Canvas& canvas, float x, float y) {
    const float depth = y - shore, near = depth / (size - shore);
    const float wave = fractalNoise(x * 5 / size, depth / (9 + 26 * near), 64, 3, 97);
    const float chop = fractalNoise(x * 9 / size, depth / (8 + 14 * near), 64, 2, 131);
    // Drawn together below the fells, so that the sky lies in all of its foot.
    const float drawn = depth * 1.3f + 70 * smoothstep(150, 210, depth) - 118 * smoothstep(210, 406, depth);
    const float from = shore - drawn + (5 + 24 * near) * wave;
    const Rgba seen = sampled(canvas, x + (2 + 18 * near) * chop, std::fmin(from, shore - 1));
    // The water deepens a light's colour and glitters in columns: the sweep throws both towards the viewer as
    // rays.
    const Rgba deep = opaque(0.86f, 0.50f, 0.20f) * (0.3f * seen.r + 0.59f * seen.g + 0.11f * seen.b);
    const float dash = fractalNoise(x * 60 / size, depth / (1.5f + 4 * near), 64, 2, 149);
    const float column = fractalNoise(x * 40 / size, 0.4f, 64, 3, 151);
    const float glitter = smoothstep(0.20f, 0.60f, dash) * smoothstep(0.0f, 0.45f, column);
    const float golden = mix(0.25f, 0.6f, near) * smoothstep(-0.02f, 0.08f, seen.r - seen.b);
    const Rgba lit = mix(seen * mix(0.85f, 1.2f, near), deep, golden) * (0.95f + 0.75f * chop) +
                     opaque(0.24f, 0.17f, 0.09f) * (glitter * smoothstep(0.02f, 0.2f, near));
    return lit * smoothstep(1.2f, 0.9f, near);
}

}  // namespace

void makeTitle(const char* path) {
    LetteringField text(size, size, 60);
    setText(
        text,
        {.height = capHeight, .weight = 0.155f, .contrast = 0.56f, .gap = 0.145f, .pixelAspect = pixelAspect},
        {"Valojuova", middle, baseline, Align::Centre});
    LetteringField subtitle(size, size, 28);
    setText(subtitle,
            {.height = 21, .weight = 0.16f, .contrast = 0.3f, .gap = 0.95f, .pixelAspect = pixelAspect},
            {"a streak of light", middle, shore + 182, Align::Centre});

    const std::vector<Curtain> columns = curtains();
    Canvas canvas(size, size, opaque(0, 0, 0));
    addStars(canvas);
    paint(canvas, [&](float x, float y, Rgba sky) {
        const int px = int(x), py = int(y);
        const float distance = text.at(px, py), fill = coverage(distance);
        const float halo = 0.26f * std::exp(-std::fmax(distance, 0.0f) / 12) * smoothstep(60, 36, distance);
        const float land = coverage(fellTop(x) - y);
        Rgba seen = (sky + aurora(columns, px, y) * 1.25f + dusk(x, y)) * (1 - land) + fells(x, y);
        seen = seen * ((1 - coverage(forestTop(x) - y)) * smoothstep(0, 0.26f, x / size)) + flight({x, y});
        seen = seen * (1 - 0.7f * smoothstep(40, 0, distance)) + opaque(1, 0.55f, 0.18f) * halo;
        if (fill > 0) seen = mix(seen, gold(text, px, py), fill);
        seen = seen + streak(x, y) * (1 - 0.35f * fill);
        const float mist = std::exp(-std::fabs(y - shore) / 5) * bell((x - middle) / size, 0.30f);
        return seen + opaque(0.20f, 0.22f, 0.24f) * (0.6f * mist);
    });
    const Canvas above = canvas;
    paint(canvas, [&](float x, float y, Rgba seen) {
        const float letters = subtitle.at(x, y);
        if (y > shore)
            seen = mix(mirrored(above, x, y) * (1 - 0.7f * smoothstep(28, 0, letters)),
                       opaque(0.88f, 0.72f, 0.50f), coverage(letters));
        const float side = smoothstep(0, 0.06f, std::fmin(x, size - x) / size);
        return seen * (side * smoothstep(0, y < shore ? 0.06f : 0.05f, std::fmin(y, size - y) / size));
    });
    saveRgb(canvas, path, Rows::TopFirst);
}
