// How the greetings scroll past in the robot's scene: for the scene, and for those who set their lines so
// that they are read on the bar. In eighths of the picture's breadth, of which the screen shows two.
#pragma once

#include "script/show_times.h"

constexpr float greetingsEnter = 5.33334f;  // where their middle begins, right of the screen's
constexpr float greetingsSpeed = 0.5f;      // to the left, per second

// How far right of the screen's middle theirs is, `seconds` after they came in.
constexpr float greetingsAt(float seconds) {
    return greetingsEnter - seconds * greetingsSpeed;
}
