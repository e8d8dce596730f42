// A butterfly's wings on its right side, seen from above: for who builds them and who paints their glass.
// Units, x from its body outwards, y forwards.
#pragma once

#include <algorithm>
#include <span>
#include <vector>

#include "production/kit/maths.h"

namespace wing {

using Place = kit::Vector2<double>;

// From one side of the shoulder round to the other; at each point a vein ends.
constexpr Place fore[] = {{1, 2.5},     {8, 11.5},  {17, 19.5}, {25, 24},    {29.5, 24.5},
                          {31, 22},     {29.5, 17}, {28, 11.5}, {26.5, 6.5}, {24.5, 2},
                          {21.5, -1.2}, {15, -1.6}, {8, -1.2},  {1, -1}};
constexpr Place hind[] = {{1, 1.5},      {8, 1},        {16, 0.4},     {22, -1.5},
                          {25.3, -5.5},  {25.3, -10},   {22.8, -14.8}, {19.8, -17.6},
                          {18.6, -21.5}, {17.6, -26.5}, {14.9, -26.2}, {14.7, -20.5},
                          {10.5, -18.6}, {6, -13.5},    {3, -8},       {1, -3}};
constexpr Place foreShoulder = {0.5, 1}, hindShoulder = {0.5, -0.8};

// What the picture of them shows, from its left to its right and from below.
struct Picture {
    static constexpr double left = -1, right = 33, low = -29, high = 27;
    static constexpr double across(double x) { return (x - left) / (right - left); }
    static constexpr double up(double y) { return (y - low) / (high - low); }
};

// A smooth curve through an outline, `steps` points from each of its own to the next.
inline std::vector<Place> curved(std::span<const Place> outline, int steps) {
    std::vector<Place> curve;
    const int last = int(outline.size()) - 1;
    for (int i = 0; i < last; i++) {
        for (int k = 0; k < steps; k++)
            curve.push_back(kit::curveBetween(outline[std::max(i - 1, 0)], outline[i], outline[i + 1],
                                              outline[std::min(i + 2, last)], double(k) / steps));
    }
    curve.push_back(outline[last]);
    return curve;
}

}  // namespace wing
