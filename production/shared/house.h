// The house of the heap, for its model and for the pictures of its walls. In units of the heap.
#pragma once

namespace house {

// A storey is a piece of the tower's core, and one house that juts out from it along x. Nothing of it comes
// nearer than 30 to who looks at the heap, swelling by a half along its length.
constexpr double core = 23, bottom = -9.3, storeyHigh = 20;
constexpr double front = 90, depth = front - core, halfWidth = 23, eaves = 9, ridge = 25;
constexpr double wall = eaves - bottom, high = ridge - bottom;
constexpr double lining = 2.4;  // of light along the edges of its front and its eaves
constexpr double frame = 5;     // of the front's window

// Windows of the walls, from the left as who stands before them sees them.
struct Window {
    double left, right;
};
constexpr double sill = 3, lintel = 14;
constexpr int walls = 2, windowsEach = 2;
constexpr Window windows[walls][windowsEach] = {{{8, 28}, {38, 60}}, {{8, 32}, {44, 58}}};

}  // namespace house
