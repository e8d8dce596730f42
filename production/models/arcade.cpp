#include "production/models/arcade.h"

#include <cmath>

#include "production/kit/model/forms.h"
#include "production/models/hall.h"

using namespace model;
using namespace hall;

namespace {

constexpr double breadth = 2 * pi / arcade::bays;        // of a bay, radians
constexpr double front = 472;                            // how far out its piers end
constexpr double halfOpen = 0.32;                        // of a niche's breadth, in bays
constexpr double springing = 236, rise = 66, top = 366;  // heights
constexpr double line = 4.5;                             // of a moulding's breadth

// `turn` in bays.
Vec at(double turn, double radius, double y) {
    return onRing(turn * breadth, radius, y);
}

// A niche's outline from its left foot over the arch to its right one: turns in bays, heights; so many units
// larger.
Outline opening(double larger) {
    constexpr int steps = 20;
    const double half = halfOpen + larger / (front * breadth);
    Outline outline = {{-half, 0}};
    for (int i = 0; i <= steps; i++) {
        const double turn = pi * (1 - double(i) / steps);
        outline.push_back({half * std::cos(turn), springing + (rise + larger) * std::sin(turn)});
    }
    outline.push_back({half, 0});
    return outline;
}

}  // namespace

namespace arcade {

double turnOf(int number) {
    return pillarTurn + (number + 0.5) * breadth;
}

// As if lamps stood at their foot: a back seems to lean out, the more the higher up, so that its foot throws
// back the glow beyond the hall and its top the night.
Shape niches() {
    constexpr int rows = 7;
    constexpr double half = halfOpen + 0.1, high = springing + rise + 10;
    std::vector<Shape> backs;
    for (int i = 0; i < bays; i++)
        backs.push_back(grid(2, rows, false, false, [=](int c, int r) {
            return onRing(turnOf(i) + breadth * half * (2 * c - 1), wallRadius, high * r / (rows - 1));
        }));
    return shaded(joined(backs), [](Vec p, Vec) {
        return Vec{0, -1, 0} - normalized(Vec{p.x, 0, p.z}) * mix(0.01, 0.26, p.y / high);
    });
}

Shape stone() {
    const Outline arch = opening(0);
    const Shape spandrel = grid(int(arch.size()), 2, false, false,
                                [&](int c, int r) { return at(arch[c].x, front, r == 0 ? arch[c].y : top); });
    const auto pier = [](double from, double to) {
        return grid(2, 2, false, false, [=](int c, int r) { return at(c == 0 ? from : to, front, top * r); });
    };
    return joined({pier(-0.5, -halfOpen), pier(halfOpen, 0.5), spandrel});
}

Shape reveals() {
    const Outline rim = opening(0);
    return grid(int(rim.size()), 2, false, false,
                [&](int c, int r) { return at(rim[c].x, r == 0 ? wallRadius : front, rim[c].y); });
}

// It throws back the night straight below whoever looks at it.
Shape gallery() {
    const Outline profile = {{front + 8, wallHeight}, {front + 8, top}};
    return shaded(lathe(profile, 2 * bays), [](Vec p, Vec) {
        return Vec{0, -1, 0} - normalized(Vec{p.x, 0, p.z}) * 0.5;
    });
}

Shape mouldings() {
    const Outline inner = opening(0), outer = opening(line);
    std::vector<Shape> lines;
    for (int i = 0; i < bays; i++)
        lines.push_back(grid(int(inner.size()), 2, false, false, [&](int c, int r) {
            const Flat p = (r == 0 ? inner : outer)[c];
            return onRing(turnOf(i) + breadth * p.x, front - 1.5, p.y);
        }));
    return shaded(joined(lines), [](Vec p, Vec) {
        return Vec{0, 1, 0} - normalized(Vec{p.x, 0, p.z}) * 0.03;
    });
}

}  // namespace arcade
