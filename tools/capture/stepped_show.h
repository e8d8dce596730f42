// The show for a clock that steps: any frame of it, equal bit for bit to that frame of the whole show drawn
// at the same rate.
#pragma once

#include "app/clock.h"
#include "tools/capture/frames.h"

// While it lives, what is drawn is cut to one pixel: for drawing of which only what it leaves behind counts.
struct OnePixel {
    OnePixel();
    ~OnePixel();
};

struct SteppedShow {
    int fps;
    SteppedMusic music;
    int next = 0;  // the first frame that nothing has moved past yet

    // Opens the window, with as many samples a pixel, and loads everything, as the program does, without
    // sound.
    explicit SteppedShow(int fps, int samples = 0);
    // Of a show that has been loaded already.
    struct Loaded {};
    SteppedShow(int fps, Loaded);

    int milliseconds(int frame) const { return millisecondsOf(frame, fps); }

    // Draws `frame`, no earlier than `next`, into the back buffer, after its run-up.
    void draw(int frame);
    // The run-up alone: everything that has to happen before `frame` is drawn.
    void drawRunUp(int frame);
    // Moves past all frames before `frame` without drawing: what they leave in GL's state is missing then.
    void skipTo(int frame);
};
