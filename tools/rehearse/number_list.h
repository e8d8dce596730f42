// The list of numbers on the desk: what of it is where, for eyes and for the mouse.
#pragma once

#include "tools/rehearse/numbers.h"
#include "tools/rehearse/timeline_strip.h"

struct NumberList {
    bool open = false;
    int scrolled = 0;                    // rows
    float bottom = stripHeight(0) + 10;  // pixels: above the timeline

    // A point of the screen, y counted from the top as a mouse does.
    bool isOn(int x, int y) const;
    // The number there, of all; -1 if there is none.
    int numberAt(const Numbers& numbers, int x, int y) const;
    void scroll(const Numbers& numbers, int rows);
    // Until the chosen one is seen.
    void reveal(const Numbers& numbers);
    int shownRows() const;
    // Where what is beside it ends: pixels.
    float left() const;
};

void drawNumbers(const Numbers& numbers, const NumberList& list);
