// The four credit cards, each drawn over a quarter of the 4:3 screen with its top row first: a block of
// lettering that says what was done, how many of what it made, and without what, round one thing in the
// hall's two lights, orange and blue. It keeps clear of the screen's edge and of the ball in its middle, and
// its shadow ends within the card.
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

// As many columns and rows as are shown sharpest: what is taken from a smaller level is soft.
constexpr int columns = 512, rows = 256;
// Lengths are in rows of the picture, which is this many broad.
constexpr float breadth = rows * 4.0f / 3, pixelAspect = breadth / columns;
// The block's outer side from the card's, which is the screen's; how broad and how tall it is.
constexpr float outerSide = 34, blockBreadth = 218, blockHeight = 200;
constexpr float emblemRadius = 56, beside = 12;

// The paint at a place of the round thing, from its middle with its radius as 1; `pixel`: a row so.
using Emblem = Rgba (*)(Point p, float pixel);

struct Card {
    const char* role;
    int count;
    const char *noun, *without;
    Emblem emblem;
    bool left;
    // Rows from the card's upper edge, and its size times what stands above.
    float blockTop = 28, size = 1;
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

constexpr int effects = 12;

// A clock with a stroke for every effect.
Rgba clock(Point p, float pixel) {
    const float r = length(p);
    Rgba seen = mix(deep, night, unit(r));
    lay(seen, inBothLights(p.x), std::fabs(r - 0.94f) - 0.06f, pixel);
    for (int i = 0; i < effects; i++) {
        const Point mark = turned(p, -2 * pi * i / effects);
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
    constexpr int belts = 13;
    const float bulge = std::sqrt(std::fmax(1 - p.y * p.y, 0.0f));
    const float row = (0.5f + arcSin(std::clamp(p.y, -1.0f, 1.0f)) / pi) * belts,
                middle = std::floor(row) + 0.5f;
    const float mirrors = std::round(1.05f * belts * std::sin(pi * middle / belts)) + 0.5f * (int(row) % 2);
    const float turn = arcSin(std::clamp(p.x / std::fmax(bulge, 0.01f), -1.0f, 1.0f));
    const float column = (turn / pi + 0.5f) * mirrors, between = std::floor(column) + 0.5f;
    const float bright = randomAt(int(column), int(row), 11), cast = randomAt(int(column), int(row), 7);
    Rgba seen = cast < 0.5f + 0.6f * p.x ? mix(ember, sun, bright) : mix(deep, sky, bright);
    if (bright > 0.84f) seen = paper;
    seen = mix(night, seen, (0.35f + 0.65f * bulge * std::cos(turn)) * (0.7f + 0.3f * bright));
    // Joints are as broad everywhere.
    const float joint =
        std::fmin((0.5f - std::fabs(row - middle)) * bulge * pi / belts,
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

// The music's bars; the first ones lie before bar 0.
const int bars = lastBar - int(std::lround(barAt(showtime::title)));

// The music as it goes round: a stroke for every second bar, of lengths drawn by lot.
Rgba record(Point p, float pixel) {
    constexpr int strokes = bars / 2;
    const float r = length(p), angle = arcTan(p.x, -p.y);
    const float turn = (angle < 0 ? angle + 2 * pi : angle) / (2 * pi) * strokes;
    const float which = std::floor(turn);
    const float loud = 0.1f + 0.9f * randomAt(int(which), 0, 29);
    Rgba seen = night;
    lay(seen, sun, r - 0.30f, pixel);
    lay(seen, night, r - 0.10f, pixel);
    const float across = std::fabs(turn - which - 0.5f) * 2 * pi * r / strokes - 0.030f * (0.6f + 0.6f * r);
    lay(seen, mix(inBothLights(p.x), paper, 0.15f),
        std::fmax(across, std::fabs(r - 0.40f - 0.27f * loud) - 0.02f - 0.27f * loud), pixel);
    return seen;
}

// Lettering as tall as fills a line of so many rows, but no taller than it is: then it is set wider.
Lettering filling(const std::string& text, Lettering style, float line) {
    style.pixelAspect = pixelAspect;
    for (int i = 0; i < 3; i++) {
        const float needed = line / pixelAspect / textWidth(text, style);
        if (needed < 1)
            style.height *= needed;
        else
            style.gap += (1 - 1 / needed) * line / style.height / (text.size() - 1);
    }
    return style;
}

void makeCard(const char* path, const Card& card) {
    const float side = card.left ? outerSide : breadth - outerSide, inwards = card.left ? 1 : -1;
    const float size = card.size, radius = emblemRadius * size;
    const Point emblem = {side + inwards * radius, card.blockTop + radius};
    LetteringField text(columns, rows, 30);
    // Sets a line between two distances from the block's outer side, its baseline so far below the top.
    const auto line = [&](const std::string& words, Lettering style, float from, float to, float below) {
        style.height *= size;
        style = filling(words, style, (to - from) * size);
        setText(text, style,
                {words, (side + inwards * size * (from + to) / 2) / pixelAspect, card.blockTop + size * below,
                 Align::Centre});
        return style.height / size;
    };
    const float column = 2 * emblemRadius + beside;
    const std::string count = std::to_string(card.count);
    const float tall = line(count, {.height = 82, .weight = 0.19f, .contrast = 0.35f, .gap = 0.12f}, column,
                            blockBreadth, 2 * emblemRadius);
    line(card.role, {.height = 26, .weight = 0.20f, .contrast = 0.35f, .gap = 0.24f}, column, blockBreadth,
         2 * emblemRadius - tall - 10);
    line(card.noun, {.height = 42, .weight = 0.20f, .contrast = 0.35f, .gap = 0.18f}, 0, blockBreadth, 166);
    line(card.without, {.height = 22, .weight = 0.20f, .contrast = 0.35f, .gap = 0.26f}, 0, blockBreadth,
         blockHeight);

    Canvas canvas(columns, rows);
    paint(canvas, [&](float x, float y, Rgba) {
        const Point p = {x * pixelAspect, y}, from = (p - emblem) * (1 / radius);
        const float disc = radius * (length(from) - 1), letters = text.at(x, y);
        const Point half = Point{blockBreadth, blockHeight} * (size / 2);
        const float block = box(p, {side + inwards * half.x, card.blockTop + half.y}, half, 20);
        Rgba seen = night * (0.62f * smoothstep(24, -24, block));
        seen = over(night * (0.65f * smoothstep(8, 0, std::fmin(letters, disc))), seen);
        seen = over(inBothLights(from.x) * (0.5f * bell(disc, 3)), seen);
        seen = over(card.emblem(from, 1 / radius) * coverage(disc), seen);
        return over(mix(paper, sun, smoothstep(0.3f, 1.0f, (y - card.blockTop) / (2 * half.y)) * 0.5f) *
                        coverage(letters),
                    seen);
    });
    saveRgba(canvas, path, Rows::TopFirst);
}

}  // namespace

void makeCodeCredit(const char* path) {
    makeCard(path, {"Code", effects, "effects", "and one clock", clock, true});
}
// Below the colossus' face, which looks over it.
void makeModelsCredit(const char* path) {
    makeCard(path, {"Models", int(std::size(modelProducts)), "meshes", "and no modeller", mirrorBall, false,
                    74, 0.78f});
}
void makeGraphicsCredit(const char* path) {
    makeCard(path, {"Graphics", int(std::size(pictureProducts)), "pictures", "and no camera", sunset, false});
}
void makeMusicCredit(const char* path) {
    makeCard(path, {"Music", bars, "bars", "and no sample", record, true});
}
