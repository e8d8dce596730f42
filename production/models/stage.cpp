// What stands in the hall besides the ball. In the middle the stage: terraces under the ball, a projector
// hung from the dome at each beam source. Outside the camera's path, one in each quarter, the figures of the
// show: the robot as a colossus, the heap as a tower, the ship's firebird before the sun, a planet in its
// ring.
//
// The stage is dark metal that shows what the picture of reflections holds, so the shading decides its light:
// what faces straight up or down throws back the glow beyond it, cold below the viewer's eyes, warm above.
// The figures are lacquered, and show that where the lamp by the ball lights them for who is across the hall.

#include <algorithm>

#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/arcade.h"
#include "production/models/ball.h"
#include "production/models/comet.h"
#include "production/models/figures.h"
#include "production/models/hall.h"
#include "production/models/models.h"
#include "production/models/paints.h"
#include "production/models/spots.h"
#include "production/models/viewer.h"

using namespace model;
using namespace hall;

namespace {

constexpr Uv darkPaint = middleOf(atlas::hull::dark.part(0.5, 0.05, 1, 1));
constexpr Vec up = {0, 1, 0};

// What was built along +x, carried round to a bearing.
Shape atTurn(const Shape& shape, double turn) {
    return turned(shape, Axis::y, -turn);
}

Shape dark(const Shape& shape) {
    return painted(shape, darkPaint);
}

// Lacquered, in panels of about a breadth, no two of quite the same tone.
Shape lacquered(Shape shape, atlas::hull::Lacquer which, double breadth) {
    const Patch ramp = hull::lacquer(which);
    for (Face& face : shape.faces) {
        const Vec c = faceCentre(shape, face) * (1 / breadth);
        const double at = 41 * std::round(c.x) + 97 * std::round(c.y) + 13 * std::round(c.z);
        const double tone = mix(0.6, 1.0, fraction(std::abs(std::sin(at)) * 437));
        face.uvs.assign(face.points.size(), ramp.at(tone, 0.5));
    }
    return shape;
}

Shape tube(Vec from, Vec to, double radius, int sides = 6) {
    Sweep how;
    how.path = {from, to};
    how.up = std::abs(normalized(to - from).y) > 0.9 ? Vec{1, 0, 0} : up;
    return sweep(polygon(sides, radius), how);
}

// The viewer as he walks by across the hall from what stands in a quarter, so far to his right of straight
// across (radians).
viewer::View across(double turn, double aside) {
    return viewer::standingAt(turn + pi - aside);
}

// What a place must face to show the viewer what lies so far beyond the middle of the lamps over him, or on
// his side of it (radians).
Vec towardsLamps(const viewer::View& view, Vec p, double beyond) {
    return viewer::facing(view, p, {0, std::cos(beyond), -std::sin(beyond)});
}
// Towards the lamp by the ball, of what it lights and of what lies in shade: a third of its light is left
// there.
constexpr double leaning = 1.2, inShade = 2.4;
constexpr double lampMiddle = degrees(11), lampEnds = degrees(25);

// On what stands in a quarter falls the lamp by the ball, which shows its paint: what looks about where that
// is thrown back from leans there, and what lies in shade leans further. And two lamps over the viewer,
// each of a strength of 0..1: a warm one on his right and a cold one on his left, which what looks up to them
// throws back, the farther in the more light falls there; what looks to his right is meant for when he has
// walked there.
struct Lamps {
    double warm, cold;
};
Shape litIn(const Shape& shape, double turn, Lamps lamps) {
    constexpr double sideways = degrees(22), deepWarm = degrees(14), deepCold = degrees(15);
    constexpr double farthest = degrees(50);  // for whom flanks are lit
    const double least = std::max(0.12, 0.4 * std::max(lamps.warm, lamps.cold));
    const Vec right = onRing(turn + pi / 2, 1, 0), back = onRing(turn + pi, 1, 0);
    const Vec warmLamp = normalized(back * 0.30 + up * 0.60 + right * 0.74),
              coldLamp = normalized(back * 0.50 + up * 0.25 - right * 0.80);
    const viewer::View views[] = {across(turn, -sideways), across(turn, 0), across(turn, sideways)};
    return shaded(shape, [=](Vec p, Vec normal) {
        const double warm = lamps.warm * smoothstep(0.38, 0.95, dot(normal, warmLamp)),
                     cold = lamps.cold * smoothstep(0.25, 0.95, dot(normal, coldLamp)),
                     light = std::max(warm, cold), aside = dot(normal, right);
        const viewer::View& view = views[aside < -0.3 ? 0 : aside > 0.3 ? 2 : 1];
        if (light > least)
            return towardsLamps(
                view, p, warm > cold ? mix(lampEnds, deepWarm, light) : -mix(lampEnds, deepCold, light));
        // What turns away is drawn by the glow beyond it.
        constexpr double edge = 0.42;
        if (dot(normal, normalized(view.eye - p)) < edge) return normal;
        const Vec key = viewer::inLampLight(across(turn, farthest * aside), p);
        return normal + key * mix(inShade, leaning, smoothstep(0.2, 0.8, dot(normal, key)));
    });
}

// Lit by the warm lamp over the viewer as he stands so far to the right of straight across, and by nothing
// else; the farther `off` the lamp's middle (radians), the less.
Shape lampLit(const Shape& shape, double turn, double aside, double off = 0) {
    const viewer::View view = across(turn, aside);
    return shaded(shape, [=](Vec p, Vec) { return towardsLamps(view, p, lampMiddle + off); });
}

constexpr int stageSides = 80, floorSides = 96, smallSides = 10;

// A ring of the stage's floor: how far across its terrace it ends, 0..1 from outside, and how steep it seems.
constexpr double darkSlope = 0.04;
constexpr struct {
    double to, slope;
} floorPattern[] = {{0.20, 0.46}, {0.52, darkSlope}, {0.76, 0.34}, {1.0, darkSlope}};

// How steeply a place of the floor seems to fall towards the middle.
double floorSlope(Vec p, double slope, bool outermost) {
    constexpr double steeper = 0.42;  // where the viewer stands high
    // Close before his feet: more would make the reflections pinch to a point.
    constexpr double mostOutside = 0.24;
    const double turn = std::atan2(p.z, p.x);
    if (slope > darkSlope) slope += steeper * (0.5 + 0.5 * std::sin(2 * turn));
    if (outermost) slope = std::min(slope, mostOutside);
    return slope;
}

// A ring's plates, dark joints between them. No two lie quite alike, so that what they throw back breaks from
// one to the next.
Shape plates(double outer, double inner, double top, double slope, bool outermost) {
    constexpr double breadth = 34, joint = 0.5, uneven = 0.03, leaning = 0.015;
    const int count = int(2 * pi * outer / breadth), columns = 3;
    std::vector<Shape> parts;
    for (int i = 0; i < count; i++) {
        const double from = 2 * pi * i / count + joint / outer, to = 2 * pi * (i + 1) / count - joint / outer;
        const auto strip = [=](double left, double right, int columns) {
            return grid(columns, 2, false, false, [=](int c, int r) {
                return onRing(mix(right, left, double(c) / (columns - 1)), r == 0 ? outer : inner, top);
            });
        };
        const Shape plate = strip(from, to, columns), gap = strip(to, to + 2 * joint / outer, 2);
        const double own = slope + uneven * (fraction(0.618034 * i + 0.37 * outer) - 0.5),
                     aside = leaning * (fraction(0.754878 * i + 0.11 * outer) - 0.5);
        parts.push_back(shaded(gap, [=](Vec p, Vec) {
            return up - normalized(Vec{p.x, 0, p.z}) * floorSlope(p, darkSlope, outermost);
        }));
        parts.push_back(shaded(plate, [=](Vec p, Vec) {
            const Vec out = normalized(Vec{p.x, 0, p.z});
            return up - out * floorSlope(p, own, outermost) + cross(out, up) * aside;
        }));
    }
    return joined(parts);
}

// Polished rings. Lit ones seem to fall towards the middle, so that what a viewer sees before his feet too
// throws back the glow beyond, the more so the higher he stands there; between them lie dark ones, which
// throw back the night above him.
Shape stageFloor() {
    std::vector<Shape> parts;
    for (size_t i = 0; i < std::size(terraces); i++) {
        const double top = terraces[i].foot + terraces[i].height, outer = terraces[i].radius - 2.4,
                     inner = i + 1 < std::size(terraces) ? terraces[i + 1].radius : 0;
        double from = outer;
        for (const auto& ring : floorPattern) {
            const double to = mix(outer, inner, ring.to);
            if (ring.slope > darkSlope)
                parts.push_back(plates(from, to, top, ring.slope, i == 0));
            else
                parts.push_back(shaded(lathe({{from, top}, {to, top}}, floorSides), [=](Vec p, Vec) {
                    return up - normalized(Vec{p.x, 0, p.z}) * floorSlope(p, ring.slope, i == 0);
                }));
            from = to;
        }
    }
    return joined(parts);
}

// What the ball stands in.
Shape ballCup() {
    const double foot = terraces[std::size(terraces) - 1].foot + terraces[std::size(terraces) - 1].height;
    const Outline profile = {{42, foot},     {42, foot + 2},  {39, foot + 4}, {35, foot + 5},
                             {32, foot + 9}, {30, foot + 10}, {28, foot + 9}, {27, foot}};
    return shaded(lathe(profile, stageSides / 2), [](Vec p, Vec normal) {
        return normal + up * 0.3 + normalized(Vec{p.x, 0, p.z}) * 0.3;
    });
}

// A strip of the floor that leans, as light sees it, by `lean` (horizontal; 1 is half-way to lying on its
// side).
Shape inlay(Vec middle, Vec right, Vec away, Vec lean) {
    Shape shape;
    shape.points = {middle - right - away, middle + right - away, middle + right + away,
                    middle - right + away};
    addFace(shape, {0, 1, 2, 3});
    return shaded(shape, [=](Vec, Vec) { return up + lean; });
}

// The stage's drawing, let into the floor: the face of a clock with its sixty strokes, and in it the paths of
// what circles, all of short strips of light. What leans away from the viewer throws back the warm glow low
// beyond it: strips lean in turn to all sides, so that wherever he stands one of four is lit, and the light
// runs round as he moves.
Shape inlays() {
    constexpr double lean = 0.66, over = 0.2;
    std::vector<Shape> parts;
    const auto strip = [&](double turn, double radius, double top, double along, double out, double towards) {
        parts.push_back(inlay(onRing(turn, radius, top + over), onRing(turn - pi / 2, along, 0),
                              onRing(turn + pi, out, 0), onRing(turn + towards, lean, 0)));
    };
    for (int i = 0; i < 60; i++) {
        const double turn = towerTurn + 2 * pi * i / 60, half = i % 5 == 0 ? 7 : 3;
        for (const double side : {-1.0, 1.0})
            strip(turn + side * 0.0035, 198 - half, 4, 0.7, half, side < 0 ? pi : 0);
    }
    constexpr struct {
        double radius, top;
        int strips;
    } paths[] = {{174, 4, 160}, {148, 8, 132}, {104, 12, 96}, {66, 17, 60}};
    for (const auto& [radius, top, strips] : paths)
        for (int i = 0; i < strips; i++)
            strip(2 * pi * (i + 0.5) / strips, radius, top, pi * radius / strips * 0.94, 0.8,
                  pi / 2 * (i % 4));
    return joined(parts);
}

// Rings of light let into the dark floor round the stage, out to the wall: they seem to fall towards the
// middle as the stage's do.
Shape floorRings() {
    constexpr double over = 0.4, fall = 0.45;
    constexpr struct { double radius, breadth; } rings[] = {{222, 8}, {296, 22}, {352, 26}, {420, 32}};
    std::vector<Shape> parts;
    for (const auto& [radius, breadth] : rings)
        parts.push_back(
            shaded(lathe({{radius + breadth, over}, {radius, over}}, stageSides), [=](Vec p, Vec) {
                return up + normalized(Vec{p.x, 0, p.z}) * fall;
            }));
    return joined(parts);
}

Shape risers() {
    std::vector<Shape> parts;
    for (const auto& [radius, foot, height] : terraces)
        parts.push_back(lathe({{radius, foot}, {radius, foot + height - 1.6}}, stageSides));
    return joined(parts);
}

Shape edgeLights() {
    std::vector<Shape> parts;
    for (const auto& [radius, foot, height] : terraces)
        parts.push_back(lathe(
            {{radius, foot + height - 1.6}, {radius - 0.8, foot + height}, {radius - 2.4, foot + height}},
            stageSides));
    // Tilted, so that the near half of a ring shows what hangs high beyond it and the far half what lies low.
    return shaded(joined(parts), [](Vec p, Vec) { return up + normalized(Vec{p.x, 0, p.z}) * 0.55; });
}

// Along the line from the ball through a beam source, hung from the dome. The barrel hides where the beams
// are folded.
Shape projector() {
    const Outline body = {{0, -12},  {1.4, -11.6}, {2, -10}, {2, -5},     {2.9, -4}, {2.9, 16},
                          {3.4, 17}, {3.4, 19.4},  {3, 20},  {2.6, 19.4}, {2.3, 3},  {0, 2}};
    const Vec mouth = {sourceRadius, sourceHeight, 0};
    return joined({placed(lathe(body, smallSides), mouth, ballCentre - mouth),
                   tube(mouth + up * 2, {sourceRadius, 770, 0}, 0.5, 4)});
}

// Under each of them a stud, where a beam is turned.
Shape stud() {
    return moved(
        lathe(
            {{6, 7}, {6, 9}, {4, 11}, {3.4, starHeight - 5}, {3.8, starHeight - 2.4}, {0, starHeight - 1.6}},
            smallSides),
        {starRadius, 0, 0});
}

// --- The hall's own ---

// Under the dome.
Shape cornice() {
    const Outline profile = {{492, 596}, {478, 592}, {472, 580}, {476, 572}, {484, 568}, {488, 562}};
    return insideOut(lathe({profile.rbegin(), profile.rend()}, 64));
}

// --- The figures ---

// Without the faces that turn their back on every place the viewer gets to.
Shape onlySeen(const Shape& shape) {
    std::vector<Vec> eyes;
    for (int i = 0; i < 72; i++)
        for (const double radius : {pathIn, pathOut})
            for (const double height : {50.0, 150.0}) eyes.push_back(onRing(2 * pi * i / 72, radius, height));
    Shape seen;
    seen.points = shape.points;
    for (const Face& face : shape.faces) {
        const Vec centre = faceCentre(shape, face), normal = areaVector(shape, face);
        if (std::any_of(eyes.begin(), eyes.end(), [&](Vec eye) { return dot(normal, eye - centre) > 0; }))
            seen.faces.push_back(face);
    }
    return seen;
}

Shape onlyAbove(const Shape& shape, double y) {
    Shape kept;
    kept.points = shape.points;
    for (const Face& face : shape.faces) {
        bool above = false;
        for (int point : face.points) above |= shape.points[point].y > y;
        if (above) kept.faces.push_back(face);
    }
    return kept;
}

// Glass in which the night below the viewer is seen, so that what stands on it is read.
Shape darkGlass(const Shape& shape) {
    return shaded(shape, [](Vec, Vec normal) { return normal - up * 0.22; });
}

// The robot looks along +z in its own model; here it looks at the ball, sunk into the floor to its chest.
constexpr double colossusSize = 4.8,
                 colossusFloor = 96;  // the height in the robot's model that the floor cuts
constexpr double colossusRadius = 404;

Shape asColossus(const Shape& part) {
    const Shape turnedIn = turned(moved(part, {0, -colossusFloor, 0}), Axis::y, -pi / 2);
    return atTurn(moved(scaled(turnedIn, {colossusSize, colossusSize, colossusSize}), {colossusRadius, 0, 0}),
                  colossusTurn);
}

// Of lines that lie side by side, each second one lit by the warm lamp over the viewer for who comes from the
// right and the others for who leaves to the left; before them he sees one light.
Shape alwaysLit(const std::vector<Shape>& lines, double turn) {
    std::vector<Shape> sets[2];
    for (size_t i = 0; i < lines.size(); i++) sets[i % 2].push_back(lines[i]);
    return joined({lampLit(joined(sets[0]), turn, degrees(25), -degrees(6)),
                   lampLit(joined(sets[1]), turn, -degrees(40), degrees(2))});
}

// What its screen shows, in lines on dim glass: two eyes and a smile. A picture's T runs down.
Shape face() {
    constexpr double tall = figures::robotScreenHalf.x / figures::robotScreenHalf.y;  // T is stretched
    constexpr double eyeRadius = 0.19, pupilRadius = 0.075, smileRadius = 0.33, smileHalf = 0.05;
    constexpr double ridge = 1.8;  // units over the glass
    constexpr int steps = 24, linesOfEye = 18, linesOfSmile = 4;
    std::vector<Shape> lines;
    const auto add = [&](const Shape& line) { lines.push_back(asColossus(figures::onRobotScreen(line))); };
    const auto chord = [](double radius, double y) {
        return std::sqrt(std::max(radius * radius - y * y, 0.0));
    };
    for (int i = 0; i < linesOfEye; i++) {
        std::vector<Shape> pieces;
        for (const double middle : {0.27, 0.73})
            for (const double side : {-1.0, 1.0})
                pieces.push_back(grid(2, 2, false, false, [&](int c, int r) {
                    const double y = eyeRadius * (2.0 * (i + 1 - r) / linesOfEye - 1);
                    return Vec{middle + side * chord((c == 0) == (side < 0) ? eyeRadius : pupilRadius, y),
                               0.40 + tall * y, ridge};
                }));
        add(joined(pieces));
    }
    for (int i = 0; i < linesOfSmile; i++)
        add(grid(steps + 1, 2, false, false, [&](int c, int r) {
            const double s = 0.36 * (double(c) / steps - 0.5);
            return Vec{
                0.5 + s,
                0.34 + tall * chord(smileRadius, s) + smileHalf * (2.0 * (i + 1 - r) / linesOfSmile - 1),
                ridge};
        }));
    return alwaysLit(lines, colossusTurn);
}

// The firebird before the sun, its wings spread across it, its head sinking towards the hall.
Shape hungShip() {
    constexpr double size = 0.62;
    Shape ship = scaled(welded(figures::ship(), 2.2), {size, size, size});
    ship = turned(turned(ship, Axis::z, degrees(10)), Axis::x, degrees(-14));
    return atTurn(moved(turned(ship, Axis::y, degrees(52)), {318, 285, 0}), shipTurn);
}

// A storey of the tower: a floor that reaches out beyond its rooms, of so half a length and breadth.
constexpr double roomsLong = 68, roomsBroad = 36;
Shape storeyOfTower() {
    constexpr double slab = 3, half = 9.3;
    const Outline floor = {{58, -43}, {79, -29}, {92, -10}, {92, 10},   {79, 29},   {58, 43},
                           {-74, 43}, {-87, 36}, {-92, 24}, {-92, -24}, {-87, -36}, {-74, -43}};
    return joined({moved(turned(extrude(floor, slab, 0), Axis::x, -pi / 2), {0, -half, 0}),
                   moved(box({2 * roomsLong, 2 * half - slab, 2 * roomsBroad}, 0), {0, slab / 2, 0})});
}

// Each over the one below, turned on, of what `part` makes of it.
Shape tower(const std::function<Shape(int storey)>& part) {
    const double size = 2, slim = 0.45 * size, tall = fitting::storey * size, radius = 375;
    const int storeys = 13;
    std::vector<Shape> all;
    for (int i = 0; i < storeys; i++) {
        const double thin = slim * (1 - 0.5 * i / storeys);
        const Shape box = scaled(part(i), {thin, size, thin});
        all.push_back(moved(turned(box, Axis::y, degrees(22) * i), {radius, tall * (i + 0.5), 0}));
    }
    return atTurn(joined(all), towerTurn);
}

// Lit windows before its rooms, every second one from below.
Shape towerWindows() {
    constexpr int onSide = 5, kinds = 4;
    constexpr double pitch = 2 * roomsLong / onSide, wide = 0.72 * pitch, low = -5.4, high = 6,
                     out = roomsBroad + 1;
    std::vector<Shape> fromBelow, byLamp;
    for (int kind = 0; kind < kinds; kind++) {
        const Shape windows = onlySeen(tower([=](int storey) {
            std::vector<Shape> lit;
            for (int i = 0; i < 2 * onSide; i++) {
                if ((storey + i) % kinds != kind) continue;
                const double from = pitch * (i % onSide - 0.5 * (onSide - 1)) - wide / 2;
                const Shape window = grid(2, 2, false, false, [=](int c, int r) {
                    return Vec{from + wide * c, r == 0 ? low : high, out};
                });
                lit.push_back(turned(window, Axis::y, pi * (i / onSide)));
            }
            return joined(lit);
        }));
        (kind % 2 == 0 ? fromBelow : byLamp).push_back(windows);
    }
    return joined({shaded(joined(fromBelow), [](Vec, Vec normal) { return normal * 0.02 - up; }),
                   alwaysLit(byLamp, towerTurn)});
}

// The moon, the tower before its hollow, one horn over the other: warm as it comes, cold then.
Shape moon() {
    constexpr double radius = 200, middle = 385, hollow = 0.91, away = 0.29, aslant = degrees(38);
    constexpr double turnedAside = degrees(-5);         // from the tower
    constexpr double out = arcade::clearOfColumns - 6;  // before the comet
    constexpr int steps = 24;
    // Where the two circles meet, from their middles on.
    const double horn = std::acos((1 + away * away - hollow * hollow) / (2 * away));
    const double within = std::atan2(std::sin(horn), std::cos(horn) - away);
    const Shape shape = grid(steps + 1, 2, false, false, [&](int c, int r) {
        const double k = 2.0 * c / steps - 1, turn = aslant + pi + k * (pi - (r == 0 ? horn : within)),
                     size = radius * (r == 0 ? 1 : hollow), moved = r == 0 ? 0 : radius * away;
        return onRing(towerTurn + turnedAside + (size * std::cos(turn) + moved * std::cos(aslant)) / out, out,
                      middle + size * std::sin(turn) + moved * std::sin(aslant));
    });
    return lampLit(shape, towerTurn, -degrees(10), -lampMiddle - degrees(12));
}

// The sun behind the firebird, cut into ever thinner bands towards the horizon.
Shape sunDisc() {
    constexpr double radius = 206, middle = 292;
    const double distance = std::sqrt(arcade::clearOfColumns * arcade::clearOfColumns - radius * radius);
    struct Band {
        double low, high;  // of the radius
        int steps;
    };
    constexpr Band bands[] = {{0.06, 1, 14},       {-0.115, 0.02, 3},   {-0.285, -0.165, 3},
                              {-0.465, -0.355, 3}, {-0.655, -0.555, 3}, {-0.845, -0.765, 3}};
    std::vector<Shape> parts;
    for (const Band& band : bands)
        parts.push_back(grid(2, band.steps, false, false, [&](int c, int r) {
            // Closer together where the outline turns.
            const double k = double(r) / (band.steps - 1), y = mix(band.low, band.high, std::sin(k * pi / 2));
            return Vec{distance, middle + radius * y,
                       radius * std::sqrt(std::max(1 - y * y, 1e-4)) * (c == 0 ? -1 : 1)};
        }));
    // So far to the lamp's side that none of it ever shows the cold one, from wherever the sun is seen.
    constexpr double askew = 0.17;
    const viewer::View view = across(shipTurn, -degrees(20));
    const Vec shown = normalized(Vec{-askew, std::cos(degrees(16)), -std::sin(degrees(16))});
    return shaded(atTurn(joined(parts), shipTurn),
                  [=](Vec p, Vec) { return viewer::facing(view, p, shown); });
}

// A planet in bands and cold light, which falls on it from the upper right, and its ring of two bands in warm
// light: the inner one shines for who comes from the right, the outer one for who leaves to the left.
Shape planet() {
    constexpr double radius = 140, ringEnds = 2.05, flat = 0.24, tilt = degrees(17), middle = 318;
    const double distance =
        std::sqrt(arcade::clearOfColumns * arcade::clearOfColumns - ringEnds * ringEnds * radius * radius);
    // In its radii, along the ring and across it; so far before its own plane.
    const auto at = [=](double along, double up, double before) {
        return Vec{distance - before, middle + radius * (std::sin(tilt) * along + std::cos(tilt) * up),
                   radius * (std::cos(tilt) * along - std::sin(tilt) * up)};
    };
    constexpr double tones[] = {4, 0, 6, 1, 8, 0, 3, 7, 2, 5};
    constexpr int bands = int(std::size(tones)), columns = 12, steps = 24;
    std::vector<Shape> parts;
    for (int i = 0; i < bands; i++) {
        const Shape band = grid(columns, 3, false, false, [&](int c, int r) {
            const double up = -std::cos(pi * (i + r / 2.0) / bands),
                         half = std::sqrt(std::max(1 - up * up, 1e-4));
            return at(half * (2.0 * c / (columns - 1) - 1), up, 0);
        });
        // Its night is the side that is lit first: what is dark when the rest is seen well.
        parts.push_back(shaded(atTurn(band, planetTurn), [&](Vec p, Vec) {
            const Vec from = turned({{p}, {}}, Axis::y, planetTurn).points[0] - at(0, 0, 0);
            const double day = 0.5 + 0.5 * (0.84 * from.z + 0.55 * from.y) / radius;
            const double beyond = degrees(8 + 1.1 * tones[i] + 11 * (1 - day));
            return viewer::facing(across(planetTurn, -degrees(mix(4, 26, day))), p,
                                  {0, std::cos(beyond), std::sin(beyond)});
        }));
    }
    constexpr double edges[][2] = {{1.38, 1.66}, {1.72, ringEnds}};
    for (const auto& [from, to] : edges)
        for (const double side : {-1.0, 1.0})  // behind it and before it
            parts.push_back(lampLit(
                atTurn(grid(steps + 1, 2, false, false,
                            [&](int c, int r) {
                                const double turn = pi * c / steps, out = side * (r == 0 ? from : to);
                                return at(out * std::cos(turn), -out * flat * std::sin(turn), 3 * side);
                            }),
                       planetTurn),
                planetTurn, degrees(from < 1.5 ? 18 : -8), degrees(from < 1.5 ? -2 : 4)));
    return joined(parts);
}

}  // namespace

