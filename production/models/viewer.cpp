#include "production/models/viewer.h"

#include "production/models/hall.h"
#include "production/shared/comet.h"

using namespace model;

namespace {

constexpr double breathing = 154.3;  // seconds: from then on the viewer's path is an ellipse

// Gaussian.
double bell(double x, double sigma) {
    return std::exp(-0.5 * x * x / (sigma * sigma));
}

}  // namespace

namespace viewer {

View at(double time) {
    const double turn = 0.4 * time, height = std::sin(2 * turn) * 36.5;
    const Vec eye = time < breathing ? Vec{std::cos(turn) * 260, height + 100, std::sin(turn) * 260}
                                     : Vec{std::cos(turn) * 260, height + 91, std::sin(turn) * 229};
    const Vec target =
        time < breathing ? hall::ballCentre + Vec{std::sin(time) * 15, 0, 0} : hall::ballCentre;
    const Vec back = normalized(eye - target), right = normalized(cross({0, 1, 0}, back));
    return {eye, right, cross(back, right), back};
}

Vec direction(double azimuth, double elevation) {
    const double across = degrees(azimuth), height = degrees(elevation);
    return {std::cos(height) * std::sin(across), std::sin(height), std::cos(height) * std::cos(across)};
}

Vec facing(const View& view, Vec place, Vec shown) {
    const Vec there = view.right * shown.x + view.up * shown.y + view.back * shown.z;
    return normalized(there - normalized(place - view.eye));
}

Vec shown(const View& view, Vec place, Vec normal) {
    const Vec sight = normalized(place - view.eye);
    const Vec there = sight - normal * (2 * dot(normal, sight));
    return {dot(there, view.right), dot(there, view.up), dot(there, view.back)};
}

double cometLight(Vec direction) {
    if (std::abs(direction.y - std::sin(degrees(comet::elevation))) > 0.09) return 0;  // far from it
    const double above = std::asin(direction.y) / degrees(1) - comet::elevation;
    const double along = std::atan2(direction.x, direction.z) / degrees(1) - comet::azimuth;
    if (along <= 0 || along >= comet::tail)
        return bell(std::hypot(along * comet::azimuthShrinks, above), comet::headBreadth);
    const double k = along / comet::tail;
    return (1 - k * k) * bell(above, comet::tailBreadth + comet::tailGrowth * k);
}

}  // namespace viewer
