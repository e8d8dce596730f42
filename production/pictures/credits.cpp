// The four credit cards, each drawn over a quarter of the 4:3 screen with its top row first: what was done,
// how many of what it made, counted out in marks, and without what. From white to gold as the greetings are,
// on clear ground that darkens round the letters, so that they are read over the hall.
#include <string>

#include "production/forge.h"
#include "production/kit/picture/canvas.h"
#include "production/kit/picture/lettering.h"
#include "production/kit/picture/noise.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

constexpr int size = 512;
constexpr float pi = 3.14159265f;
constexpr float pixelAspect = 4.0f / 3;
constexpr float margin = 28, blockColumns = 372;  // kept clear at the screen's side; what all lines share
constexpr float roleLine = 104, roleHeight = 36;  // rows
constexpr float figureTop = 134, figureHeight = 118, figureLine = figureTop + figureHeight;
constexpr float marksTop = 274, marksHeight = 124, withoutLine = 448, withoutHeight = 38;

// How far a place is outside of mark `i` of `count`; across and down in rows from the marks' upper left.
using Mark = float (*)(int i, int count, Point place);

struct Card {
    const char* role;
    int count;
    const char *noun, *without;
    Mark mark;
    bool leftOfScreen;
};

// The middle of a mark of `count` in `rows` rows, and how far apart they stand.
Point middleOf(int i, int count, int rows, float pitch) {
    const int columns = (count + rows - 1) / rows;
    return {pitch * (i % columns + 0.5f), marksHeight / rows * (i / columns + 0.5f)};
}

constexpr float blockBreadth = blockColumns * pixelAspect;  // in rows, as what follows
constexpr float clockPitch = blockBreadth / 6, polygonPitch = blockBreadth / 8, framePitch = blockBreadth / 8,
                barPitch = blockBreadth / 102;

// A clock for every effect, each a step further round.
float clockMark(int i, int count, Point place) {
    const Point p = place - middleOf(i, count, 2, clockPitch);
    const float radius = length(p), turn = std::atan2(p.x, -p.y);
    const float gone = 2 * pi * (i + 1) / count;
    const float wedge = (turn < 0 ? turn + 2 * pi : turn) < gone ? radius - 21.5f : 99;
    return std::fmin(wedge, std::fabs(radius - 27.5f) - 2.0f);
}

// From the triangle on, one more corner each, cut into facets from the middle.
float polygonMark(int i, int count, Point place) {
    const Point p = place - middleOf(i, count, 2, polygonPitch);
    const float sector = 2 * pi / (i + 3), turn = std::atan2(p.x, -p.y);
    const float toSide = std::remainder(turn - sector / 2, sector), toCorner = std::remainder(turn, sector);
    const float edge = length(p) * std::cos(toSide) - 28 * std::cos(sector / 2);
    return std::fmax(edge, 1.4f - length(p) * std::fabs(std::sin(toCorner)));
}

// Small frames with a hill in each, and a sun that climbs.
float frameMark(int i, int count, Point place) {
    const Point p = place - middleOf(i, count, 3, framePitch);
    const float frame = std::fabs(box(p, {}, {25, 16.5f}, 1)) - 1.6f;
    const float hill = std::fmax(std::fabs(p.x + 6) * 0.8f - p.y + 2, p.y - 15);
    const float sun = length(p - Point{12, 10 - 18.0f * i / count}) - 4.2f;
    const float inside = box(p, {}, {24, 15.5f});
    return std::fmin(frame, std::fmax(std::fmin(hill, sun), inside));
}

// The bars of the music, as tall as the music is full in each part of the show.
float barMark(int i, int, Point place) {
    constexpr float fullness[] = {0.16f, 0.50f, 0.62f, 0.66f, 0.95f, 0.60f, 0.28f,
                                  0.44f, 0.88f, 0.70f, 0.80f, 1.0f,  0.60f, 0.20f};
    const int bar = i - 9, part = bar < -4 ? 0 : bar < 0 ? 1 : 2 + bar / 8;
    const float pitch = barPitch;
    const float tall =
        0.5f * marksHeight * (fullness[part] - ((bar + 16) % 8 == 7 ? 0.12f : 0.03f * (i % 4)));
    const Point p = {place.x - pitch * (i + 0.5f), place.y - marksHeight / 2};
    return box(p, {}, {pitch * 0.29f, std::fmax(tall, 2.0f)}, 1);
}

