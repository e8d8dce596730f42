// Where the room's camera stands and what it looks at: for its scene, and for those who build the hall so
// that it glitters from there.
#pragma once

#include <cmath>

#include "script/show_times.h"

constexpr double roomTurn = 0.4;  // radians per second, round the ball

struct RoomView {
    float eye[3], target[3];
};

// On a circle of radius 260, and later on an ellipse that breathes with the beat's pulse (1 on it, 0 between
// two).
inline RoomView roomView(float time, float pulse) {
    const double turn = roomTurn * time, height = std::sin(2 * turn) * 36.5;
    if (time >= showtime::roomBreathing)
        return {{float(std::cos(turn) * (10 * pulse + 250) * 1.04), float(height + (5 * pulse + 90)),
                 float(std::sin(turn) * (10 * pulse + 220) * 1.04)},
                {5 * pulse, 70, 10 * pulse}};
    return {{float(std::cos(turn) * 260), float(height + 100), float(std::sin(turn) * 260)},
            {std::sin(time) * 15, 70, 0}};
}
