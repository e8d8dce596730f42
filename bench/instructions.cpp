// Instructions that a frame of each part of the programme takes: the same number on every run with the
// same words, so a change that costs is seen on any machine. Counted is this program with what it calls of
// the C and C++ libraries; the GL driver, and what it calls, is apart.
#include "bench/instructions.h"

#include <valgrind/callgrind.h>

#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include "app/frame.h"
#include "bench/bench.h"
#include "bench/instructions.h"
#include "bench/moments.h"
#include "tools/capture/stepped_show.h"

namespace fs = std::filesystem;

namespace {

constexpr int frames = 20;
constexpr int step = 33;  // milliseconds

// Thousand instructions, by entry: a tenth more than g++ 12 took on a processor with AVX. Without, tracing
// beams takes twice as many.
constexpr double goals[] = {17, 225, 27, 250, 40, 28, 35, 945, 905, 910, 910};

constexpr const char* ourLibraries[] = {"/libc.so", "/libm.so", "/libstdc++.so", "/libgcc_s.so"};

bool isOurLibrary(const std::string& object) {
    for (const char* library : ourLibraries) {
        if (object.find(library) != std::string::npos) return true;
    }
    return false;
}

// "ob=(12) path" names an object, and "ob=(12)" is the same one again.
std::string objectOf(const std::string& text, std::map<std::string, std::string>& names) {
    const size_t end = text.find(')') + 1;
    std::string& name = names[text.substr(0, end)];
    if (text.size() > end) name = text.substr(end + 1);
    return name;
}

// Of a profile in callgrind's format: lines "POSITION COST" of the function named before, in the object named
// before; after a "calls=" line, one such line with the cost of what was called, in "cob=" if that is another
// object.
double countedInstructions(const fs::path& profile, const std::string& program) {
    std::ifstream file(profile);
    std::map<std::string, std::string> names;
    std::string line, object, called;
    bool afterCalls = false;
    double count = 0;
    while (std::getline(file, line)) {
        if (line.starts_with("ob=")) {
            object = objectOf(line.substr(3), names);
        } else if (line.starts_with("cob=")) {
            called = objectOf(line.substr(4), names);
        } else if (line.starts_with("calls=")) {
            afterCalls = true;
        } else if (!line.empty() && std::strchr("+-*0123456789", line[0])) {
            const double cost = std::atof(line.c_str() + line.find(' '));
            const bool ours = object == program && (!afterCalls || isOurLibrary(called));
            if (ours) count += cost;
            if (afterCalls) called.clear();
            afterCalls = false;
        }
    }
    return count;
}

// The profile of an entry: PREFIX.NUMBER, with a line that holds the word given to the dump.
std::string trigger(int entry) {
    return "segment " + std::to_string(entry) + ";";
}

bool belongsTo(const fs::path& profile, int entry) {
    std::ifstream file(profile);
    std::string line;
    for (int i = 0; i < 30 && std::getline(file, line); i++) {
        if (line.find(trigger(entry)) != std::string::npos) return true;
    }
    return false;
}

}  // namespace

// No frame is shown: what the window system's library does belongs to nobody here.
void drawCounted(const std::string& part) {
    SteppedShow show(1000 / step);
    if (!drawingIsLeftOut()) return;  // in software, drawing would take hours here
    for (const Segment& segment : segments(part)) {
        const Moment moment = {segment.entry, warmUpFrames + frames, step};
        for (int i = 0; i < moment.frames; i++) {
            if (i == warmUpFrames) CALLGRIND_START_INSTRUMENTATION;
            show.music.ms = millisecond(moment, i);
            drawFrame();
        }
        CALLGRIND_DUMP_STATS_AT(trigger(segment.entry).c_str());
        CALLGRIND_STOP_INSTRUMENTATION;
    }
}

Figures benchInstructions(const std::string& part) {
    const fs::path folder = fs::temp_directory_path() / ("valojuova-bench." + std::to_string(getpid()));
    fs::create_directory(folder);
    outputOf("GALLIUM_NOOP=1 valgrind --tool=callgrind --instr-atstart=no --callgrind-out-file=" +
             (folder / "profile").string() + " " + thisProgram("counted '" + part + "'"));
    const std::string program = fs::read_symlink("/proc/self/exe");
    Figures figures;
    for (const Segment& segment : segments(part)) {
        for (const fs::directory_entry& profile : fs::directory_iterator(folder)) {
            if (!belongsTo(profile, segment.entry)) continue;
            const double count = countedInstructions(profile, program) / frames;
            const bool hasGoal = segment.entry < int(std::size(goals));
            figures.push_back({segment.name + ", instructions", count / 1000, "thousand", 0,
                               hasGoal ? Goal::valueAtMost : Goal::none, hasGoal ? goals[segment.entry] : 0});
        }
    }
    if (figures.empty())
        fprintf(stderr, "bench: no instructions counted; does this GL driver draw in any case?\n");
    fs::remove_all(folder);
    return figures;
}
