// How the show flashes, by the rule that makers of games test with: how often the picture's mean luminance
// changes by a tenth, or its saturated red by a sixteenth, while at least a quarter of it changes. More than
// six changes in a second fail, and four or more in four of five seconds. Counts, so one run tells.
#include <GL/glew.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <deque>
#include <string>
#include <utility>
#include <vector>

#include "bench/bench.h"
#include "render/screen.h"
#include "script/show_times.h"
#include "script/timeline.h"
#include "tools/capture/stepped_show.h"

namespace {

constexpr int framesPerSecond = 30;
constexpr int cell = 5;  // pixels on a side, whose mean is one place of the picture
constexpr int columns = screenWidth / cell, rows = screenHeight / cell, places = columns * rows;

// Two measures of every place, and what makes a change of each one's mean.
enum Measure { Luminance, Red, measureCount };
constexpr struct {
    const char* name;
    double change;
    double darkest;  // a change counts where its darker side is below
} measures[] = {{"luminance", 0.1, 0.8}, {"red", 20, 321}};
constexpr double redScale = 320, saturated = 0.8;  // red counts as such from that share of all light

using Field = std::array<float, places>;

float linear(double value) {
    return float(value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4));
}

// Of the picture in the back buffer.
std::array<Field, measureCount> measured() {
    static std::vector<uint8_t> pixels(screenWidth * screenHeight * 3);
    static const auto light = [] {
        std::array<float, 256> table;
        for (int i = 0; i < 256; i++) table[i] = linear(i / 255.0);
        return table;
    }();
    glReadPixels(0, 0, screenWidth, screenHeight, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
    std::array<Field, measureCount> fields;
    for (int place = 0; place < places; place++) {
        int sums[3] = {};
        for (int y = 0; y < cell; y++) {
            const int row = place / columns * cell + y, column = place % columns * cell;
            const uint8_t* at = &pixels[(row * screenWidth + column) * 3];
            for (int i = 0; i < cell * 3; i++) sums[i % 3] += at[i];
        }
        const auto of = [&](int channel) { return light[(sums[channel] + cell * cell / 2) / (cell * cell)]; };
        const float r = of(0), g = of(1), b = of(2), all = r + g + b;
        fields[Luminance][place] = 0.2126f * r + 0.7152f * g + 0.0722f * b;
        fields[Red][place] =
            all > 0 && r >= saturated * all ? std::max(0.0f, float(redScale) * (r - g - b)) : 0;
    }
    return fields;
}

// Changes of one measure, frame by frame.
struct Changes {
    Measure measure;
    Field last = {};
    bool begun = false;
    double mean = 0;
    double risen = 0;               // by the steps of one direction, of a second at most:
    std::deque<double> steps = {};  // which those are
    std::deque<bool> hits = {};     // of the last second

    // Takes a frame; returns how many changes the second that ends with it holds.
    int add(const Field& field) {
        double sum = 0;
        int changed = 0;
        for (int i = 0; i < places; i++) sum += field[i], changed += field[i] != last[i];
        const double before = mean;
        mean = sum / places;
        last = field;
        if (!std::exchange(begun, true)) return 0;
        hits.push_back(isChange(changed * 4 >= places ? mean - before : 0, std::min(mean, before)));
        if (hits.size() > framesPerSecond) hits.pop_front();
        return int(std::count(hits.begin(), hits.end(), true));
    }
    bool isChange(double step, double dark) {
        const double was = risen;
        const bool goesOn = (step >= 0) == (was >= 0);
        if (!goesOn) steps.clear(), risen = 0;
        if (steps.size() >= framesPerSecond) {
            risen -= steps.front();
            steps.pop_front();
        }
        steps.push_back(step);
        risen += step;
        const auto& [name, size, darkest] = measures[measure];
        const bool counted = goesOn && std::fabs(was) >= size;
        return !counted && std::fabs(risen) >= size && dark < darkest;
    }
};

struct Meter {
    Changes changes[measureCount] = {{Luminance}, {Red}};
};

// Of a part of the programme.
struct Tally {
    int most[measureCount] = {};  // changes in a second
    std::vector<double> swings;   // of the mean luminance, a beat each
};

int firstFrame(float seconds) {
    return int(std::ceil(double(seconds) * framesPerSecond));
}

int beatOf(int frame) {
    const double since = double(frame) / framesPerSecond - showtime::beatZero.seconds();
    return int(std::floor(since * showtime::beatsPerMinute / 60));
}

Tally drawn(SteppedShow& show, Meter& meter, int begin, int end) {
    Tally tally;
    double low = 0, high = 0;
    for (int frame = begin; frame < end; frame++) {
        show.draw(frame);
        const auto fields = measured();
        for (int i = 0; i < measureCount; i++)
            tally.most[i] = std::max(tally.most[i], meter.changes[i].add(fields[i]));
        const double mean = meter.changes[Luminance].mean;
        if (frame > begin && beatOf(frame) == beatOf(frame - 1)) {
            low = std::min(low, mean), high = std::max(high, mean);
            continue;
        }
        // Before beat 0 nothing is on the grid.
        if (frame > begin && beatOf(frame - 1) >= 0) tally.swings.push_back(high - low);
        low = high = mean;
    }
    return tally;
}

}  // namespace

Figures benchFlashes(const std::string& filter) {
    const auto sheet = programme();
    SteppedShow show(framesPerSecond);
    Meter meter;
    int next = 0;
    Figures figures;
    for (int entry = 0; entry + 1 < int(sheet.size()); entry++) {
        char name[64];
        snprintf(name, sizeof name, "%.1f s, %s", double(sheet[entry].begin), sheet[entry].name);
        if (std::string(name).find(filter) == std::string::npos) continue;
        const int begin = firstFrame(sheet[entry].begin), end = firstFrame(sheet[entry + 1].begin);
        if (begin != next) meter = {};  // what lies between was left out
        next = end;
        const Tally tally = drawn(show, meter, begin, end);
        // The corridor opens with a burst of light, which may do what the rule allows for a second.
        const bool opens = sheet[entry].begin == showtime::tunnel;
        const bool flashes = opens || sheet[entry].begin == showtime::tornTunnel;
        for (int i = 0; i < measureCount; i++)
            figures.push_back({std::string(name) + ", " + measures[i].name, double(tally.most[i]), "a second",
                               0, Goal::valueAtMost, opens ? 6.0 : 2.0});
        if (tally.swings.empty()) continue;
        const Goal kind = flashes ? Goal::valueAtMost : Goal::none;
        figures.push_back(
            {std::string(name) + ", swing of a beat", 100 * median(tally.swings), "%", 0, kind, 9});
        figures.push_back({std::string(name) + ", widest swing",
                           100 * *std::max_element(tally.swings.begin(), tally.swings.end()), "%", 0, kind,
                           13.5});
    }
    return figures;
}
