// "greetsit": the greetings, drawn four screens wide and added to the picture while they scroll past, top row
// first. Four blocks of lines, each line as broad as its block, between two fine rules, the upper one with a
// sign in its middle. A block stands whole in the middle of the screen on the first beat of its bar.
#include <string>
#include <vector>

#include "production/kit/picture/canvas.h"
#include "production/kit/picture/lettering.h"
#include "production/pictures/pictures.h"
#include "script/greetings_scroll.h"

using namespace picture;

namespace {

constexpr int width = 2048, height = 512;
constexpr float pixelAspect = 4.0f / 3;   // a screen is 512 columns and 512 rows of it
constexpr float top = 112, bottom = 426;  // rows between which the blocks stand
constexpr float signRow = 62, lowerRule = 462;
constexpr float leading = 22;  // rows between two lines of a block

constexpr float columnsPerUnit = width / 8.0f;
constexpr float mostColumns = 1.15f * columnsPerUnit;  // of a block, whole on the screen for 1.7 s

using Sign = float (*)(Point place);  // how far outside of it, in rows from its middle
struct Block {
    float middle;  // in units from the picture's own
    std::vector<std::string> lines;
    Sign sign;
};

// An owl's eyes, brows and beak.
float owlSign(Point p) {
    const Point side = {std::fabs(p.x), p.y};
    const float eye = std::fmin(std::fabs(circle(side, {17, 2}, 14)) - 1.6f, circle(side, {17, 2}, 5));
    const float brow = segment(side, {3, -8}, {38, -26}) - 1.8f;
    const float beak = segment(side, {0, 18}, {4.5f, 9}) - 1.8f;
    return std::fmin(std::fmin(eye, brow), beak);
}

// Two angle brackets and a stroke.
float sourceSign(Point p) {
    const Point side = {std::fabs(p.x), p.y};
    const float bracket = std::fmin(segment(side, {18, -18}, {36, 0}), segment(side, {36, 0}, {18, 18}));
    return std::fmin(bracket, segment(p, {7, -20}, {-7, 20})) - 2.2f;
}

// A cogwheel.
float machineSign(Point p) {
    const float turn = arcTan(p.y, p.x), r = length(p);
    const float tooth = 4 * smoothstep(-0.35f, 0.35f, std::cos(10 * turn));
    return std::fmin(std::fabs(r - 18 - tooth) - 1.8f, std::fabs(r - 8) - 1.6f);
}

// The face that the show has met.
float youSign(Point p) {
    const Point side = {std::fabs(p.x), p.y};
    const float head = std::fabs(box(p, {}, {30, 22}, 8)) - 1.8f, eye = circle(side, {12, -5}, 5);
    const float smile = p.y > 5 ? std::fabs(circle(p, {0, -4}, 17)) - 1.6f : 99;
    const float aerial = segment(side, {7, -24}, {16, -36}) - 1.5f;
    return std::fmin(std::fmin(head, eye), std::fmin(smile, aerial));
}

// What crosses the screen's middle on the first beat of a bar: to a thousandth of a unit, a quarter of a
// column.
float middleOn(int bar) {
    const double barSeconds = 60.0 / showtime::beatsPerMinute * showtime::beatsPerBar;
    const double seconds = showtime::beatZero.seconds() + bar * barSeconds - showtime::greetings.seconds();
    return float(-std::round(greetingsAt(float(seconds)) * 1000.0) / 1000);
}

const std::vector<Block> blocks = {
    {middleOn(57), {"greetings", "to all", "night", "owls"}, owlSign},
    {middleOn(59), {"those who", "read", "the source"}, sourceSign},
    {middleOn(61), {"keepers", "of old", "machines"}, machineSign},
    {middleOn(63), {"and", "you"}, youSign},
};

Lettering cut(float capHeight) {
    // Small lines get sturdier strokes, so that all lines of a block look alike in weight.
    const float small = unit((120 - capHeight) / 80);
    return {.height = capHeight,
            .weight = mix(0.14f, 0.20f, small),
            .contrast = mix(0.62f, 0.35f, small),
            .pixelAspect = pixelAspect};
}

float capHeightFor(const std::string& line, float columns) {
    float capHeight = 60;
    for (int i = 0; i < 6; i++) capHeight *= columns / textWidth(line, cut(capHeight));
    return capHeight;
}

float stackHeight(const std::vector<std::string>& lines, float columns) {
    float sum = leading * (lines.size() - 1);
    for (const std::string& line : lines) sum += capHeightFor(line, columns);
    return sum;
}

float columnsFor(const std::vector<std::string>& lines) {
    float low = 20, high = 800;
    for (int i = 0; i < 20; i++) {
        const float columns = (low + high) / 2;
        (stackHeight(lines, columns) < bottom - top ? low : high) = columns;
    }
    return std::fmin(high, mostColumns);
}

// Of a place in units from the picture's middle.
float columnOf(float place) {
    return width / 2 + place * columnsPerUnit;
}

// A four-pointed light, tall and narrow; the place is relative to its middle.
Rgba sparkAt(float x, float y) {
    if (std::fabs(x) > 40 || std::fabs(y) > 170) return {};
    const float tall = bell(x, 1.3f) * std::exp(-std::fabs(y) / 34) * smoothstep(170, 90, std::fabs(y));
    const float wide = bell(y, 1.3f) * std::exp(-std::fabs(x) / 9) * smoothstep(40, 20, std::fabs(x));
    const float core = std::exp(-std::hypot(x, y) / 4) * smoothstep(40, 20, std::hypot(x, y));
    return opaque(1, 0.88f, 0.66f) * (0.9f * tall + 0.7f * wide + 0.8f * core);
}

// The rules over and under a block, tapering outwards, and its sign.
float ornamentAt(const Block& block, float halfColumns, float x, float y) {
    const float aside = std::fabs(x - columnOf(block.middle));
    if (aside > halfColumns) return 0;
    const float thick = 1.7f * (1 - aside / halfColumns) + 0.5f;
    const float upper = aside > 46 ? coverage(std::fabs(y - signRow) - thick) : 0;
    const float lower = coverage(std::fabs(y - lowerRule) - thick);
    const Point place = {(x - columnOf(block.middle)) * pixelAspect, y - signRow};
    return std::fmax(std::fmax(upper, lower), length(place) < 60 ? coverage(block.sign(place)) : 0);
}

}  // namespace

