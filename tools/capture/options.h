// The command line of `capture`.
#pragma once

#include <string>

#include "script/show_times.h"

struct CaptureOptions {
    int fps = 60;
    double from = 0;  // seconds of the show
    double to = showtime::end.seconds();
    std::string out = "valojuova.mp4";  // a film, or numbered pictures where it ends in .png
    std::string storyboard;             // a picture of many frames; none if empty
    double every = 5;                   // seconds between the storyboard's frames
};

// Prints the usage text or one line about the word that is wrong and ends the process, with status 0 or 1.
CaptureOptions parseCaptureOptions(int argc, const char* const* argv);
