// "greetsit": the greetings, drawn four screens wide and added to the picture while they scroll past, top row
// first. Four blocks of lines, each line as broad as its block. The picture moves 0.952 of its 8 units a bar,
// and the screen is 2 of them: a block stands whole in the middle of the screen on every second bar.
#include <string>
#include <vector>

#include "production/kit/picture/canvas.h"
#include "production/kit/picture/lettering.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

constexpr int width = 2048, height = 512;
constexpr float pixelAspect = 4.0f / 3;  // a screen is 512 columns and 512 rows of it
constexpr float top = 96, bottom = 416;  // rows between which the blocks stand
constexpr float leading = 22;            // rows between two lines of a block

constexpr float columnsPerUnit = width / 8.0f;
constexpr float mostColumns = 1.7f * columnsPerUnit;  // of a block

// The middle is in units from the picture's own; the bar is the one on whose first beat it crosses the
// screen's.
struct Block {
    float middle;
    std::vector<std::string> lines;
};
const std::vector<Block> blocks = {
    {-2.884f, {"greetings", "to all", "night", "owls"}},  // bar 57
    {-0.979f, {"those who", "read", "the source"}},       // bar 59
    {0.926f, {"keepers", "of old", "machines"}},          // bar 61
    {2.831f, {"and", "you"}},                             // bar 63
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
        for (float spark : sparks) seen = seen + sparkAt((x - spark) * pixelAspect, y - (top + bottom) / 2);
        return seen;
    });
    saveRgb(canvas, path, Rows::TopFirst);
}
