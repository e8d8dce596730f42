// The four credit cards, each drawn over a quarter of the 4:3 screen with its top row first: what was done,
// how many of what it made, counted out in marks, and without what. From white to gold as the greetings are,
// on clear ground that darkens round the letters, so that they are read over the hall.
#include <iterator>
#include <string>

#include "production/kit/picture/canvas.h"
#include "production/kit/picture/lettering.h"
#include "production/models/models.h"
#include "production/music/score.h"
#include "production/pictures/pictures.h"
#include "production/shared/wing.h"

using namespace picture;

namespace {

constexpr int size = 512;
constexpr float pixelAspect = 4.0f / 3;
constexpr float margin = 54, blockColumns = 326;  // kept clear at the screen's side; what all lines share
constexpr float roleLine = 98, roleHeight = 30;   // rows
constexpr float figureTop = 124, figureHeight = 112, figureLine = figureTop + figureHeight;
constexpr float plateTop = 30, plateBottom = 482, plateMargin = 44;  // rows; columns beside the block
constexpr float marksTop = 266, marksHeight = 124, withoutLine = 440, withoutHeight = 31;

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
constexpr float clockPitch = blockBreadth / 6, meshPitch = blockBreadth / 8;

// The music's bars; the first ones lie before bar 0.
const int firstBar = int(std::lround(barAt(showtime::title))), bars = lastBar - firstBar;

// A clock for every effect, each a step further round.
float clockMark(int i, int count, Point place) {
    const Point p = place - middleOf(i, count, 2, clockPitch);
    const float radius = length(p), turn = arcTan(p.x, -p.y);
    const float gone = 2 * pi * (i + 1) / count;
    const float wedge = (turn < 0 ? turn + 2 * pi : turn) < gone ? radius - 21.5f : 99;
    return std::fmin(wedge, std::fabs(radius - 27.5f) - 2.0f);
}

// Lines of a width along an edge; what both shapes cover, and what the first covers without the second.
float lined(float distance, float width) {
    return std::fabs(distance) - width / 2;
}
float without(float distance, float cut) {
    return std::fmax(distance, -cut);
}
template <class... Rest>
float either(float first, Rest... rest) {
    ((first = std::fmin(first, rest)), ...);
    return first;
}

// A sign for every mesh, in the order in which they are made; each within 28 rows of its middle.
using Sign = float (*)(Point p);
constexpr Sign meshSigns[] = {
    // The box, here three of them piled up.
    [](Point p) {
        return either(box(p, {4, -16}, {21, 6}, 1), box(p, {-5, 0}, {21, 6}, 1), box(p, {2, 16}, {21, 6}, 1));
    },
    // The ship.
    [](Point p) {
        return polygon(p, {{-28, 0}, {4, -9}, {14, -22}, {26, -22}, {18, 0}, {26, 22}, {14, 22}, {4, 9}});
    },
    // The tunnel, looked into.
    [](Point p) {
        const float r = length(p);
        return either(lined(r - 24, 6), lined(r - 13.5f, 4.5f), r - 5);
    },
    // The robot's body, its arms and its face.
    [](Point p) {
        const Point side = {std::fabs(p.x), p.y};
        const float heart = either(circle(side, {4, -9}, 4.8f), polygon(p, {{-8, -7}, {8, -7}, {0, 3}}));
        return either(without(box(p, {0, -7}, {18, 17}, 5), heart), box(side, {9, 20}, {6, 7}, 1));
    },
    [](Point p) {
        const float claw = std::fmax(lined(length(p - Point{0, -9}) - 13, 7), -p.y - 17);
        return either(claw, box(p, {0, 15}, {5, 12}, 1));
    },
    [](Point p) {
        const Point side = {std::fabs(p.x), p.y};
        const float smile = p.y > 4 ? lined(length(p - Point{0, -3}) - 14, 4.5f) : 99;
        return either(lined(box(p, {}, {26, 21}, 7), 4), circle(side, {10, -5}, 4.6f), smile);
    },
    // The ring.
    [](Point p) {
        return 0.5f * lined(length(Point{p.x, p.y * 2.4f}) - 24, 8);
    },
    // One of the butterflies.
    [](Point p) {
        const auto side = [&](std::span<const wing::Place> outline) {
            std::vector<Point> edge;
            for (const wing::Place& at : wing::curved(outline, 2))
                edge.push_back({float(at.x), -float(at.y)});
            const Point right = {std::fabs(p.x), p.y};
            return polygon(right, edge) + 0.5f;
        };
        const float feeler = lined(length(Point{std::fabs(p.x) - 9, p.y + 11}) - 9, 2);
        return either(side(wing::fore), side(wing::hind), box(p, {0, 0}, {2, 12}, 2),
                      std::fmax(feeler, std::fmax(p.y + 11, std::fabs(p.x) - 9)));
    },
    // The sky.
    [](Point p) {
        const auto star = [](Point q, float size) {
            return 0.5f * (std::pow(std::sqrt(std::fabs(q.x)) + std::sqrt(std::fabs(q.y)), 2.0f) - size);
        };
        return either(star(p - Point{-5, 4}, 24), star(p - Point{16, -15}, 13), star(p - Point{15, 19}, 9));
    },
    // The probe.
    [](Point p) {
        const Point side = {std::fabs(p.x), p.y};
        const float panel = without(box(side, {19, 0}, {8, 14}, 1), lined(p.y, 2.5f));
        return either(panel, box(p, {}, {7, 9}, 2), box(p, {}, {26, 1.5f}), box(p, {0, -17}, {1.6f, 9}));
    },
    // The hall as beams meet it, and as it is seen.
    [](Point p) {
        const float dome = std::fmax(length(p - Point{0, 16}) - 26, box(p, {0, -2}, {30, 20}));
        return lined(dome + 2, 4);
    },
    [](Point p) {
        const float dome = std::fmax(length(p - Point{0, 16}) - 28, box(p, {0, -2}, {30, 22}));
        float doors = 99;
        for (const float x : {-14.0f, 0.0f, 14.0f})
            doors = either(doors, box(p, {x, x == 0 ? 6.0f : 9.0f}, {4, x == 0 ? 15.0f : 12.0f}, 4));
        return without(dome, doors);
    },
    // The stage.
    [](Point p) {
        return either(box(p, {0, 20}, {27, 4}, 1), box(p, {0, 9}, {19, 4}, 1), box(p, {0, -2}, {11, 4}, 1),
                      circle(p, {0, -18}, 8));
    },
    // The ball as beams meet it, and as it is seen.
    [](Point p) {
        const float r = length(p), turn = std::remainder(arcTan(p.x, p.y), pi / 4);
        return either(lined(r * std::cos(turn) - 23, 3.5f),
                      std::fmax(lined(r * std::sin(turn - pi / 8), 2), r - 23));
    },
    [](Point p) {
        const float r = length(p), bulge = std::sqrt(std::fmax(1 - p.y * p.y / 676, 0.05f));
        const float cuts = either(lined(std::remainder(p.y + 4.5f, 9.0f), 2.6f),
                                  lined(std::remainder(p.x / bulge + 4.5f, 9.0f) * bulge, 2.6f));
        return without(r - 26, cuts);
    },
    // The casing.
    [](Point p) {
        return without(box(p, {}, {20, 24}, 3), lined(std::remainder(p.x + 5, 10.0f), 2.8f));
    },
};

float meshMark(int i, int count, Point place) {
    return meshSigns[i % int(std::size(meshSigns))](place - middleOf(i, count, 2, meshPitch));
}

// A hand of pictures, each with a hill in it, over which from one to the next the sun climbs.
float frameMark(int i, int count, Point place) {
    constexpr Point half = {23, 33};
    constexpr float spread = 0.86f, pivot = 520, gap = 2.4f;
    const auto inFrame = [&](int k) {
        const float turn = spread * (k / (count - 1.0f) - 0.5f);
        return turned(place - Point{blockBreadth / 2, half.y + 4 + pivot}, -turn) + Point{0, pivot};
    };
    for (int k = i + 1; k < count; k++)
        if (box(inFrame(k), {}, half, 2) < gap) return 99;
    const Point p = inFrame(i);
    const float inside = box(p, {}, half, 2);
    const float hill = std::fmax(0.8f * (std::fabs(p.x + 8) * 0.7f - p.y + 12), inside + 3);
    const float sun = length(p - Point{-12, 8 - 26.0f * i / count}) - 5;
    return either(lined(inside + 1, 2.2f), hill, sun);
}

// The bars of the music, as tall as the music is full in each part of the show: the title, the ship's first
// bars, and from bar 0 on each eight. Every eighth is lower.
float barMark(int i, int count, Point place) {
    constexpr float fullness[] = {0.16f, 0.50f, 0.62f, 0.66f, 0.95f, 0.60f, 0.28f,
                                  0.44f, 0.88f, 0.70f, 0.80f, 1.0f,  0.60f, 0.20f};
    const int bar = firstBar + i, shipsFirst = int(std::lround(barAt(showtime::tunnel)));
    const int part = bar < shipsFirst ? 0 : bar < 0 ? 1 : 2 + bar / 8;
    const float full = fullness[std::min(part, int(std::size(fullness)) - 1)];
    const float tall = 0.5f * marksHeight * (full - ((bar + 16) % 8 == 7 ? 0.12f : 0.03f * (i % 4)));
    const float pitch = blockBreadth / count;
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

// How far a place is outside of a box whose corners are cut off, `cut` each way.
float cutBox(Point p, Point centre, Point half, float cut) {
    const Point q = {std::fabs(p.x - centre.x) - half.x, std::fabs(p.y - centre.y) - half.y};
    return std::fmax(std::fmax(q.x, q.y), (q.x + q.y + cut) * 0.7071f);
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
    const Canvas shadow = blurred(shape, 3, Edge::Empty);
    const Point middle = {(left + blockColumns / 2) * pixelAspect, (plateTop + plateBottom) / 2};
    const Point half = {(blockColumns / 2 + plateMargin) * pixelAspect, (plateBottom - plateTop) / 2};

    // A plate of smoked glass behind all of it, its corners cut, with a fine gold rule round it.
    Canvas canvas(size, size);
    paint(canvas, [&](float x, float y, Rgba) {
        const int px = int(x), py = int(y);
        const Point place = {x * pixelAspect, y};
        const float edge = cutBox(place, middle, half, 18);
        const float deep = 0.80f - 0.12f * unit((y - plateTop) / (plateBottom - plateTop));
        const float plate = deep * coverage(edge);
        const float dark = 1 - (1 - plate) * (1 - 0.85f * shadow.at(px, py).a * coverage(edge));
        const Rgba rule = opaque(0.76f, 0.57f, 0.28f) * (0.9f * outline(edge + 6, 2.0f));
        return over(shape.at(px, py), over(rule, Rgba{0, 0, 0, dark}));
    });
    saveRgba(canvas, path, Rows::TopFirst);
}

}  // namespace

void makeCodeCredit(const char* path) {
    makeCard(path, {"Code", 12, "effects", "and one clock", clockMark, true});
}
void makeModelsCredit(const char* path) {
    makeCard(path, {"Models", int(std::size(modelProducts)), "meshes", "and no modeller", meshMark, false});
}
void makeGraphicsCredit(const char* path) {
    makeCard(path,
             {"Graphics", int(std::size(pictureProducts)), "pictures", "and no camera", frameMark, false});
}
void makeMusicCredit(const char* path) {
    makeCard(path, {"Music", bars, "bars", "and no sample", barMark, true});
}
