#include "tools/rehearse/desk.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <sstream>

#include "app/clock.h"
#include "render/screen.h"
#include "script/show_times.h"
#include "script/timeline.h"
#include "tools/formatted.h"
#include "tools/rehearse/canvas.h"
#include "tools/rehearse/timeline_strip.h"
#include "tools/times.h"

namespace {

constexpr size_t problemLines = 12, shownLines = 6;
constexpr float lineHeight = 15;

constexpr float barTop = screenHeight - 4;  // of the pane at the top
constexpr float barHeight = 52;
constexpr float upperLine = barTop - 21, lowerLine = barTop - 42;

std::string rowName(int ms) {
    return programme()[entryAt(ms)].name;
}

std::string bounds(int ms) {
    const int row = entryAt(ms);
    const auto sheet = programme();
    const auto rounded = [](float seconds) { return int(std::lround(seconds * 1000)); };
    if (row + 1 == int(sheet.size())) return clockTime(rounded(sheet[row].begin)) + " - ";
    return clockTime(rounded(sheet[row].begin)) + " - " + clockTime(rounded(sheet[row + 1].begin));
}

// Four beats of the bar, the one that is on lit as bright as the pulse.
void drawBeats(float x, float y, const DeskState& state) {
    const int on = barAndBeatAt(state.ms).beat;
    for (int beat = 1; beat <= 4; beat++, x += 12) {
        const float level = beat == on ? 0.45f + 0.55f * std::min(state.pulse, 1.0f) : 0.16f;
        fillBox(x, y, 9, 9, (beat == on ? marked : bright).faded(level));
    }
}

// A line for each side, from -40 dBTP up to 0, and a stroke where the most of the last seconds was. What
// comes near full scale is red: a codec or a player may clip it.
void drawPeaks(float x, float y, float width, const Level& level) {
    constexpr float least = -40, near = -1;
    const auto at = [&](float peak) { return std::clamp((peak - least) / -least, 0.0f, 1.0f) * width; };
    fillBox(x, y, width, 9, bright.faded(0.12f));
    fillBox(x, y, at(level.right), 4, level.right > near ? wrong : looped);
    fillBox(x, y + 5, at(level.left), 4, level.left > near ? wrong : looped);
    fillBox(x + at(level.held) - 1, y, 2, 9, level.held > near ? wrong : bright);
}

// Loudness above the peaks' meter.
void drawLevel(float x, const std::optional<Level>& level) {
    const bool sounds = level && level->loudness > -70;
    const std::string loudness = sounds ? formatted("%.1f", level->loudness) : "-";
    constexpr float meter = 66, figures = 104, units = 109;
    writeRight(x + figures, upperLine, helvetica18, sounds ? bright : quiet, loudness);
    write(x + units, upperLine, helvetica12, quiet, "LUFS");
    drawPeaks(x, lowerLine, meter, level.value_or(Level{}));
    const std::string held = level && level->held > -99 ? formatted("%.1f", level->held) : "-";
    writeRight(x + figures, lowerLine, helvetica12, level && level->held > -1 ? wrong : plain, held);
    write(x + units, lowerLine, helvetica12, quiet, "dBTP");
}

void drawBar(const DeskState& state) {
    drawPane(4, barTop - barHeight, screenWidth - 8, barHeight);
    write(16, upperLine, helvetica18, bright, clockTime(state.ms));
    const BarAndBeat place = barAndBeatAt(state.ms);
    const float end = write(16, lowerLine, helvetica12, plain, formatted("bar %d", place.bar));
    drawBeats(std::max(end + 8, 72.0f), lowerLine, state);

    drawLevel(136, state.level);

    write(294, upperLine, helvetica18, segmentInk(entryAt(state.ms)), rowName(state.ms));
    write(294, lowerLine, helvetica12, plain, bounds(state.ms));

    write(428, upperLine, helvetica12, quiet, "pulse");
    write(470, upperLine, helvetica12, plain, formatted("%.2f", state.pulse));
    fillBox(428, lowerLine, 68, 9, bright.faded(0.12f));
    fillBlend(428, lowerLine, 68 * std::min(state.pulse, 1.0f), 9, marked.faded(0.5f), marked);

    write(512, upperLine, helvetica12, quiet, "Q");
    write(526, upperLine, helvetica12, plain, formatted("%d", state.counterQ));
    write(512, lowerLine, helvetica12, quiet, "A");
    write(526, lowerLine, helvetica12, plain, formatted("%d", state.counterA));

    if (state.held) write(562, upperLine, helvetica12, marked, "held");
    if (state.loop)
        write(562, lowerLine, helvetica12, looped,
              "loop " + clockTime(state.loop->from) + " - " + clockTime(state.loop->to));
    if (state.held) {
        writeRight(screenWidth - 16, upperLine, helvetica12, state.exact ? plain : quiet,
                   formatted("frame %d", nearestFrame(state.ms)));
        return;
    }
    writeRight(screenWidth - 16, upperLine, helvetica12, plain,
               formatted("%.0f frames/s", state.framesPerSecond));
    writeRight(screenWidth - 16, lowerLine, helvetica12, plain,
               formatted("%.1f ms", state.millisecondsPerFrame));
}

// Those of the texts, broken where they are longer than `width` pixels.
std::vector<std::string> linesOf(const std::vector<std::string>& texts, float width) {
    const size_t letters = size_t(width / textWidth(fixed8x13, "m"));
    std::vector<std::string> lines;
    for (const std::string& each : texts) {
        std::istringstream text(each);
        for (std::string line; std::getline(text, line);) {
            for (; line.size() > letters; line.insert(0, "  ")) {
                const size_t gap = line.find_last_of(' ', letters);
                const bool words = gap != std::string::npos && gap > letters / 2;
                lines.push_back(line.substr(0, words ? gap : letters));
                line.erase(0, words ? gap + 1 : letters);
            }
            lines.push_back(line);
        }
    }
    return lines;
}

// Upwards from `y`; returns where the next thing goes.
float drawProblems(float y, float right, const std::vector<std::string>& problems) {
    std::vector<std::string> lines = linesOf(problems, right - 30);
    if (lines.empty()) return y;
    if (lines.size() > problemLines) {
        lines.resize(problemLines);
        lines.back() = "...";
    }
    const float height = lineHeight * float(lines.size()) + 12;
    drawPane(4, y, right - 4, height);
    fillBox(4, y, 4, height, wrong);
    float line = y + height - 17;
    for (const std::string& text : lines) {
        write(18, line, fixed8x13, wrong, text);
        line -= lineHeight;
    }
    return y + height + 6;
}

// The last of them, the very last one at `y`; returns where the next thing goes.
float drawLines(float y, float right, const std::vector<std::string>& texts, bool work) {
    const std::vector<std::string> lines = linesOf(texts, right - 24);
    for (size_t i = 0; i < std::min(lines.size(), shownLines); i++) {
        const std::string& text = lines[lines.size() - 1 - i];
        fillBox(4, y, textWidth(fixed8x13, text) + 20, lineHeight, paneInk.faded(0.9f));
        write(14, y + 4, fixed8x13, work ? marked : plain.faded(1 - 0.12f * float(i)), text);
        y += lineHeight;
    }
    return y;
}

void drawHelp() {
    static const char* const rows[][2] = {
        {"p", "hold and go on"},
        {", .", "one frame back, on"},
        {"Left Right", "one second back, on"},
        {"Down Up", "five seconds back, on"},
        {"PgUp PgDn", "thirty seconds back, on"},
        {"Home", "to the start, or the loop's"},
        {"l", "loop this segment"},
        {"n", "the numbers of what is drawn"},
        {"wheel, drag", "turn the number under the mouse"},
        {"arrows", "in that list: choose, and turn"},
        {"Enter", "write the number into its source"},
        {"Ctrl+Z Ctrl+Y", "undo, redo"},
        {"c", "before and after"},
        {"Shift and drag", "loop a part of the timeline"},
        {"drag a cut", "move it, by beats; with Shift freely"},
        {"m", "show the stems, or hide them"},
        {"1 2 ..", "mute a stem; Shift: solo it"},
        {"0", "hear all stems"},
        {"Space", "tap the beat"},
        {"q w, a s", "the counters Q and A"},
        {"F11", "screenshot"},
        {"Tab", "hide or show the desk"},
        {"Esc", "close the list, end the loop, then the rehearsal"},
    };
    constexpr float width = 390, rowHeight = 17;
    const float height = rowHeight * std::size(rows) + 20;
    const float x = (screenWidth - width) / 2, y = (screenHeight - height) / 2 + 20;
    fillBox(x, y, width, height, Ink{0, 0, 0, 0.7f});
    drawPane(x, y, width, height);
    float line = y + height - 24;
    for (const auto& [key, meaning] : rows) {
        writeRight(x + 112, line, helvetica12, marked, key);
        write(x + 128, line, helvetica12, bright, meaning);
        line -= rowHeight;
    }
}

}  // namespace

