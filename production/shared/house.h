// The house of the heap, for its model and for the pictures of its walls. In units of the heap.
#pragma once

namespace house {

// A storey is a piece of the tower's core, and one house that juts out from it along x: a shop in front, a
// workshop along one wall, a flat along the other, and a flight of stairs on the core behind. Nothing of it
// comes nearer than 30 to who looks at the heap, swelling by a half along its length.
constexpr double core = 23, bottom = -9.3, storeyHigh = 20;
constexpr double front = 87, depth = front - core, halfWidth = 23, eaves = 9, ridge = 25;
constexpr double wall = eaves - bottom, high = ridge - bottom;
constexpr double lining = 2.4;  // of light along the edges of its front and its eaves
constexpr double ceiling = 14;  // of the shop, above the house's bottom

// Places on walls: from the left as who stands before them sees them, and upwards from the bottom.
struct Window {
    double left, right, low, high;

    constexpr double middle() const { return (left + right) / 2; }
};
enum Wall { workshop, flat };
constexpr Window gate = {38, 60, 0.6, 12.5};
constexpr double wheelX = 20, wheelY = 8.6, wheel = 7.4;  // the workshop's round window
constexpr Window rooms[] = {{6, 24, 0.6, 14}, {30, 41, 0.6, 14}, {47, 58, 0.6, 14}};

}  // namespace house
