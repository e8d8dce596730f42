// A moment of the show drawn some times over: what the frames' benchmark times and records.
#pragma once

struct Moment {
    double wall = 0;     // seconds a frame
    double process = 0;  // processor seconds a frame, of all threads
};

// Draws `count` frames from the middle of an entry of the programme on and shows them. The first few, which
// compile and fill caches, are not counted in the result.
Moment drawMoment(int entry, int count);
