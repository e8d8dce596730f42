// Shapes as signed distances: negative inside, in the units of the coordinates given, so that clean edges,
// outlines, bevels and halos come from one number (the formulas follow Quilez, "2D distance functions").
#pragma once

#include <cmath>
#include <vector>

#include "production/kit/picture/canvas.h"

namespace picture {

inline Point turned(Point p, float radians) {
    const float c = std::cos(radians), s = std::sin(radians);
    return {p.x * c - p.y * s, p.x * s + p.y * c};
}

inline float circle(Point p, Point centre, float radius) {
    return length(p - centre) - radius;
}

// An axis-parallel box of half size `half`, its corners rounded by `corner`.
inline float box(Point p, Point centre, Point half, float corner = 0) {
    const Point q = {std::fabs(p.x - centre.x) - half.x + corner,
                     std::fabs(p.y - centre.y) - half.y + corner};
    return length(Point{std::fmax(q.x, 0.0f), std::fmax(q.y, 0.0f)}) + std::fmin(std::fmax(q.x, q.y), 0.0f) -
           corner;
}

// The distance to a line from `a` to `b`, without any width.
inline float segment(Point p, Point a, Point b) {
    const Point along = b - a;
    const float k = unit(dot(p - a, along) / dot(along, along));
    return length(p - a - along * k);
}

// A closed polygon, wound either way, convex or not.
float polygon(Point p, const std::vector<Point>& corners);

// How much of a pixel lies inside: `distance` in pixels.
inline float coverage(float distance) {
    return unit(0.5f - distance);
}
// The same for a line of the given width along a shape's edge.
inline float outline(float distance, float width) {
    return coverage(std::fabs(distance) - width / 2);
}

}  // namespace picture
