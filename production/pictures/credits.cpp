// The four credit cards, each drawn over a quarter of the 4:3 screen with its top row first: a poster that
// says what was done, how many of what it made, and without what, beside one round thing in the hall's two
// lights, orange and blue. Its ground is solid: it is read whoever of the hall's guests stands behind it.
#include <iterator>
#include <string>

#include "production/kit/picture/canvas.h"
#include "production/kit/picture/lettering.h"
#include "production/kit/picture/noise.h"
#include "production/models/models.h"
#include "production/music/score.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

constexpr int size = 512;
constexpr float pixelAspect = 4.0f / 3;
// Lengths are in rows of the picture, which is this many broad.
constexpr float breadth = size * pixelAspect;
// The round thing's middle from the card's outer side; its radius, of which it counts places.
constexpr float emblemAt = 132, emblemRadius = 222;
// The lines' common middle from the card's inner side, and how broad they are.
constexpr float columnAt = 174, columnBreadth = 276;

// The paint at a place of the round thing, from its middle with its radius as 1; `pixel`: a row so.
using Emblem = Rgba (*)(Point p, float pixel);

struct Card {
    const char* role;
    int count;
    const char *noun, *without;
    Emblem emblem;
    bool left;
};

const Rgba sun = opaque(1.0f, 0.52f, 0.10f), ember = opaque(0.80f, 0.20f, 0.05f),
           sky = opaque(0.16f, 0.46f, 0.95f), deep = opaque(0.03f, 0.09f, 0.26f),
           night = opaque(0.015f, 0.022f, 0.045f), paper = opaque(1, 0.94f, 0.80f);

void lay(Rgba& ground, Rgba paint, float outside, float pixel) {
    ground = over(paint * unit(0.5f - outside / pixel), ground);
}

// From the blue light on the left to the orange one on the right.
Rgba inBothLights(float across) {
    return mix(mix(deep, sky, unit(1 - 1.6f * (across + 0.6f))), sun, smoothstep(-0.15f, 0.75f, across));
}

// A clock with a stroke for every effect.
Rgba clock(Point p, float pixel) {
    const float r = length(p);
    Rgba seen = mix(deep, night, unit(r));
    lay(seen, inBothLights(p.x), std::fabs(r - 0.94f) - 0.06f, pixel);
    for (int i = 0; i < 12; i++) {
        const Point mark = turned(p, -2 * pi * i / 12);
        lay(seen, paper,
            box(mark, {0, -0.70f}, {i % 3 == 0 ? 0.055f : 0.038f, i % 3 == 0 ? 0.14f : 0.09f}, 0.02f), pixel);
    }
    lay(seen, sun, segment(p, {}, Point{-0.30f, -0.26f}) - 0.055f, pixel);
    lay(seen, sun, segment(p, {}, Point{0.20f, -0.56f}) - 0.040f, pixel);
    lay(seen, sun, r - 0.10f, pixel);
    return seen;
}

// The mirror ball.
Rgba mirrorBall(Point p, float pixel) {
    constexpr int rows = 13;
    const float bulge = std::sqrt(std::fmax(1 - p.y * p.y, 0.0f));
    const float row = (0.5f + arcSin(std::clamp(p.y, -1.0f, 1.0f)) / pi) * rows,
                middle = std::floor(row) + 0.5f;
    const float mirrors = std::round(1.05f * rows * std::sin(pi * middle / rows)) + 0.5f * (int(row) % 2);
    const float turn = arcSin(std::clamp(p.x / std::fmax(bulge, 0.01f), -1.0f, 1.0f));
    const float column = (turn / pi + 0.5f) * mirrors, between = std::floor(column) + 0.5f;
    const float bright = randomAt(int(column), int(row), 11), cast = randomAt(int(column), int(row), 7);
    Rgba seen = cast < 0.5f + 0.6f * p.x ? mix(ember, sun, bright) : mix(deep, sky, bright);
    if (bright > 0.84f) seen = paper;
    seen = mix(night, seen, (0.35f + 0.65f * bulge * std::cos(turn)) * (0.7f + 0.3f * bright));
    // Joints are as broad everywhere.
    const float joint =
        std::fmin((0.5f - std::fabs(row - middle)) * bulge * pi / rows,
                  (0.5f - std::fabs(column - between)) * bulge * std::cos(turn) * pi / mirrors);
    lay(seen, night, joint - 0.013f, pixel);
    return seen;
}

