#include "tools/capture/storyboard.h"

#include <algorithm>
#include <cstring>

#include "app/text.h"
#include "render/screen.h"
#include "tools/capture/whole_picture.h"
#include "tools/times.h"

namespace {

constexpr int shrink = 5;  // a cell's pixel is the mean of shrink / 2 = 2.5 by 2.5 of the frame's
constexpr int cellWidth = screenWidth * 2 / shrink;
constexpr int cellHeight = screenHeight * 2 / shrink;
constexpr int margin = 8;        // pixels around cells
constexpr int labelHeight = 20;  // pixels below each, for its time
constexpr int mostColumns = 6;
constexpr uint8_t paper = 18;  // grey levels
constexpr uint8_t ink = 190;

uint8_t* pixelAt(const Image& image, int x, int y) {
    return image.pixels + y * image.stride + x * image.bytesPerPixel;
}

// The mean over the 2.5 x 2.5 pixels that a cell's pixel covers, counted in half pixels: each frame pixel is
// four of them, so 25 samples weigh them by the area they share.
void shrinkPixel(const Picture& picture, int cellX, int cellY, uint8_t* rgb) {
    int sum[3] = {};
    for (int dy = 0; dy < shrink; dy++) {
        const int row = screenHeight - 1 - (cellY * shrink + dy) / 2;
        for (int dx = 0; dx < shrink; dx++) {
            const uint8_t* bgr = &picture[(size_t(row) * screenWidth + (cellX * shrink + dx) / 2) * 4];
            for (int channel = 0; channel < 3; channel++) sum[channel] += bgr[2 - channel];
        }
    }
    for (int channel = 0; channel < 3; channel++) rgb[channel] = sum[channel] / (shrink * shrink);
}

void writeText(const Image& image, int x, int bottom, const char* text) {
    for (; *text; text++) {
        const Glyph glyph = glyphOf(fixed9x15, *text);
        const int rowBytes = (glyph.width + 7) / 8;
        for (int row = 0; row < glyph.height; row++) {
            for (int column = 0; column < glyph.width; column++) {
                if (glyph.rows[row * rowBytes + column / 8] >> (7 - column % 8) & 1)
                    memset(pixelAt(image, x + column, bottom - row), ink, 3);
            }
        }
        x += glyph.width;
    }
}

}  // namespace

Storyboard::Storyboard(int count) : columns(std::min(count, mostColumns)) {
    const int rows = (count + columns - 1) / columns;
    sheet = createImage(margin + columns * (cellWidth + margin),
                        margin + rows * (cellHeight + labelHeight + margin), 3);
    memset(sheet.pixels, paper, size_t(sheet.stride) * sheet.height);
}

Storyboard::~Storyboard() {
    delete[] sheet.pixels;
}

void Storyboard::add(int index, const Picture& picture, double seconds) {
    const int left = margin + index % columns * (cellWidth + margin);
    const int top = margin + index / columns * (cellHeight + labelHeight + margin);
    for (int y = 0; y < cellHeight; y++) {
        for (int x = 0; x < cellWidth; x++) shrinkPixel(picture, x, y, pixelAt(sheet, left + x, top + y));
    }
    writeText(sheet, left, top + cellHeight + labelHeight - 4, minutesAndSeconds(seconds, 2).c_str());
}

bool Storyboard::save(const char* path) const {
    return writeWholePng(path, sheet);
}
