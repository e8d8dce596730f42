#include "tools/capture/video_levels.h"

#include <cstring>

#include "render/screen.h"

namespace {

// Shares of a pixel's brightness.
constexpr float red = 0.2126f, green = 0.7152f, blue = 0.0722f;
constexpr float darkest = 16, brightnesses = 219, noColour = 128, colours = 224;
constexpr float half = 0.5f;  // rounds to the nearest

using Row = uint32_t[screenWidth];

// In loops that a compiler can do for several pixels at once.
void fillBrightness(const Row& row, uint8_t* levels) {
    constexpr float scale = brightnesses / 255;
    for (int x = 0; x < screenWidth; x++) {
        const auto pixel = int32_t(row[x]);
        levels[x] =
            uint8_t(int(float(pixel & 255) * (scale * blue) + float(pixel >> 8 & 255) * (scale * green) +
                        float(pixel >> 16 & 255) * (scale * red) + (darkest + half)));
    }
}

void fillColours(const Row& above, const Row& below, uint8_t* blues, uint8_t* reds) {
    constexpr float scale = colours / 2 / 255 / 4;  // of the sum of four pixels
    constexpr uint32_t two = 0xff00ff;              // blue and red, with room for their sums
    for (int x = 0; x < screenWidth / 2; x++) {
        const uint32_t a = above[2 * x], b = above[2 * x + 1], c = below[2 * x], d = below[2 * x + 1];
        const auto sums = int32_t((a & two) + (b & two) + (c & two) + (d & two));
        const auto greens = int32_t((a >> 8 & 255) + (b >> 8 & 255) + (c >> 8 & 255) + (d >> 8 & 255));
        const float blueSum = float(sums & 0xffff), redSum = float(sums >> 16);
        const float brightness = blueSum * blue + float(greens) * green + redSum * red;
        blues[x] = uint8_t(int((blueSum - brightness) * (scale / (1 - blue)) + (noColour + half)));
        reds[x] = uint8_t(int((redSum - brightness) * (scale / (1 - red)) + (noColour + half)));
    }
}

}  // namespace

void fillVideoLevels(const Picture& picture, std::vector<uint8_t>* levels) {
    constexpr size_t pixels = size_t(screenWidth) * screenHeight;
    levels->resize(pixels * 3 / 2);
    uint8_t* brightness = levels->data();
    uint8_t* blues = brightness + pixels;
    uint8_t* reds = blues + pixels / 4;
    Row rows[2];
    for (int y = 0; y < screenHeight; y += 2) {
        memcpy(rows, &picture[y * sizeof(Row)], sizeof rows);
        for (const Row& row : rows) {
            fillBrightness(row, brightness);
            brightness += screenWidth;
        }
        fillColours(rows[0], rows[1], blues, reds);
        blues += screenWidth / 2;
        reds += screenWidth / 2;
    }
}
