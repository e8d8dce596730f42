// record: what the show draws at some hundred moments, as text on standard output. `record FILE` compares it
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
#include "tools/success.h"

namespace {

// In ms: over all segments, on and off the beat, and on either side of what happens at one of the show's
// times. The last ones jump, as an author does who moves the music.
constexpr int moments[] = {
    0,      3100,   9537,   9538,   10200,  10499,  10500,  14000,  16999,  17000,  17137,  17138,  19100,
    20900,  24850,  28300,  32346,  32347,  32600,  36460,  38200,  44900,  45300,  47632,  47633,  47800,
    47801,  49400,  51299,  51300,  54750,  58200,  62760,  62761,  65300,  69730,  69731,  72150,  78029,
    78030,  82400,  87700,  93280,  93281,  97300,  102600, 108280, 108281, 108499, 108500, 109000, 109001,
    112400, 116204, 116205, 119000, 120810, 120811, 123810, 123811, 127100, 133250, 136999, 137000, 138600,
    138999, 139000, 140000, 140001, 141799, 141800, 142000, 142001, 143100, 147300, 154299, 154300, 160150,
    166800, 169452, 169453, 169474, 169475, 173287, 173288, 177050, 177051, 180453, 180454, 182600, 184155,
    184156, 189200, 191500, 192500, 192501, 192799, 192800, 194000, 195279, 70400,  18050,  114300, 151200,
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
    for (const int ms : moments) {
        music.ms = ms;
        char title[64];
        snprintf(title, sizeof title, "== %.3f s, %s", ms / 1000.0, programmeAt(float(ms) / 1000).name);
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
    failUnlessSucceeded();
    const std::vector<std::string> lines = recordShow();
    succeeded = true;
    if (argc == 2) return compare(argv[1], lines);
    for (const std::string& line : lines) printf("%s\n", line.c_str());
    return 0;
}
