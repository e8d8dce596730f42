// The hall's plan, for its models and for the pictures on its walls, floor and dome. In units of the hall.
#pragma once

namespace hall {

constexpr double wallRadius = 500, wallHeight = 600;  // of the drum under the dome

// The stage's terraces from outside in: radius of the riser, the height of its foot, and its own.
struct Terrace {
    double radius, foot, height;
};
constexpr Terrace terraces[] = {{204, 0, 4}, {164, 4, 4}, {124, 8, 4}, {84, 12, 5}, {46, 17, 6}};

}  // namespace hall
