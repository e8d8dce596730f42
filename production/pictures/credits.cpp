// The four credit cards, each drawn over a quarter of the 4:3 screen with its top row first: a wheel that
// says what was done, how many of what it made, counted out in marks round its rim, and without what. From
// white to gold as the greetings are, on smoked glass that is darkest behind the lettering: it is read, and
// the guests of the hall stay to be seen.
#include <iterator>
#include <string>

#include "production/kit/picture/canvas.h"
#include "production/kit/picture/lettering.h"
#include "production/models/models.h"
#include "production/music/score.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

constexpr int size = 512;
constexpr float pixelAspect = 4.0f / 3;
// A card is a wheel; lengths in rows of one that is as tall as its quarter, places from its middle. It lies
// in the quarter's outer corner and all but fills it.
constexpr float cardSize = 0.98f, corner = 20.5f;  // of that; rows from the quarter's sides
constexpr float wheelRadius = 238, marksRadius = 208, marksReach = 22, hubRadius = 182, lineRadius = 156;
constexpr float figureHeight = 124, figureLine = 6, nounHeight = 46, nounLine = 62, lineHeight = 30;

// How far a place is outside of mark `i` of `count` on the wheel's rim.
using Mark = float (*)(int i, int count, Point place);

struct Card {
    const char* role;
    int count;
    const char *noun, *without;
    Mark mark;
    bool left, high;
};

// A place from the middle of mark `i`, the first of which is at the top; upright, or with its top outward.
Point fromMark(int i, int count, Point place) {
    return place - turned(Point{0, -marksRadius}, 2 * pi * i / count);
}
Point outward(int i, int count, Point place) {
    return turned(place, -2 * pi * i / count) + Point{0, marksRadius};
}

// The music's bars; the first ones lie before bar 0.
const int firstBar = int(std::lround(barAt(showtime::title))), bars = lastBar - firstBar;

