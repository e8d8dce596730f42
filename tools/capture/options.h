// The command line of `capture`.
#pragma once

#include <string>
#include <vector>

#include "script/show_times.h"
#include "tools/capture/encoding.h"
#include "tools/capture/frames.h"
#include "tools/capture/window.h"

struct CaptureOptions {
    int fps = 0;
    double from = 0;  // seconds of the show
    double to = showtime::end.seconds();
    FrameRuns frames;                   // in place of those between `from` and `to`, where there are any
    std::string out = "valojuova.mp4";  // a film, or numbered pictures where it ends in .png
    FilmKind kind = FilmKind::Net;
    int samples = samplesOfRenderer;
    bool resume = false;             // what is there already is not drawn again
    std::vector<std::string> parts;  // to be joined; none if the show is to be drawn
    std::string storyboard;          // a picture of many frames; none if empty
    double every = 5;                // seconds between the storyboard's frames

    bool picturesWanted() const;
    // The frames that are asked for, at a rate that parts may know better.
    FrameRuns runs(int fps) const;
};

// Prints the usage text or one line about the word that is wrong and ends the process, with status 0 or 1.
CaptureOptions parseCaptureOptions(int argc, const char* const* argv);
