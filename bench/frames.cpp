// Milliseconds of each part of the programme's frames, against the same frames replayed from a recording of
// their GL calls: what is over is ours. Live and replayed take turns.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "bench/bench.h"
#include "bench/moments.h"

namespace {

constexpr char leaveDrawingOut[] = "GALLIUM_NOOP=1 ";

// How a moment is drawn and how often it is compared.
struct Comparison {
    const char* environment;
    int frames;
    int step;  // milliseconds
    int pairs;
    double goal;
};

constexpr Comparison drawn = {"", 60, 33, 5, 1.03};
// Steps of a fast screen, and more frames: they take a hundredth of the time.
constexpr Comparison undrawn = {leaveDrawingOut, 400, 4, 9, 1.03};

constexpr char roomBeginning[] = "139.0";
constexpr double roomGoal = 0.6;  // ms of one core, drawing left out

std::string momentCommand(const Comparison& comparison, int entry) {
    return thisProgram("moment " + std::to_string(entry) + " " + std::to_string(comparison.frames) + " " +
                       std::to_string(comparison.step));
}

FrameCost liveFrame(const Comparison& comparison, int entry) {
    FrameCost cost;
    sscanf(outputOf(comparison.environment + momentCommand(comparison, entry)).c_str(), "%lf %lf", &cost.wall,
           &cost.process);
    return cost;
}

// The replay tells when each frame began, "frame NANOSECONDS" each: those of the loading screens, the
// moment's, and one of what was called after the last was shown.
double replayedFrame(const Comparison& comparison, const std::string& recording) {
    const std::string output =
        outputOf(comparison.environment + ("apitrace replay --pframes='opengl: [0,0]' " + recording));
    std::vector<double> beginnings;
    for (size_t line = 0; (line = output.find("\nframe\t", line)) != std::string::npos; line++)
        beginnings.push_back(std::atof(output.c_str() + line + 7) * 1e-9);
    if (beginnings.size() <= size_t(comparison.frames)) return 0;
    return medianFrame(beginnings, comparison.frames);
}

void compare(const Comparison& comparison, const Segment& segment, Figures& figures) {
    const std::string recording =
        std::filesystem::temp_directory_path() / ("valojuova-bench." + std::to_string(getpid()) + ".trace");
    outputOf(comparison.environment +
             ("apitrace trace -o " + recording + " " + momentCommand(comparison, segment.entry)));
    std::vector<double> live, process, replayed;
    for (int i = 0; i < comparison.pairs; i++) {
        const FrameCost cost = liveFrame(comparison, segment.entry);
        const double replay = replayedFrame(comparison, recording);
        if (cost.wall == 0 || replay == 0) continue;
        live.push_back(cost.wall * 1000);
        process.push_back(cost.process * 1000);
        replayed.push_back(replay * 1000);
    }
    std::filesystem::remove(recording);
    if (live.empty()) {
        fprintf(stderr, "bench: no pair of %s came out\n", segment.name.c_str());
        return;
    }
    const std::string name = segment.name + (*comparison.environment ? ", undrawn" : "");
    figures.push_back(paired(name, "ms", live, replayed, Goal::ratioAtMost, comparison.goal));
    Figure cpu = {name + ", CPU", median(process), "ms"};
    if (*comparison.environment && name.find(roomBeginning) != std::string::npos) {
        cpu.kind = Goal::valueAtMost;
        cpu.goal = roomGoal;
    }
    figures.push_back(cpu);
}

Figures compareAll(const Comparison& comparison, const std::string& filter) {
    Figures figures;
    for (const Segment& segment : segments(filter)) compare(comparison, segment, figures);
    return figures;
}

}  // namespace

Figures benchFrames(const std::string& filter) {
    return compareAll(drawn, filter);
}

Figures benchUndrawnFrames(const std::string& filter) {
    if (outputOf(leaveDrawingOut + thisProgram("leaves-drawing-out")) != "yes\n") {
        fprintf(stderr, "bench: this GL driver draws in any case, so no frame without drawing\n");
        return {};
    }
    return compareAll(undrawn, filter);
}
