#include "production/models/arcade.h"

#include <cmath>

#include "production/kit/model/forms.h"

using namespace model;
using namespace hall;
using namespace arcade;

namespace {

constexpr double breadth = 2 * pi / arcade::bays;        // of a bay, radians
constexpr double halfOpen = 0.32;                        // of a niche's breadth, in bays
constexpr double springing = 236, rise = 66, top = 366;  // heights
constexpr double line = 4.5;                             // of a moulding's breadth

// Of a breadth at the front.
constexpr double inBays(double units) {
    return units / (front * breadth);
}
// `turn` in bays.
Vec at(double turn, double radius, double y) {
    return onRing(turn * breadth, radius, y);
}

// A niche's outline from its left foot over the arch to its right one: turns in bays, heights; so many units
// larger.
Outline opening(double larger) {
    constexpr int steps = 12;
    const double half = halfOpen + inBays(larger);
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
// back the glow beyond the hall and its top the night. Behind the colossus, which has lights of its own, it
// is dark.
Shape niches() {
    constexpr int rows = 7;
    constexpr double half = halfOpen + 0.1, high = springing + rise + 10;
    std::vector<Shape> backs;
    for (int i = 0; i < bays; i++) {
        const Shape back = grid(2, rows, false, false, [=](int c, int r) {
            return onRing(turnOf(i) + breadth * half * (2 * c - 1), wallRadius, high * r / (rows - 1));
        });
        const bool dark = std::abs(std::remainder(turnOf(i) - colossusTurn, 2 * pi)) < 2 * breadth;
        backs.push_back(shaded(back, [=](Vec p, Vec) {
            return Vec{0, -1, 0} - normalized(Vec{p.x, 0, p.z}) * (dark ? 0.5 : mix(0.01, 0.26, p.y / high));
        }));
    }
    return joined(backs);
}

Shape stone() {
    constexpr int sides = 8;
    const Outline arch = opening(0);
    const Shape spandrel = grid(int(arch.size()), 2, false, false,
                                [&](int c, int r) { return at(arch[c].x, front, r == 0 ? arch[c].y : top); });
    // Round but for a flat edge on either side, which the moulding lies on.
    const Shape column = grid(sides + 3, 2, false, false, [](int c, int r) {
        constexpr double half = 0.5 - halfOpen;
        if (c == 0 || c == sides + 2) return at(0.5 + (c == 0 ? -half : half), front, top * r);
        const double turn = pi * (c - 1) / sides;
        return at(0.5 - (half - inBays(line)) * std::cos(turn), front - bulge * std::sin(turn), top * r);
    });
    return joined({column, spandrel});
}

// They throw back the night straight below whoever looks at them.
Shape shadows() {
    const Outline rim = opening(0);
    std::vector<Shape> parts = {lathe({{gallery, wallHeight}, {gallery, top}}, 2 * bays)};
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