BarAndBeat barAndBeatAt(int ms) {
    MusicClock clock;
    clock.currentTime = float(ms * 0.001);
    const int beat = int(std::floor(clock.beatPosition()));
    const int bar = int(std::floor(double(beat) / showtime::beatsPerBar));
    return {bar, beat - showtime::beatsPerBar * bar + 1};
}

double barStart(int bar) {
    return showtime::beatZero.ms + bar * showtime::beatsPerBar * 60000.0 / showtime::beatsPerMinute;
}

std::string clockTime(int ms) {
    return minutesAndSeconds(ms / 1000.0, 3);
}

std::string describe(const DeskState& state) {
    const BarAndBeat place = barAndBeatAt(state.ms);
    std::string text = formatted("now: %.6f\n", steadySeconds());
    text += formatted("time: %d\nbar: %d\nbeat: %d\n", state.ms, place.bar, place.beat);
    text += "segment: " + rowName(state.ms) + "\nbounds: " + bounds(state.ms) + "\n";
    text +=
        formatted("held: %d\nexact: %d\npulse: %.3f\n", state.held, state.held && state.exact, state.pulse);
    text += formatted("frames a second: %.1f\nmilliseconds a frame: %.2f\n", state.framesPerSecond,
                      state.millisecondsPerFrame);
    text += formatted("Q: %d\nA: %d\n", state.counterQ, state.counterA);
    if (state.loop) text += formatted("loop: %d %d\n", state.loop->from, state.loop->to);
    for (const std::string& work : state.working) text += "working: " + work + "\n";
    for (const std::string& number : state.numbers) text += "number: " + number + "\n";
    for (const std::string& number : state.turned) text += "turned: " + number + "\n";
    if (!state.chosen.empty()) text += "chosen: " + state.chosen + "\n";
    if (state.level)
        text += formatted("loudness: %.2f\npeaks: %.2f %.2f\nheld peak: %.2f\n", state.level->loudness,
                          state.level->left, state.level->right, state.level->held);
    for (const StemState& stem : state.stems)
        text += "stem: " + stem.name + (stem.muted ? ", muted" : "") + (stem.soloed ? ", soloed" : "") +
                (stem.heard ? "" : ", not heard") + "\n";
    for (const std::string& message : state.messages) text += "message: " + message + "\n";
    for (const std::string& problem : state.problems) {
        std::istringstream lines(problem);
        for (std::string line; std::getline(lines, line);) text += "problem: " + line + "\n";
    }
    return text;
}

void drawDesk(const DeskState& state, float right) {
    beginCanvas();
    drawBar(state);
    drawTimeline(state);
    float above = drawProblems(stripHeight(state.stems.size()) + 10, right, state.problems);
    above = drawLines(above, right, state.working, true);
    drawLines(above, right, state.messages, false);
    if (state.help) drawHelp();
    endCanvas();
}
