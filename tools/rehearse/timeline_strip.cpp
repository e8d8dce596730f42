#include "tools/rehearse/timeline_strip.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>

#include "render/screen.h"
#include "script/timeline.h"
#include "tools/times.h"

namespace {

constexpr float left = 12, right = screenWidth - 12;  // pixels, of the timeline
constexpr float margin = 8;                           // around the pane
constexpr float blocksBottom = 24, blocksHeight = 17;
constexpr float waveBottom = 46, waveHeight = 52;
constexpr float ticksBase = 13;   // base line of the times
constexpr int tickEvery = 15000;  // milliseconds
constexpr int barsPerMark = 8;

// One for each row of the programme; the hall keeps its own through the credits and the fade.
constexpr Ink inks[] = {
    {0.49f, 0.70f, 1.00f}, {1.00f, 0.44f, 0.62f}, {1.00f, 0.65f, 0.34f}, {0.86f, 0.32f, 0.50f},
    {0.55f, 0.82f, 0.49f}, {0.38f, 0.78f, 0.84f}, {0.71f, 0.55f, 1.00f}, {0.58f, 0.53f, 0.78f},
    {0.95f, 0.82f, 0.42f}, {0.90f, 0.60f, 0.30f}, {0.78f, 0.68f, 0.38f},
};

constexpr Ink playing = {1.00f, 0.86f, 0.45f};
constexpr Ink quiet = {0.62f, 0.66f, 0.74f};
constexpr Ink looped = {0.45f, 0.95f, 0.75f};

float xAt(double ms, int end) {
    return float(left + (right - left) * ms / end);
}

// As many of the words as have room.
std::string fitting(std::string words, float width) {
    while (!words.empty() && textWidth(helvetica10, words.c_str()) > width) {
        const size_t gap = words.rfind(' ');
        words.resize(gap == std::string::npos ? 0 : gap);
    }
    return words;
}

void drawTicks(int end) {
    for (int ms = 0; ms < end; ms += tickEvery) {
        const float x = std::round(xAt(ms, end));
        const std::string text = minutesAndSeconds(ms / 1000.0);
        if (x + textWidth(helvetica10, text.c_str()) < right)
            write(x, ticksBase, helvetica10, quiet, text.c_str());
    }
}

void drawSegments(const DeskState& state) {
    const auto sheet = programme();
    for (int i = 0; i + 1 < int(sheet.size()); i++) {
        const float x0 = std::round(xAt(sheet[i].begin * 1000.0, state.end));
        const float x1 = std::round(xAt(sheet[i + 1].begin * 1000.0, state.end));
        const bool on = i == entryAt(state.ms);
        fillBox(x0, blocksBottom, x1 - x0 - 1, blocksHeight, segmentInk(i).faded(on ? 0.95f : 0.42f));
        const Ink letters = on ? Ink{0.03f, 0.03f, 0.05f} : Ink{0.93f, 0.94f, 0.97f};
        write(x0 + 4, blocksBottom + 5, helvetica10, letters, fitting(sheet[i].name, x1 - x0 - 6).c_str());
        if (i == state.cut) fillBox(x0 - 3, blocksBottom - 2, 5, blocksHeight + 4, Ink{1, 1, 1});
    }
}

void drawBars(int end) {
    const BarAndBeat first = barAndBeatAt(0);
    for (int bar = first.bar; barStart(bar) < end; bar++) {
        if (barStart(bar) < 0) continue;
        const float x = std::round(xAt(barStart(bar), end));
        const bool mark = bar % barsPerMark == 0;
        fillBox(x, waveBottom, 1, waveHeight, Ink{1, 1, 1, mark ? 0.30f : 0.10f});
    }
}

// Peaks, and the loudness within them, around a middle line; as loud as the whole scale.
void drawWaveform(const std::string& waveform) {
    const float middle = waveBottom + waveHeight / 2;
    for (int column = 0; column < int(waveform.size() / 2); column++) {
        const float x = left + float(column);
        const float scale = waveHeight / 2 / 255;
        const float peak = float(uint8_t(waveform[2 * column])) * scale;
        const float loud = float(uint8_t(waveform[2 * column + 1])) * scale;
        fillBox(x, middle - peak, 1, std::max(2 * peak, 1.0f), Ink{0.42f, 0.56f, 0.78f, 0.55f});
        fillBox(x, middle - loud, 1, std::max(2 * loud, 1.0f), Ink{0.72f, 0.83f, 1.00f, 0.90f});
    }
}

void drawLoop(const DeskState& state) {
    if (!state.loop) return;
    const float x0 = std::round(xAt(state.loop->from, state.end));
    const float x1 = std::round(xAt(state.loop->to, state.end));
    fillBox(x0, waveBottom, x1 - x0, waveHeight, looped.faded(0.20f));
    for (float x : {x0, x1 - 2}) fillBox(x, waveBottom, 2, waveHeight, looped);
    fillBox(x0, waveBottom + waveHeight, x1 - x0, 2, looped);
}

void drawPosition(const DeskState& state) {
    const float top = waveBottom + waveHeight;
    if (state.pointer >= 0) {
        const float x = std::round(xAt(state.pointer, state.end));
        fillBox(x, blocksBottom, 1, top - blocksBottom, Ink{1, 1, 1, 0.55f});
        const std::string text = clockTime(state.pointer);
        const float width = textWidth(helvetica10, text.c_str());
        const float place = std::clamp(x - width / 2, left, right - width);
        fillBox(place - 4, top - 12, width + 8, 14, Ink{0, 0, 0, 0.8f});
        write(place, top - 8, helvetica10, Ink{1, 1, 1}, text.c_str());
    }
    const float x = std::round(xAt(state.ms, state.end));
    fillBox(x - 1, blocksBottom, 3, top - blocksBottom, Ink{0, 0, 0, 0.45f});
    fillBox(x, blocksBottom, 1, top - blocksBottom, playing);
    drawMarker(x + 0.5f, top - 1, 5, playing);
}

}  // namespace

int timelineAt(int x, int y, int end, bool dragged) {
    const bool on = y >= screenHeight - margin - timelineHeight && x >= left - 4 && x <= right + 4;
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

int entryAt(int ms) {
    return int(&programmeAt(float(ms * 0.001)) - programme().data());
}

Ink segmentInk(int entry) {
    return inks[std::clamp(entry, 0, int(std::size(inks)) - 1)];
}

void drawTimeline(const DeskState& state) {
    drawPane(margin - 4, margin - 4, screenWidth - 2 * margin + 8, timelineHeight);
    drawTicks(state.end);
    drawSegments(state);
    drawWaveform(state.waveform);
    drawBars(state.end);
    drawLoop(state);
    drawPosition(state);
}