// A clock for every effect, each a step further round.
float clockMark(int i, int count, Point place) {
    const Point p = fromMark(i, count, place);
    const float radius = length(p), turn = arcTan(p.x, -p.y);
    const float gone = 2 * pi * (i == 0 ? count : i) / count;
    const float wedge = (turn < 0 ? turn + 2 * pi : turn) < gone ? radius - 16.5f : 99;
    return std::fmin(wedge, std::fabs(radius - 22.0f) - 1.7f);
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
    // The jellyfish.
    [](Point p) {
        const float lobes = 2.5f * std::cos(p.x * 2 * pi / 10);
        const float bell = std::fmax(length(Point{p.x, p.y + 3}) - 24, p.y + 3 - lobes);
        const float wave = 3 * std::sin((p.y + 3) * 0.25f);
        const float threads = lined(std::remainder(p.x - 5 - wave, 10.0f), 3);
        return either(bell, std::fmax(threads, box({p.x - wave, p.y}, {0, 10}, {17, 17})));
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
    constexpr float part = 0.78f;
    return part * meshSigns[i % int(std::size(meshSigns))](fromMark(i, count, place) * (1 / part));
}

// Pictures round a drum, each with a hill in it, over which from one to the next the sun climbs.
float frameMark(int i, int count, Point place) {
    const Point p = outward(i, count, place);
    const float inside = box(p, {}, {19.5f, 24}, 2);
    const float hill = std::fmax(0.8f * (std::fabs(p.x + 6) * 0.7f - p.y + 8), inside + 3);
    const float sun = length(p - Point{-3, 12 - 26.0f * i / count}) - 4.5f;
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
    const float tall = marksReach * (full - ((bar + 16) % 8 == 7 ? 0.12f : 0.03f * (i % 4)));
    return box(outward(i, count, place), {}, {3.2f, std::fmax(tall, 2.0f)}, 1);
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

// A line of text bent round the wheel: over its top, or under its foot with the letters upright.
struct Bent {
    static constexpr float detail = 3;  // pixels a row
    LetteringField field{int(2 * pi * lineRadius * detail) + 1, int(3 * lineHeight * detail), 10 * detail};
    bool foot;

    Bent(const char* text, bool foot) : foot(foot) {
        setText(field, {.height = lineHeight * detail, .weight = 0.19f, .contrast = 0.30f, .gap = 0.34f},
                {text, field.width / 2.0f, 2 * lineHeight * detail, Align::Centre});
    }
    float at(Point p) const {
        const float up = (length(p) - lineRadius) * (foot ? -1 : 1), turn = arcTan(p.x, foot ? p.y : -p.y);
        const float x = field.width / 2.0f + turn * lineRadius * detail;
        const float y = (1.5f * lineHeight - up) * detail;
        if (x < 0 || y < 0 || x >= field.width || y >= field.height) return 10;
        return field.at(x, y) / detail;
    }
};

// How much of a pixel lies within a shape of the card.
float inked(float distance) {
    return coverage(distance * cardSize);
}

void makeCard(const char* path, const Card& card) {
    constexpr float inwards = wheelRadius * cardSize + corner;
    const Point middle = {card.left ? inwards : size * pixelAspect - inwards,
                          card.high ? inwards : size - inwards};
    const float column = middle.x / pixelAspect;
    LetteringField text(size, size, 16);
    setText(text, cut(figureHeight * cardSize, 0.15f, 0.14f),
            {std::to_string(card.count), column, middle.y + figureLine * cardSize, Align::Centre});
    setText(text, filling(card.noun, cut(nounHeight * cardSize, 0.17f, 0.20f), 212 * cardSize / pixelAspect),
            {card.noun, column, middle.y + nounLine * cardSize, Align::Centre});
    const Bent role(card.role, false), missing(card.without, true);

    Canvas shape(size, size);
    paint(shape, [&](float x, float y, Rgba) {
        const Point p = (Point{x * pixelAspect, y} - middle) * (1 / cardSize);
        const float r = length(p);
        float ink = std::fmax(coverage(text.at(x, y)), inked(std::fmin(role.at(p), missing.at(p))));
        if (std::fabs(r - marksRadius) < marksReach + 8)
            for (int i = 0; i < card.count; i++) ink = std::fmax(ink, inked(card.mark(i, card.count, p)));
        // Each part of the card turns to gold towards its foot.
        const float foot = r > hubRadius          ? 0.5f + 0.5f * p.y / wheelRadius
                           : p.y < figureLine + 6 ? (p.y - figureLine) / figureHeight + 1
                                                  : (p.y - nounLine) / nounHeight + 1;
        return mix(opaque(1, 0.985f, 0.94f), opaque(1, 0.85f, 0.54f), unit(foot)) * ink;
    });
    const Canvas shadow = blurred(shape, 7, Edge::Empty);

    // Smoked glass behind all of it, and fine gold rules round the rim and the hub.
    Canvas canvas(size, size);
    paint(canvas, [&](float x, float y, Rgba) {
        const int px = int(x), py = int(y);
        const float r = length(Point{x * pixelAspect, y} - middle) / cardSize;
        const float plate = mix(0.24f, 0.50f, inked(r - hubRadius)) * inked(r - wheelRadius);
        const float near = unit(2.6f * shadow.at(px, py).a) * inked(r - wheelRadius);
        const float dark = 1 - (1 - plate) * (1 - 0.72f * near);
        const float rule = std::fmax(outline(r - wheelRadius + 3, 2.0f), outline(r - hubRadius, 1.6f));
        return over(shape.at(px, py), over(opaque(0.76f, 0.57f, 0.28f) * (0.9f * rule), Rgba{0, 0, 0, dark}));
    });
    saveRgba(canvas, path, Rows::TopFirst);
}

}  // namespace

void makeCodeCredit(const char* path) {
    makeCard(path, {"Code", 12, "effects", "and one clock", clockMark, true, false});
}
void makeModelsCredit(const char* path) {
    makeCard(path,
             {"Models", int(std::size(modelProducts)), "meshes", "and no modeller", meshMark, false, false});
}
void makeGraphicsCredit(const char* path) {
    makeCard(path, {"Graphics", int(std::size(pictureProducts)), "pictures", "and no camera", frameMark,
                    false, true});
}
void makeMusicCredit(const char* path) {
    makeCard(path, {"Music", bars, "bars", "and no sample", barMark, true, true});
}
