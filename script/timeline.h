// The programme: which scene is drawn at which second of the music, and how scenes are put together.
#pragma once

#include <span>

// Where scenes read the time and the beat: written at the start of every frame.
struct FrameState {
    float time;   // music time, seconds
    float delta;  // since the frame before, seconds
    float pulse;  // beat pulse, read once
};
extern FrameState frame;

// One line of the programme sheet.
struct ProgrammeEntry {
    float begin;  // music time in seconds; belongs to this entry, which runs to the next one's begin
    void (*draw)();
    const char* name;  // for whoever works on it
    // Where a frame is more than a function of its time (see run_up.h): what it carries on even if it isn't
    // drawn, in the order in which `draw` does (see scenes.h), and whether the frame at `time` leaves
    // something that later ones draw with.
    void (*advance)() = nullptr;
    bool (*leaves)(float time) = nullptr;
};

// All of it in order; the last entry ends the program.
std::span<const ProgrammeEntry> programme();

// The entry that is on at `time` seconds.
const ProgrammeEntry& programmeAt(float time);

// Draws the whole picture of the frame at `time` seconds, and ends the program at the end of the show.
void runTimeline(float time, float delta);

// For an author's own preview, in the place of scene and overlay: true when it has drawn one. As it stands it
// draws none and returns false.
bool preview(float time, float delta);