void makeStage(const char* path) {
    const Shape middle = joined({stageFloor(), inlays(), risers(), edgeLights(), ballCup(),
                                 around(projector(), sources), around(stud(), sources)});
    // As coarse as the viewer can tell, which is finer in fingers and aerials.
    const auto ofColossus = [](const Shape& part, double coarse) {
        return litIn(onlySeen(onlyAbove(asColossus(welded(part, coarse)), -2)), colossusTurn, {0.85, 1});
    };
    const Shape shells = lacquered(ofColossus(figures::robotShells(), 0.9), atlas::hull::ivory, 44),
                works = lacquered(ofColossus(figures::robotWorks(), 1.6), atlas::hull::petrol, 44),
                trim = lacquered(ofColossus(figures::robotTrim(), 1.6), atlas::hull::orange, 44);
    const Shape itsGlass = darkGlass(asColossus(figures::robotScreen()));
    const Shape streaks = joined({comet::tracks(), spots::onWall()});
    constexpr atlas::hull::Lacquer colours[] = {atlas::hull::violet, atlas::hull::petrol, atlas::hull::blue,
                                                atlas::hull::petrol};
    std::vector<Shape> piers;
    for (int i = 0; i < arcade::bays; i++) {
        const double turn = arcade::turnOf(i);
        piers.push_back(lacquered(litIn(onlySeen(atTurn(arcade::stone(), turn)), turn, {0, 0}),
                                  colours[quarterOf(turn)], 60));
    }
    const Shape ground =
        shaded(lathe({{wallRadius, 0}, {terraces[0].radius - 2.4, 0}}, stageSides), [](Vec p, Vec) {
            return up - normalized(Vec{p.x, 0, p.z}) * darkSlope;
        });
    // From far to near: while the hall fades in, each is drawn over all before it.
    writeAml(path, {dark(joined({arcade::niches(), arcade::shadows()})), joined(piers),
                    dark(joined({arcade::mouldings(), ground, floorRings(), onlySeen(cornice()), streaks,
                                 moon(), sunDisc(), planet()})),
                    lacquered(litIn(onlySeen(hungShip()), shipTurn, {0.0, 1.6}), atlas::hull::ivory, 16),
                    joined({shells, works, trim}), dark(joined({itsGlass, face()})),
                    lacquered(litIn(onlySeen(tower([](int) { return storeyOfTower(); })), towerTurn, {0, 0}),
                              atlas::hull::petrol, 25),
                    dark(towerWindows()), dark(joined({middle, ball::rim()})), ball::mirrors()});
}
