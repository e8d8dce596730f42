// How far a capture is: a line that changes on a terminal, one now and then elsewhere.
#pragma once

#include "tools/times.h"

struct Progress {
    int total;  // frames
    bool terminal;
    int done = 0;
    int printed = -1;  // the last per cent that was printed
    double start = steadySeconds();

    explicit Progress(int total);
    // Ends the terminal's line.
    ~Progress();

    // After every frame.
    void step();
};
