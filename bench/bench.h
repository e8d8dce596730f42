// What the benchmarks share: timing, and figures as rows of a table and as JSON.
// A figure is compared with another of the same run, never with a fixed time.
#pragma once

#include <functional>
#include <string>
#include <vector>

struct Figure {
    std::string name;
    double value;
    const char* unit;
    double compared;  // the other figure of the same run, in the same unit; 0 if there is none
    double goal;      // of value / compared; 0 if there is none
    bool atLeast;     // the goal is reached from above
};

using Figures = std::vector<Figure>;

// Seconds on a steady clock; seconds of processor time of all threads of this process.
double wallSeconds();
double processSeconds();

// The shortest of `runs` runs, seconds: the one that other work on the machine disturbed least.
double bestSeconds(int runs, const std::function<void()>& work);

// The groups. Each runs in a process of its own, since GL's first start is in some of them.
Figures benchLoaders();
Figures benchRays();
Figures benchStartUp();
Figures benchFrames();
Figures benchCapture();
