#include "tools/rehearse/timeline_strip.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "render/screen.h"
#include "script/timeline.h"
#include "tools/formatted.h"
#include "tools/times.h"

namespace {

constexpr float left = 12, right = screenWidth - 12;  // pixels, of the timeline
constexpr float margin = 8;                           // around the pane
constexpr float blocksBottom = 24, blocksHeight = 17;
constexpr float rowsBottom = 46;              // of the stems and, above them, the waveform
constexpr float rowHeight = 16, rowsGap = 4;  // of a stem; and between them and the waveform
constexpr float nameWidth = 66;               // of a stem
constexpr float waveHeight = 52;
constexpr float ticksBase = 13;   // base line of the times
constexpr int tickEvery = 15000;  // milliseconds
constexpr int barsPerMark = 8;

// One for each row of the programme; the hall keeps its own through the credits and the fade.
constexpr Ink inks[] = {
    {0.49f, 0.70f, 1.00f}, {1.00f, 0.44f, 0.62f}, {1.00f, 0.65f, 0.34f}, {0.86f, 0.32f, 0.50f},
    {0.55f, 0.82f, 0.49f}, {0.38f, 0.78f, 0.84f}, {0.71f, 0.55f, 1.00f}, {0.58f, 0.53f, 0.78f},
    {0.95f, 0.82f, 0.42f}, {0.90f, 0.60f, 0.30f}, {0.78f, 0.68f, 0.38f},
};

constexpr Ink letters = {0.93f, 0.94f, 0.97f};
constexpr Ink silent = {0.50f, 0.53f, 0.60f};

float xAt(double ms, int end) {
    return float(left + (right - left) * ms / end);
}

// As many of the words as have room.
std::string fitting(std::string words, float width) {
    while (!words.empty() && textWidth(helvetica10, words) > width) {
        const size_t gap = words.rfind(' ');
        words.resize(gap == std::string::npos ? 0 : gap);
    }
    return words;
}

void drawTicks(int end) {
    for (int ms = 0; ms < end; ms += tickEvery) {
        const float x = std::round(xAt(ms, end));
        const std::string text = minutesAndSeconds(ms / 1000.0);
        if (x + textWidth(helvetica10, text) < right) write(x, ticksBase, helvetica10, quiet, text);
    }
}

void drawSegments(const DeskState& state) {
    const auto sheet = programme();
    for (int i = 0; i + 1 < int(sheet.size()); i++) {
        const float x0 = std::round(xAt(sheet[i].begin * 1000.0, state.end));
        const float x1 = std::round(xAt(sheet[i + 1].begin * 1000.0, state.end));
        const bool on = i == entryAt(state.ms);
        fillBox(x0, blocksBottom, x1 - x0 - 1, blocksHeight, segmentInk(i).faded(on ? 0.95f : 0.42f));
        const Ink ink = on ? Ink{0.03f, 0.03f, 0.05f} : letters;
        write(x0 + 4, blocksBottom + 5, helvetica10, ink, fitting(sheet[i].name, x1 - x0 - 6));
        if (i == state.cut) fillBox(x0 - 3, blocksBottom - 2, 5, blocksHeight + 4, Ink{1, 1, 1});
    }
}

float rowsHeight(size_t stems) {
    return stems ? float(stems) * rowHeight + rowsGap : 0;
}

// The first one is on top.
float rowBottom(size_t row, size_t stems) {
    return rowsBottom + float(stems - 1 - row) * rowHeight;
}

void drawStems(const DeskState& state) {
    for (size_t i = 0; i < state.stems.size(); i++) {
        const StemState& stem = state.stems[i];
        const float share = stem.heard ? 1 : 0.3f;
        drawWaveform(stem.waveform, left, rowBottom(i, state.stems.size()) + rowHeight / 2, rowHeight / 2 - 1,
                     Ink{0.36f, 0.62f, 0.60f, 0.60f * share}, Ink{0.62f, 0.90f, 0.86f, 0.90f * share});
    }
}

void drawStemNames(const DeskState& state) {
    for (size_t i = 0; i < state.stems.size(); i++) {
        const StemState& stem = state.stems[i];
        const float y = rowBottom(i, state.stems.size());
        fillBox(left, y + 1, nameWidth, rowHeight - 2, paneInk.faded(0.92f));
        const Ink ink = stem.soloed ? marked : stem.heard ? letters : silent;
        write(left + 4, y + 5, helvetica10, silent, formatted("%zu", i + 1));
        const float end = write(left + 14, y + 5, helvetica10, ink, stem.name);
        if (stem.muted) fillBox(left + 13, y + 8, end - left - 12, 1, wrong);
    }
}

float waveBottom(const DeskState& state) {
    return rowsBottom + rowsHeight(state.stems.size());
}

float waveTop(const DeskState& state) {
    return waveBottom(state) + waveHeight;
}

void drawBars(const DeskState& state) {
    const int end = state.end;
    const BarAndBeat first = barAndBeatAt(0);
    for (int bar = first.bar; barStart(bar) < end; bar++) {
        if (barStart(bar) < 0) continue;
        const float x = std::round(xAt(barStart(bar), end));
        const bool mark = bar % barsPerMark == 0;
        fillBox(x, rowsBottom, 1, waveTop(state) - rowsBottom, Ink{1, 1, 1, mark ? 0.30f : 0.10f});
    }
}

void drawLoop(const DeskState& state) {
    if (!state.loop) return;
    const float x0 = std::round(xAt(state.loop->from, state.end));
    const float x1 = std::round(xAt(state.loop->to, state.end));
    const float top = waveTop(state), height = top - rowsBottom;
    fillBox(x0, rowsBottom, x1 - x0, height, looped.faded(0.20f));
    for (float x : {x0, x1 - 2}) fillBox(x, rowsBottom, 2, height, looped);
    fillBox(x0, top, x1 - x0, 2, looped);
}

void drawPosition(const DeskState& state) {
    const float top = waveTop(state);
    if (state.pointer >= 0) {
        const float x = std::round(xAt(state.pointer, state.end));
        fillBox(x, blocksBottom, 1, top - blocksBottom, Ink{1, 1, 1, 0.55f});
        const std::string text = clockTime(state.pointer);
        const float width = textWidth(helvetica10, text);
        const float place = std::clamp(x - width / 2, left, right - width);
        fillBox(place - 4, top - 12, width + 8, 14, Ink{0, 0, 0, 0.8f});
        write(place, top - 8, helvetica10, Ink{1, 1, 1}, text);
    }
    const float x = std::round(xAt(state.ms, state.end));
    fillBox(x - 1, blocksBottom, 3, top - blocksBottom, Ink{0, 0, 0, 0.45f});
    fillBox(x, blocksBottom, 1, top - blocksBottom, marked);
    drawMarker(x + 0.5f, top - 1, 5, marked);
}

}  // namespace

