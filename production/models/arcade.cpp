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
    return towerTurn + (number + 0.5) * breadth;
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
    constexpr int sides = 8;
    constexpr double bulge = 12;
    const Outline arch = opening(0);
    const Shape spandrel = grid(int(arch.size()), 2, false, false,
                                [&](int c, int r) { return at(arch[c].x, front, r == 0 ? arch[c].y : top); });
    const Shape column = grid(sides + 1, 2, false, false, [](int c, int r) {
        const double turn = pi * c / sides;
        return at(0.5 - (0.5 - halfOpen) * std::cos(turn), front - bulge * std::sin(turn), top * r);
    });
    return joined({column, spandrel});
}

// They throw back the night straight below whoever looks at them.
Shape shadows() {
    const Outline rim = opening(0);
    std::vector<Shape> parts = {lathe({{front + 8, wallHeight}, {front + 8, top}}, 2 * bays)};
    for (int i = 0; i < bays; i++)
        parts.push_back(grid(int(rim.size()), 2, false, false, [&](int c, int r) {
            return onRing(turnOf(i) + breadth * rim[c].x, r == 0 ? wallRadius : front, rim[c].y);
        }));
    return shaded(joined(parts), [](Vec p, Vec) {
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
