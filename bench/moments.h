// A moment of the show drawn frame by frame: what the benchmarks time, record and count.
#pragma once

#include <string>
#include <vector>

struct SteppedShow;

// An entry of the programme as a row of the table.
struct Segment {
    int entry;
    std::string name;
};

// Those whose names hold `filter`.
std::vector<Segment> segments(const std::string& filter);

// Frames at equal steps about the middle of an entry.
struct Moment {
    int entry;
    int frames;
    int step;  // milliseconds from one to the next
};

// The music's position for each frame.
int millisecond(const Moment& moment, int frame);

// The first frames of a moment, which compile and fill caches, count nowhere.
constexpr int warmUpFrames = 10;

struct FrameCost {
    double wall = 0;     // seconds, the median of the frames: few of them meet other work on the machine
    double process = 0;  // processor seconds a frame, of all threads
};

// Draws a moment of more than the first frames in a show of its own and shows every frame.
FrameCost drawMoment(const Moment& moment);

// The median of a moment's frames, from when each of them began and what followed the last, in seconds; what
// began before them is left out.
double medianFrame(const std::vector<double>& beginnings, int frames);

// True if the driver takes every call and draws nothing (GALLIUM_NOOP=1, where the driver knows it).
bool drawingIsLeftOut();