float stripHeight(size_t stems) {
    return timelineHeight + rowsHeight(stems);
}

int timelineAt(int x, int y, int end, bool dragged, size_t stems) {
    const bool on = y >= screenHeight - margin - stripHeight(stems) && x >= left - 4 && x <= right + 4;
    if (!on && !dragged) return -1;
    const double share = std::clamp((x + 0.5 - left) / (right - left), 0.0, 1.0);
    return std::min(int(share * end), end - 1);
}

int cutAt(int x, int y, int end) {
    constexpr float near = 4;  // pixels
    const float up = float(screenHeight - 1 - y);
    if (up < blocksBottom || up >= blocksBottom + blocksHeight) return -1;
    const auto sheet = programme();
    for (int i = 1; i + 1 < int(sheet.size()); i++)
        if (std::fabs(xAt(sheet[i].begin * 1000.0, end) - float(x)) < near) return i;
    return -1;
}

int stemAt(int x, int y, size_t stems) {
    const float up = float(screenHeight - 1 - y);
    if (float(x) < left || float(x) >= left + nameWidth) return -1;
    for (size_t i = 0; i < stems; i++)
        if (up >= rowBottom(i, stems) && up < rowBottom(i, stems) + rowHeight) return int(i);
    return -1;
}

int entryAt(int ms) {
    return int(&programmeAt(float(ms * 0.001)) - programme().data());
}

Ink segmentInk(int entry) {
    return inks[std::clamp(entry, 0, int(std::size(inks)) - 1)];
}

void drawTimeline(const DeskState& state) {
    drawPane(margin - 4, margin - 4, screenWidth - 2 * margin + 8, stripHeight(state.stems.size()));
    drawTicks(state.end);
    drawSegments(state);
    drawWaveform(state.waveform, left, waveBottom(state) + waveHeight / 2, waveHeight / 2,
                 Ink{0.42f, 0.56f, 0.78f, 0.55f}, Ink{0.72f, 0.83f, 1.00f, 0.90f});
    drawStems(state);
    drawBars(state);
    drawLoop(state);
    drawStemNames(state);
    drawPosition(state);
}
