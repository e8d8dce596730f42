// The ring that rides at the height of the light disc, lying flat: a slim rail, and clasps that hold the
// corners of the disc, which stand at 30, 90, 150 ... degrees. It is a crescent, drawn out to nothing where
// the camera comes by close with the ring before the robot's head.
#include <algorithm>

#include "effects/fitting.h"
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/models.h"

using namespace model;

namespace {

using fitting::discRadius;

// How thick the crescent is, 0..1, towards a place of it.
double thickness(Vec p) {
    constexpr double open = degrees(194), half = degrees(56), tapering = degrees(64);
    const double aside = std::abs(std::remainder(std::atan2(p.z, p.x) - open, 2 * pi));
    return smoothstep(half, half + tapering, aside);
}

// A closed rail about a radius, drawn out at its ends; beyond them there are no faces.
Shape crescent(const Shape& whole, double radius) {
    Shape drawn = whole;
    drawn.faces.clear();
    for (const Face& face : whole.faces) {
        const bool seen = std::any_of(face.points.begin(), face.points.end(),
                                      [&](int point) { return thickness(whole.points[point]) > 0; });
        if (seen) drawn.faces.push_back(face);
    }
    return bent(drawn, [=](Vec p) {
        constexpr double thinnest = 0.06;  // of its ends
        const Vec middle = normalized(Vec{p.x, 0, p.z}) * radius;
        return mix(middle, p, std::max(thickness(p), thinnest));
    });
}

// A closed rail with the section of a lens, its outer edge sharp.
Shape rail() {
    const Outline section = {{102.7, 0},    {102.8, -0.2}, {103.1, -0.28}, {103.6, -0.22}, {104.3, -0.06},
                             {104.3, 0.06}, {103.6, 0.22}, {103.1, 0.28},  {102.8, 0.2},   {102.7, 0}};
    return lathe(section, 96);
}

// Fine ticks on the rail, as on an instrument.
Shape tick() {
    return moved(box({1.2, 0.3, 0.3}, 0.1), {103.4, 0.28, 0});
}

// Reaches in to the disc's corner along +x.
Shape clasp() {
    const Shape saddle = moved(box({5.6, 4.8, 4}, 1.4, 2), {104.4, 0, 0});
    const Shape jaw = moved(box({5.6, 1, 2}, 0.45, 2), {100.8, 1.5, 0});
    const Outline lens = {{1.5, 0}, {1.55, 0.3}, {1.3, 0.6}, {1, 0.6}, {0.85, 0.3}, {0.5, 0.8}, {0, 0.9}};
    const Shape eye = placed(lathe(lens, 16), {107.1, 0, 0}, {1, 0, 0});
    const Shape cap = placed(lathe(lens, 16), {104.4, 2.3, 0}, {0, 1, 0});
    return joined({saddle, jaw, reflected(jaw, Axis::y), eye, cap, reflected(cap, Axis::y)});
}

// The thin inner line that the light runs along, between the clasps' jaws.
Shape wire() {
    const double r = discRadius + 0.4;
    return lathe({{r, -0.5}, {r + 0.5, 0}, {r, 0.5}, {r - 0.5, 0}, {r, -0.5}}, 96);
}

}  // namespace

void makeRing(const char* path) {
    std::vector<Shape> parts = {crescent(rail(), 103.5), crescent(wire(), discRadius + 0.65)};
    const auto addAround = [&](const Shape& part, double turn) {
        const Vec place = {std::cos(turn), 0, std::sin(turn)};
        if (thickness(place) > 0.4) parts.push_back(turned(part, Axis::y, -turn));
    };
    for (int i = 0; i < 6; i++) addAround(clasp(), degrees(60) * (i + 0.5));
    for (int i = 0; i < 60; i++) addAround(tick(), degrees(6) * i);
    writeAml(path, {mappedCylinder(joined(parts), 24, 32)});
}
