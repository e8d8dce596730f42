// A virtual display of a test's own, with a window manager, without, or with a Wayland desktop: what is seen
// on it, and where the show's window lies.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

#include "tests/process.h"
#include "tests/scratch.h"

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
    VirtualScreen& operator=(VirtualScreen&&) = delete;

    // All its pixels, 0xRRGGBB, top row first.
    std::vector<uint32_t> grab() const;
    // Of the show's window, without its frame; empty where there is none.
    Rect windowRect() const;
    // Presses keys there, as who sits before it, whatever window they reach.
    void type(const std::string& keys) const;
    // What a window manager does when the button of the show's window is clicked.
    void closeWindow() const;

private:
    Environment environment;
    std::string name;
    pid_t server = -1, manager = -1;
    void* display = nullptr;  // the X library's, whose names would get in the tests' way
};

// A Wayland desktop that fills a virtual screen, its background lit. As long as it lives, programs that this
// process starts open their windows there, by themselves or as X programs do.
class WaylandDesktop {
public:
    std::string problem;  // why there is none

    WaylandDesktop(const VirtualScreen& screen, double scale, bool native);
    ~WaylandDesktop();
    WaylandDesktop& operator=(WaylandDesktop&&) = delete;

private:
    Environment environment;
    ScratchDirectory folder;  // for its sockets
    pid_t compositor = -1;
};