void makeGreetings(const char* path) {
    LetteringField text(width, height, 20);
    for (const Block& block : blocks) {
        const float columns = columnsFor(block.lines);
        float baseline = (top + bottom - stackHeight(block.lines, columns)) / 2;
        for (const std::string& line : block.lines) {
            const float capHeight = capHeightFor(line, columns);
            baseline += capHeight;
            setText(text, cut(capHeight), {line, columnOf(block.middle), baseline, Align::Centre});
            baseline += leading;
        }
    }
    std::vector<float> halves;  // of each block, in columns
    for (const Block& block : blocks) halves.push_back(columnsFor(block.lines) / 2);
    std::vector<float> sparks;  // columns between two blocks
    for (size_t i = 1; i < blocks.size(); i++)
        sparks.push_back(columnOf((blocks[i - 1].middle + blocks[i].middle) / 2));

    // The hall fades in through the last block: it is deeper gold, so that it pales to gold and not to grey.
    const float lastBlock = columnOf((blocks[2].middle + blocks[3].middle) / 2);

    Canvas canvas(width, height, opaque(0, 0, 0));
    paint(canvas, [&](float x, float y, Rgba ground) {
        const float distance = text.at(x, y);
        const float fill = coverage(distance), halo = std::exp(-std::fmax(distance, 0.0f) / 4.5f) * 0.16f;
        const Rgba face =
            mix(opaque(0.98f, 0.96f, 0.90f), opaque(0.86f, 0.74f, 0.50f), (y - top) / (bottom - top));
        const Rgba gold = mix(opaque(1, 0.80f, 0.42f), opaque(1, 0.50f, 0.09f), (y - top) / (bottom - top));
        const Rgba lettering = x > lastBlock ? gold * fill : face * (0.92f * fill);
        Rgba seen = ground + lettering +
                    opaque(0.9f, 0.62f, 0.25f) * (halo * (1 - fill) * smoothstep(20, 12, distance));
        for (size_t i = 0; i < blocks.size(); i++)
            seen = seen + opaque(0.86f, 0.66f, 0.36f) * ornamentAt(blocks[i], halves[i], x, y);
        for (float spark : sparks) seen = seen + sparkAt((x - spark) * pixelAspect, y - (top + bottom) / 2);
        return seen;
    });
    saveRgb(canvas, path, Rows::TopFirst);
}
