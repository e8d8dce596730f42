// A virtual display of a test's own, with a window manager or without: what is seen on it, and where the
// show's window lies.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

#include "tests/sound/sound_server.h"

struct Rect {
    int x, y, width, height;
};

// As long as it lives, it is the DISPLAY of this process and of those that it starts.
class VirtualScreen {
public:
    int width, height;
    std::string problem;  // why there is none, or no window manager

    VirtualScreen(int width, int height, bool managed);
    ~VirtualScreen();
    VirtualScreen(const VirtualScreen&) = delete;
    VirtualScreen& operator=(const VirtualScreen&) = delete;

    // All its pixels, 0xRRGGBB, top row first.
    std::vector<uint32_t> grab() const;
    // Of the show's window, without its frame; empty where there is none.
    Rect windowRect() const;
    // What a window manager does when the button of the show's window is clicked.
    void closeWindow() const;

private:
    Environment environment;
    pid_t server = -1, manager = -1;
    void* display = nullptr;  // the X library's, whose names would get in the tests' way

    bool isManaged() const;
};
