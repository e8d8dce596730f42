// The desk: what an author wants to see of the show while it runs, laid over its picture.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/rehearse/meters.h"
#include "tools/rehearse/transport.h"

struct StemState {
    std::string name, waveform;  // the latter may still be empty
    bool muted = false, soloed = false, heard = true;

    bool operator==(const StemState&) const = default;
};

// All that the desk shows.
struct DeskState {
    int ms = 0;   // of the music
    int end = 0;  // of the show
    bool held = false;
    bool exact = false;  // what is held is the very frame of a film
    std::optional<Loop> loop;
    float pulse = 0;
    float framesPerSecond = 0;
    float millisecondsPerFrame = 0;  // of drawing one
    int counterQ = 0, counterA = 0;
    int pointer = -1;                   // the time under the mouse, where that is on the timeline
    std::vector<std::string> messages;  // the latest ones, oldest first
    std::vector<std::string> problems;  // what could not be read or compiled; may hold several lines
    std::string waveform;               // of the music, as a check prints it; may still be empty
    std::vector<std::string> working;   // what is being made in the background
    std::vector<std::string> numbers;   // those that are listed
    std::vector<std::string> turned;    // those that are not what their sources have
    std::string chosen;                 // the number that keys turn
    int cut = -1;                       // the segment whose begin is under the mouse
    std::vector<StemState> stems;       // those that are shown
    std::optional<Level> level;         // of what is heard, where it is measured
    bool help = false;                  // the keys are shown

    bool operator==(const DeskState&) const = default;
};

// As the score counts: bar 0 begins with beat 0 of the clock, bars before it are negative; beats from 1 to 4.
struct BarAndBeat {
    int bar, beat;
};
BarAndBeat barAndBeatAt(int ms);

// Milliseconds.
double barStart(int bar);

// "M:SS.mmm"
std::string clockTime(int ms);

// The state as lines "name: value", for scripts.
std::string describe(const DeskState& state);

// Messages and problems end before `right`, in pixels.
void drawDesk(const DeskState& state, float right);