// The sun that goes down in bands.
Rgba sunset(Point p, float pixel) {
    Rgba seen = mix(opaque(1, 0.80f, 0.30f), opaque(0.88f, 0.16f, 0.10f), unit(0.5f + 0.62f * p.y));
    for (int i = 0; i < 6; i++)
        lay(seen, night, std::fabs(p.y - 0.10f - 0.165f * i) - 0.012f - 0.011f * i, pixel);
    const float hill = 0.75f * (std::fabs(p.x + 0.45f) * 0.8f - p.y + 0.28f),
                second = 0.8f * (std::fabs(p.x - 0.35f) * 0.75f - p.y + 0.48f);
    lay(seen, deep, hill, pixel);
    lay(seen, night, second, pixel);
    return seen;
}

// A record.
Rgba record(Point p, float pixel) {
    const float r = length(p), turn = arcTan(p.x, p.y);
    const float glint = std::pow(std::fabs(std::cos(turn - 0.7f)), 14.0f);
    const float groove = 0.5f + 0.5f * std::cos(r * 2 * pi * 13);
    Rgba seen = opaque(0.035f, 0.04f, 0.055f) + light(0.05f, 0.055f, 0.07f) * groove +
                inBothLights(p.x * 1.5f) * (glint * (0.45f + 0.55f * groove));
    seen.a = 1;
    lay(seen, inBothLights(p.x), std::fabs(r - 0.97f) - 0.03f, pixel);
    lay(seen, sun, r - 0.42f, pixel);
    lay(seen, ember, std::fabs(r - 0.33f) - 0.012f, pixel);
    lay(seen, night, r - 0.06f, pixel);
    return seen;
}

// The music's bars; the first ones lie before bar 0.
const int bars = lastBar - int(std::lround(barAt(showtime::title)));

// Lettering as tall as fills a line of so many rows, but no taller than it is.
Lettering filling(const std::string& text, float height, float weight, float gap, float rows) {
    Lettering style = {
        .height = height, .weight = weight, .contrast = 0.35f, .gap = gap, .pixelAspect = pixelAspect};
    for (int i = 0; i < 3; i++)
        style.height = std::fmin(style.height, style.height * rows / pixelAspect / textWidth(text, style));
    return style;
}

void makeCard(const char* path, const Card& card) {
    const Point emblem = {card.left ? emblemAt : breadth - emblemAt, size / 2.0f};
    const float column = (card.left ? breadth - columnAt : columnAt) / pixelAspect;
    LetteringField text(size, size, 50);
    const auto line = [&](const std::string& words, float height, float weight, float gap, float middle) {
        const Lettering style = filling(words, height, weight, gap, columnBreadth);
        setText(text, style, {words, column, middle + style.height / 2, Align::Centre});
    };
    line(card.role, 48, 0.20f, 0.24f, 86);
    line(std::to_string(card.count), 190, 0.19f, 0.12f, 226);
    line(card.noun, 64, 0.20f, 0.18f, 374);
    line(card.without, 34, 0.20f, 0.26f, 442);

    Canvas canvas(size, size);
    paint(canvas, [&](float x, float y, Rgba) {
        const Point p = {x * pixelAspect, y}, from = (p - emblem) * (1 / emblemRadius);
        const float disc = emblemRadius * (length(from) - 1), letters = text.at(x, y);
        // Smoke behind it all, thick behind the lettering, thin where the card ends within the screen.
        const Point centre = {card.left ? 0 : breadth, size / 2.0f};
        const float ground = box(p, centre, {breadth, size / 2.0f}, 90) * -1.0f;
        Rgba seen = night * (0.90f * smoothstep(0, 110, ground));
        seen = over(inBothLights(from.x) * (0.5f * bell(disc, 16) * smoothstep(0, 60, ground)), seen);
        seen = over(card.emblem(from, 1 / emblemRadius) * coverage(disc), seen);
        seen = over(night * (0.9f * smoothstep(50, 0, letters)), seen);
        return over(mix(paper, sun, smoothstep(0.45f, 1.0f, y / size) * 0.5f) * coverage(letters), seen);
    });
    saveRgba(canvas, path, Rows::TopFirst);
}

}  // namespace

void makeCodeCredit(const char* path) {
    makeCard(path, {"Code", 12, "effects", "and one clock", clock, true});
}
void makeModelsCredit(const char* path) {
    makeCard(path, {"Models", int(std::size(modelProducts)), "meshes", "and no modeller", mirrorBall, false});
}
void makeGraphicsCredit(const char* path) {
    makeCard(path, {"Graphics", int(std::size(pictureProducts)), "pictures", "and no camera", sunset, false});
}
void makeMusicCredit(const char* path) {
    makeCard(path, {"Music", bars, "bars", "and no sample", record, true});
}
