#include "production/kit/picture/shapes.h"

namespace picture {

float polygon(Point p, const std::vector<Point>& corners) {
    float nearest = dot(p - corners[0], p - corners[0]);
    bool inside = false;
    for (size_t i = 0, j = corners.size() - 1; i < corners.size(); j = i++) {
        const Point edge = corners[j] - corners[i], from = p - corners[i];
        const float k = unit(dot(from, edge) / std::fmax(dot(edge, edge), 1e-12f));
        const Point off = from - edge * k;
        nearest = std::fmin(nearest, dot(off, off));
        const bool crosses = (corners[i].y > p.y) != (corners[j].y > p.y);
        if (crosses && from.x < edge.x * from.y / edge.y) inside = !inside;
    }
    return inside ? -std::sqrt(nearest) : std::sqrt(nearest);
}

}  // namespace picture
