#include "tools/rehearse/stem_rows.h"

#include "render/screen.h"
#include "tools/formatted.h"
#include "tools/rehearse/canvas.h"

namespace {

constexpr float rowHeight = 16, gap = 4;  // pixels; gap: between the rows and the waveform
constexpr float nameWidth = 66;

constexpr Ink background = {0.02f, 0.025f, 0.04f, 0.72f};
constexpr Ink heard = {0.93f, 0.94f, 0.97f};
constexpr Ink silent = {0.50f, 0.53f, 0.60f};
constexpr Ink soloed = {1.00f, 0.86f, 0.45f};
constexpr Ink muted = {1.00f, 0.47f, 0.40f};

float rowBottom(size_t row, size_t stems, float bottom) {
    return bottom + float(stems - 1 - row) * rowHeight;
}

}  // namespace

float stemRowsHeight(size_t stems) {
    return stems ? float(stems) * rowHeight + gap : 0;
}

void drawStemRows(const DeskState& state, float left, float bottom) {
    for (size_t i = 0; i < state.stems.size(); i++) {
        const StemState& stem = state.stems[i];
        const float middle = rowBottom(i, state.stems.size(), bottom) + rowHeight / 2;
        const float share = stem.heard ? 1 : 0.3f;
        drawWaveform(stem.waveform, left, middle, rowHeight / 2 - 1, Ink{0.36f, 0.62f, 0.60f, 0.60f * share},
                     Ink{0.62f, 0.90f, 0.86f, 0.90f * share});
    }
}

void drawStemNames(const DeskState& state, float left, float bottom) {
    for (size_t i = 0; i < state.stems.size(); i++) {
        const StemState& stem = state.stems[i];
        const float y = rowBottom(i, state.stems.size(), bottom);
        fillBox(left, y + 1, nameWidth, rowHeight - 2, background);
        const Ink ink = stem.soloed ? soloed : stem.heard ? heard : silent;
        const std::string key = formatted("%zu", i + 1);
        write(left + 4, y + 5, helvetica10, silent, key.c_str());
        const float end = write(left + 14, y + 5, helvetica10, ink, stem.name.c_str());
        if (stem.muted) fillBox(left + 13, y + 8, end - left - 12, 1, muted);
    }
}

int stemAt(int x, int y, size_t stems, float left, float bottom) {
    const float up = float(screenHeight - 1 - y);
    if (float(x) < left || float(x) >= left + nameWidth) return -1;
    for (size_t i = 0; i < stems; i++) {
        const float row = rowBottom(i, stems, bottom);
        if (up >= row && up < row + rowHeight) return int(i);
    }
    return -1;
}
