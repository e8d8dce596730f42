// How far a capture is: a bar on a terminal, a plain line now and then elsewhere.
#pragma once

#include <chrono>

struct Progress {
    int total;  // frames
    bool terminal;
    int done = 0;
    int printed = -1;  // the last per cent that was printed
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();

    explicit Progress(int total);
    // Ends the bar's line.
    ~Progress();

    // After every frame.
    void step();
};
