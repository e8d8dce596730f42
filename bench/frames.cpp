// Milliseconds of each part of the programme's frames, against the same frames replayed from a recording of
// their GL calls: what is over is ours. Live and replayed take turns.
#include <GL/glew.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "app/frame.h"
#include "bench/bench.h"
#include "script/timeline.h"
#include "tools/capture/stepped_show.h"
#include "tools/times.h"

namespace {

// The first frames of a moment, which compile and fill caches, count nowhere.
constexpr int warmUpFrames = 10;

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

// An entry of the programme as a row of the table.
struct Segment {
    int entry;
    std::string name;
};

// Those whose names hold `filter`.
std::vector<Segment> segments(const std::string& filter) {
    std::vector<Segment> all;
    const auto sheet = programme();
    for (int entry = 0; entry + 1 < int(sheet.size()); entry++) {
        char name[64];
        snprintf(name, sizeof name, "a frame after %.1f s", double(sheet[entry].begin));
        if (std::string(name).find(filter) != std::string::npos) all.push_back({entry, name});
    }
    return all;
}

// The median of a moment's frames, from when each of them began and what followed the last, in seconds; what
// began before them is left out.
double medianFrame(const std::vector<double>& beginnings, int frames) {
    std::vector<double> durations;
    for (size_t i = beginnings.size() - frames + warmUpFrames; i < beginnings.size(); i++)
        durations.push_back(beginnings[i] - beginnings[i - 1]);
    return median(durations);
}

struct FrameCost {
    double wall = 0;     // seconds, the median of the frames: few of them meet other work on the machine
    double process = 0;  // processor seconds a frame, of all threads
};

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

// Frames at equal steps about the middle of an entry.
void printMoment(int entry, int frames, int step) {
    SteppedShow show(1000 / step);
    const auto sheet = programme();
    const int middle = int(500.0 * (sheet[entry].begin + sheet[entry + 1].begin));
    std::vector<double> beginnings;
    double start = 0;
    for (int i = 0; i < frames; i++) {
        beginnings.push_back(steadySeconds());
        if (i == warmUpFrames) start = processSeconds();
        show.music.ms = middle + (i - frames / 2) * step;
        renderFrame();
    }
    glFinish();
    beginnings.push_back(steadySeconds());
    printf("%f %f\n", medianFrame(beginnings, frames), (processSeconds() - start) / (frames - warmUpFrames));
}

void printWhetherDrawingIsLeftOut() {
    SteppedShow show(30);
    float colour[4] = {};
    glClearColor(1, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    glReadPixels(0, 0, 1, 1, GL_RGBA, GL_FLOAT, colour);
    puts(colour[0] < 0.5f ? "yes" : "no");
}
