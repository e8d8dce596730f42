// "greetsit": the greetings, drawn four screens wide and added to the picture while they scroll past, top row
// first. They are set as blocks of lines, each line as broad as its block and every block as high as the
// others.
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

const std::vector<std::vector<std::string>> blocks = {
    {"greetings", "to all", "night", "owls"}, {"those who", "stayed", "to the", "end"},
    {"the ones", "who read", "source"},       {"keepers", "of old", "machines"},
    {"Oulu", "Turku", "Tampere", "Utsjoki"},  {"and", "you"},
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
    return high;
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
    std::vector<float> columns;
    float sum = 0;
    for (const auto& lines : blocks) sum += columns.emplace_back(columnsFor(lines));
    const float space = (width - sum) / blocks.size();
    float left = space / 2;
    std::vector<float> sparks;  // columns between two blocks
    for (size_t i = 0; i < blocks.size(); i++) {
        float baseline = top;
        for (const std::string& line : blocks[i]) {
            const float capHeight = capHeightFor(line, columns[i]);
            baseline += capHeight;
            setText(text, cut(capHeight), {line, left, baseline});
            baseline += leading;
        }
        left += columns[i] + space;
        if (i + 1 < blocks.size()) sparks.push_back(left - space / 2);
    }

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
