// The show for a clock that steps: any frame of it, equal bit for bit to that frame of the whole show drawn
// at the same rate.
#pragma once

#include "app/clock.h"

struct SteppedShow {
    int fps;
    SteppedMusic music;
    int next = 0;  // the first frame that nothing has moved past yet

    // Opens the window and loads everything, as the program does, without sound.
    explicit SteppedShow(int fps);
    // Of a show that has been loaded already.
    struct Loaded {};
    SteppedShow(int fps, Loaded);

    // Frames before `seconds`; frame i is drawn for the millisecond nearest to i / fps.
    int framesBefore(double seconds) const;
    int milliseconds(int frame) const;

    // Draws `frame`, no earlier than `next`, into the back buffer, after its run-up.
    void draw(int frame);
    // The run-up alone: everything that has to happen before `frame` is drawn.
    void drawRunUp(int frame);
    // Moves past all frames before `frame` without drawing: what they leave in GL's state is missing then.
    void skipTo(int frame);
};
