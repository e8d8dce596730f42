// Where the sun's features lie on its mask, in units of the model: x to its left as the viewer sees it from
// the middle (both halves are alike, so |x| counts), y up. The model is cut and raised by them, the picture
// of its skin is drawn round them.
#pragma once

#include <algorithm>
#include <cmath>

namespace sun {

constexpr double radius = 55;

// Between two arcs over `halfWidth` about the origin, the upper one `top` and the lower one `bottom` high in
// the middle. Negative inside, and nearly a distance.
inline double lens(double x, double y, double halfWidth, double top, double bottom) {
    const double open = 1 - x * x / (halfWidth * halfWidth);
    return std::max(y - top * open, bottom * open - y);
}

// The eyes' openings, almonds whose pupils hang from the upper lids, and the smile's. Negative inside.
inline double toPupil(double x, double y) {
    return std::hypot(std::fabs(x) - 21, y - 14) - 8;
}
inline double toAlmond(double x, double y) {
    const double across = std::fabs(x) - 23;
    return lens(across, y - 9 - 0.15 * across, 18, 15, -11);
}
inline double toEye(double x, double y) {
    return std::max(toAlmond(x, y), -toPupil(x, y));
}
inline double toMouth(double x, double y) {
    return lens(x, y + 16, 34, -5, -24);
}

}  // namespace sun
