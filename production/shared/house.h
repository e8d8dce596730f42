// The house of the heap, for its model and for the pictures of its rooms, undersides and edges. In units of
// the heap.
#pragma once

namespace house {

// Its floor; nothing of it comes nearer than 30 to who looks at the heap, swelling by a half along its
// length.
constexpr double halfLength = 92, halfWidth = 43, halfHeight = 9.3;
// Half of its outline at each end, from a long side to the end: a prow, and a broad terrace with cut corners.
struct Place {
    double along, aside;
};
constexpr int ends = 2, corners = 3;
constexpr Place outline[ends][corners] = {{{58, 43}, {79, 29}, {92, 10}}, {{74, 43}, {87, 36}, {92, 24}}};
// From here on to each end its underside is painted.
constexpr double paintedFrom = 36;
constexpr double slab = 3;

// Its glass, from the floor up to the next storey's.
constexpr double glassLength = 68, glassWidth = 36;  // halves
constexpr double roomHeight = 2 * halfHeight - slab;

// Stretches of rooms before, behind and at both ends, by the rooms' shares of their lengths.
constexpr int stretches = 4, mostRooms = 5;
constexpr double shares[stretches][mostRooms] = {
    {0.20, 0.285, 0.13, 0.235, 0.15}, {0.24, 0.26, 0.37, 0.13}, {0.56, 0.44}, {0.55, 0.45}};
constexpr double lengthOf(int stretch) {
    return 2 * (stretch < 2 ? glassLength : glassWidth);
}

}  // namespace house
