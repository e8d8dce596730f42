// A storyboard: one picture with a grid of small frames, each with its time below.
#pragma once

#include "image/image.h"
#include "tools/capture/grabber.h"

struct Storyboard {
    int columns;
    Image sheet;  // RGB, top row first

    explicit Storyboard(int count);
    ~Storyboard();

    // Fills cell `index` with a frame, averaged down to the cell's size, and writes "M:SS.ss" below it.
    void add(int index, const Picture& picture, double seconds);
    // Writes a PNG; false after a line on standard error, and then there is no file.
    bool save(const char* path) const;
};
