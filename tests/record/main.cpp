// record: what the show draws at some sixty moments, as text on standard output. `record FILE` compares it
// with a record that was kept and shows the difference; where that is meant, `record >FILE` takes it anew.
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "app/app.h"
#include "app/frame.h"
#include "app/startup.h"
#include "app/window.h"
#include "render/demo.h"
#include "render/screen.h"
#include "script/timeline.h"
#include "tests/record/recorder.h"

namespace {

// Over all segments, on and off the beat, and in the short stretches that have something of their own. The
// last ones jump, as an author does who moves the music.
constexpr double moments[] = {
    0,      3.1,    6.9,   9.6,    10.2,  14,    17.2,   19.1,  20.9,  24.85, 28.3,  31.95,  32.35,
    36.6,   38.2,   44.9,  47.64,  47.85, 49.4,  51.4,   54.75, 58.2,  61.6,  62.8,  65.3,   69.6,
    69.8,   72.15,  78.1,  82.4,   87.7,  93.3,  97.3,   102.6, 108.6, 109.1, 112.4, 116.3,  119,
    121.4,  123.82, 127.1, 133.25, 137.1, 138.6, 140.2,  141.6, 143.1, 147.3, 154.4, 160.15, 166.8,
    171.45, 174.6,  178.2, 182.6,  189.2, 191.5, 192.55, 194,   70.4,  18.05, 114.3, 151.2,
};

std::vector<std::string> recordShow() {
    keepFramesUnscaled();
    app.screen = openWindow(false);
    record::say("== start-up");
    initialiseDemo();
    record::say("== tables");
    record::sayTables();
    SteppedMusic music;
    demo->clock.source = &music;
    for (const double second : moments) {
        music.ms = int(std::lround(second * 1000));
        char title[64];
        snprintf(title, sizeof title, "== %.2f s, %s", second, programmeAt(float(second)).name);
        record::say(title);
        renderFrame();
    }
    return record::takeLines();
}

std::vector<std::string> linesOf(const char* path) {
    std::vector<std::string> lines;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
}

bool isNumber(const std::string& word, double* value) {
    const size_t first = word.find_first_not_of('(');
    if (first == std::string::npos || !(isdigit(word[first]) || word[first] == '-')) return false;
    char* end = nullptr;
    *value = strtod(word.c_str() + first, &end);
    return end != word.c_str() + first;
}

// Word by word; numbers may differ in the last of their digits.
bool areAlike(const std::string& a, const std::string& b) {
    std::istringstream wordsOfA(a), wordsOfB(b);
    std::string wordA, wordB;
    while (wordsOfA >> wordA) {
        if (!(wordsOfB >> wordB)) return false;
        double x = 0, y = 0;
        if (wordA == wordB) continue;
        if (!isNumber(wordA, &x) || !isNumber(wordB, &y)) return false;
        if (std::fabs(x - y) > 0.0015 * std::max(std::fabs(x), 0.1)) return false;
    }
    return !(wordsOfB >> wordB);
}

int compare(const char* path, std::vector<std::string> now) {
    const std::vector<std::string> kept = linesOf(path);
    for (size_t i = 0; i < kept.size() && i < now.size(); i++)
        if (areAlike(kept[i], now[i])) now[i] = kept[i];
    if (now == kept) return 0;
    const std::string command = std::string("diff -u --label kept --label now '") + path + "' -";
    FILE* diff = popen(command.c_str(), "w");
    for (const std::string& line : now) fprintf(diff, "%s\n", line.c_str());
    pclose(diff);
    fprintf(stderr, "What is drawn differs from %s\n", path);
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> lines = recordShow();
    if (argc == 2) return compare(argv[1], lines);
    for (const std::string& line : lines) printf("%s\n", line.c_str());
    return 0;
}
