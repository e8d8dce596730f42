// What the benchmarks share: timing, and figures as rows of a table.
// A figure is compared with another of the same run where noise can reach it; goals stand with the figures.
#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

enum class Goal { none, ratioAtMost, ratioAtLeast, valueAtMost };

struct Figure {
    std::string name;
    double value;
    const char* unit;
    double compared = 0;  // the other figure of the same run, in the same unit; 0 if there is none
    Goal kind = Goal::none;
    double goal = 0;
    std::vector<double> ratios = {};  // value / compared of each pair, if they were measured in pairs
};

using Figures = std::vector<Figure>;

// The median of the pairs' ratios, or value / compared.
double ratio(const Figure& figure);

double median(std::vector<double> values);

// A figure of pairs: each of `ours` was measured right beside the one of `others`, so that both met the same
// weather. Value and compared are the medians.
Figure paired(const std::string& name, const char* unit, const std::vector<double>& ours,
              const std::vector<double>& others, Goal kind, double goal);

// Seconds of processor time of all threads of a process, which is this one if it is 0.
double processSeconds(pid_t process = 0);

// The shortest of `runs` runs, seconds: the one that other work on the machine disturbed least.
double bestSeconds(int runs, const std::function<void()>& work);

// What a shell command writes to its standard output.
std::string outputOf(const std::string& command);
// This program with other words, for outputOf.
std::string thisProgram(const std::string& words);

// The groups. Each runs in a process of its own, since GL's first start is in some of them. `filter` chooses
// rows by their names: all if it is empty. Groups that are quick as a whole ignore it.
Figures benchLoaders(const std::string& filter);
Figures benchBeams(const std::string& filter);
Figures benchFrames(const std::string& filter);
Figures benchUndrawnFrames(const std::string& filter);
// A moment of theirs, and whether the driver takes every call and draws nothing (GALLIUM_NOOP=1, where it
// knows that), each for a process of its own: wall seconds, the median of its frames, and processor seconds a
// frame.
void printMoment(int entry, int frames, int step);
void printWhetherDrawingIsLeftOut();
Figures benchCapture(const std::string& filter);
// A row of it, for a process of its own: frames a second captured and drawn, a line for each pair.
void printCapturePairs(int row);
Figures benchReload(const std::string& filter);
Figures benchFlashes(const std::string& filter);