Lettering cut(float height, float weight, float gap) {
    return {.height = height, .weight = weight, .contrast = 0.45f, .gap = gap, .pixelAspect = pixelAspect};
}

// The same lettering as tall as fills a line of so many columns, but no taller than it is.
Lettering filling(const std::string& text, Lettering style, float columns) {
    for (int i = 0; i < 3; i++)
        style.height = std::fmin(style.height, style.height * columns / textWidth(text, style));
    return style;
}

void setBlock(LetteringField& text, const Card& card, float left) {
    const std::string figure = std::to_string(card.count);
    const Lettering tall = cut(figureHeight, 0.15f, 0.14f);
    const float beside = textWidth(figure, tall) + 20;
    setText(text, cut(roleHeight, 0.16f, 0.40f), {card.role, left, roleLine});
    setText(text, tall, {figure, left, figureLine});
    setText(text, filling(card.noun, cut(figureHeight, 0.16f, 0.16f), blockColumns - beside),
            {card.noun, left + beside, figureLine});
    setText(text, filling(card.without, cut(withoutHeight, 0.18f, 0.26f), blockColumns),
            {card.without, left, withoutLine});
}

void makeCard(const char* path, const Card& card) {
    const float left = card.leftOfScreen ? margin : size - margin - blockColumns;
    LetteringField text(size, size, 16);
    setBlock(text, card, left);

    Canvas shape(size, size);
    paint(shape, [&](float x, float y, Rgba) {
        float ink = coverage(text.at(x, y));
        const Point place = {(x - left) * pixelAspect, y - marksTop};
        if (place.y > -4 && place.y < marksHeight + 4 && place.x > -4 && place.x < blockBreadth + 4)
            for (int i = 0; i < card.count; i++)
                ink = std::fmax(ink, coverage(card.mark(i, card.count, place)));
        // Each part of the card turns to gold towards its foot.
        const float foot = y < figureTop - 12               ? (y - roleLine) / roleHeight + 1
                           : y < marksTop - 6               ? (y - figureTop) / figureHeight
                           : y < marksTop + marksHeight + 4 ? (y - marksTop) / marksHeight
                                                            : (y - withoutLine) / withoutHeight + 1;
        return mix(opaque(1, 0.985f, 0.94f), opaque(0.93f, 0.76f, 0.44f), unit(foot)) * ink;
    });
    const Canvas shadow = blurred(shape, 3, Edge::Empty), air = blurred(shape, 18, Edge::Empty);

    // Dark round every letter and, far wider and fainter, round all of them: nowhere has it an edge.
    Canvas canvas(size, size);
    paint(canvas, [&](float x, float y, Rgba) {
        const int px = int(x), py = int(y);
        const float wide = 0.86f * (1 - std::exp(-6.0f * air.at(px, py).a));
        const float dark = 1 - (1 - wide) * (1 - 0.85f * shadow.at(px, py).a);
        const float border = std::fmin(std::fmin(x, size - x), std::fmin(y, size - y));
        const float grain = (randomAt(px, py, 5) - 0.5f) / 255;
        const float ground = unit(dark * smoothstep(0, 26, border) + (dark > 0.01f ? grain : 0));
        return over(shape.at(px, py), Rgba{0, 0, 0, ground});
    });
    saveRgba(canvas, path, Rows::TopFirst);
}

}  // namespace

void makeCodeCredit(const char* path) {
    makeCard(path, {"Code", 12, "effects", "and one clock", clockMark, true});
}
void makeModelsCredit(const char* path) {
    makeCard(path, {"Models", int(modelProducts.size()), "meshes", "and no modeller", polygonMark, false});
}
void makeGraphicsCredit(const char* path) {
    makeCard(path, {"Graphics", int(pictureProducts.size()), "pictures", "and no camera", frameMark, false});
}
void makeMusicCredit(const char* path) {
    makeCard(path, {"Music", 102, "bars", "and no sample", barMark, true});
}
