// Instructions that a frame of each part of the programme takes: the same number on every run with the same
// words, so a change that costs is seen on any machine. Counted is this program alone: what it calls is
// others'.
#include <valgrind/callgrind.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

#include "app/frame.h"
#include "bench/bench.h"
#include "bench/moments.h"
#include "tests/scratch.h"
#include "tools/capture/stepped_show.h"
#include "tools/formatted.h"

namespace {

constexpr int frames = 20;
constexpr int step = 33;  // milliseconds

// Thousand instructions, by entry: a tenth more than g++ 12 took.
constexpr double goals[] = {16, 201, 20, 213, 69, 21, 16, 922, 901, 905, 907};

// Of the functions of a profile, those of this program. Their lines end in the object that they are of.
double countedInstructions(const std::string& profile) {
    std::istringstream lines(outputOf("callgrind_annotate --threshold=100 --show-percs=no " + profile));
    const std::string object = formatted("[%s]", std::filesystem::read_symlink("/proc/self/exe").c_str());
    double count = 0;
    for (std::string line; std::getline(lines, line);) {
        if (line.find(object) == std::string::npos) continue;
        std::erase(line, ',');
        count += std::atof(line.c_str());
    }
    return count;
}

}  // namespace

// No frame is shown: what the window system's library does belongs to nobody here.
void drawCounted(const std::string& filter) {
    SteppedShow show(1000 / step);
    if (!drawingIsLeftOut()) return;  // in software, drawing would take hours here
    for (const Segment& segment : segments(filter)) {
        const Moment moment = {segment.entry, warmUpFrames + frames, step};
        for (int i = 0; i < moment.frames; i++) {
            if (i == warmUpFrames) CALLGRIND_START_INSTRUMENTATION;
            show.music.ms = millisecond(moment, i);
            drawFrame();
        }
        CALLGRIND_DUMP_STATS;
        CALLGRIND_STOP_INSTRUMENTATION;
    }
}

// The dumps are numbered from 1 on.
Figures benchInstructions(const std::string& filter) {
    const ScratchDirectory scratch;
    const std::string profile = scratch.file("profile");
    outputOf("GALLIUM_NOOP=1 valgrind --tool=callgrind --instr-atstart=no --callgrind-out-file=" + profile +
             " " + thisProgram("counted '" + filter + "'"));
    Figures figures;
    for (const Segment& segment : segments(filter)) {
        const std::string dump = profile + "." + std::to_string(figures.size() + 1);
        if (!std::filesystem::exists(dump)) break;
        figures.push_back({segment.name + ", instructions", countedInstructions(dump) / frames / 1000,
                           "thousand", 0, Goal::valueAtMost, goals[segment.entry]});
    }
    if (figures.empty())
        fprintf(stderr, "bench: no instructions counted; does this GL driver draw in any case?\n");
    return figures;
}
