// Frames of the show by their numbers: when each is, and lists of them.
#pragma once

#include <string>
#include <vector>

constexpr int mostFps = 1000;  // frames a second: times are whole milliseconds

// Frame i is drawn for the millisecond nearest to i / fps.
int millisecondsOf(int frame, int fps);
// How many frames lie before `seconds`.
int framesBefore(double seconds, int fps);
// The frame that is nearest to a time.
int frameAt(double seconds, int fps);

struct FrameRun {
    int first;
    int last;  // belongs to it
};

// In ascending order, with at least a frame between one and the next.
using FrameRuns = std::vector<FrameRun>;

// Reads a list such as 0-2999,3600. False if it is not one, or does not ascend.
bool parseFrames(const std::string& text, FrameRuns* runs);
std::string textOf(const FrameRuns& runs);

std::vector<int> framesOf(const FrameRuns& runs);
// The runs of ascending frames.
FrameRuns runsOf(const std::vector<int>& frames);
