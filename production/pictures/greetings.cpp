// "greetsit": the greetings, drawn four screens wide and added to the picture while they scroll past, top row
// first. Three blocks of lines, each line as broad as its block, under a sign. A block stands whole in the
// middle of the screen on a beat or between two; it has all but left before the next comes in, and the last
// is gone when the hall fades in.
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
constexpr float signAbove = 54;           // rows from a block to its sign's middle
constexpr float leading = 22;             // rows between two lines of a block

constexpr float columnsPerUnit = width / 8.0f;

using Sign = float (*)(Point place);  // how far outside of it, in rows from its middle
struct Block {
    float middle;   // in units from the picture's own
    float breadth;  // in units: what is less leaves more of the screen between two blocks
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

// The face that the show has met.
float youSign(Point p) {
    const Point side = {std::fabs(p.x), p.y};
    const float head = std::fabs(box(p, {}, {30, 22}, 8)) - 1.8f, eye = circle(side, {12, -5}, 5);
    const float smile = p.y > 5 ? std::fabs(circle(p, {0, -4}, 17)) - 1.6f : 99;
    const float aerial = segment(side, {7, -24}, {16, -36}) - 1.5f;
    return std::fmin(std::fmin(head, eye), std::fmin(smile, aerial));
}

// What crosses the screen's middle on a beat: to a thousandth of a unit, a quarter of a column.
float middleOn(double beat) {
    const double seconds =
        showtime::beatZero.seconds() + beat * 60.0 / showtime::beatsPerMinute - showtime::greetings.seconds();
    return float(-std::round(greetingsAt(float(seconds)) * 1000.0) / 1000);
}

const std::vector<Block> blocks = {
    {middleOn(225), 0.72f, {"hello", "night", "owls"}, owlSign},
    {middleOn(236), 0.78f, {"readers", "of the", "source"}, sourceSign},
    {middleOn(246.5), 0.62f, {"and", "you"}, youSign},
};

Lettering cut(float capHeight) {
    // Small lines get sturdier strokes, so that all lines of a block look alike in weight.
    const float small = unit((120 - capHeight) / 80);
    return {.height = capHeight,
            .weight = mix(0.14f, 0.20f, small),
            .contrast = mix(0.62f, 0.35f, small),
            .pixelAspect = 1.2f * pixelAspect};  // narrow letters, for tall blocks
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

float signAt(const Block& block, float row, float x, float y) {
    const Point place = {(x - columnOf(block.middle)) * pixelAspect, y - row};
    return length(place) < 60 ? coverage(block.sign(place)) : 0;
}

}  // namespace

void makeGreetings(const char* path) {
    LetteringField text(width, height, 20);
    std::vector<float> signRows;
    for (const Block& block : blocks) {
        const float columns = block.breadth * columnsPerUnit;
        float baseline = (top + bottom - stackHeight(block.lines, columns)) / 2;
        signRows.push_back(baseline - signAbove);
        for (const std::string& line : block.lines) {
            const float capHeight = capHeightFor(line, columns);
            baseline += capHeight;
            setText(text, cut(capHeight), {line, columnOf(block.middle), baseline, Align::Centre});
            baseline += leading;
        }
    }
    std::vector<float> sparks;  // columns between two blocks
    for (size_t i = 1; i < blocks.size(); i++)
        sparks.push_back(columnOf((blocks[i - 1].middle + blocks[i].middle) / 2));

    Canvas canvas(width, height, opaque(0, 0, 0));
    paint(canvas, [&](float x, float y, Rgba ground) {
        const float distance = text.at(x, y);
        const float fill = coverage(distance), halo = std::exp(-std::fmax(distance, 0.0f) / 4.5f) * 0.16f;
        const Rgba face =
            mix(opaque(0.98f, 0.96f, 0.90f), opaque(0.86f, 0.74f, 0.50f), (y - top) / (bottom - top));
        Rgba seen = ground + face * (0.92f * fill) +
                    opaque(0.9f, 0.62f, 0.25f) * (halo * (1 - fill) * smoothstep(20, 12, distance));
        for (size_t i = 0; i < blocks.size(); i++)
            seen = seen + opaque(0.86f, 0.66f, 0.36f) * signAt(blocks[i], signRows[i], x, y);
        for (float spark : sparks) seen = seen + sparkAt((x - spark) * pixelAspect, y - (top + bottom) / 2);
        return seen;
    });
    saveRgb(canvas, path, Rows::TopFirst);
}
