// What stands in the hall besides the ball. In the middle the stage: terraces under the ball, a ring truss on
// five legs above it, a projector round each beam source. Outside the camera's path, one in each quarter, the
// figures of the show: the robot as a colossus, the heap as a pillar, the ship and the probes hung from the
// dome.
//
// All of it is dark metal that shows what the picture of reflections holds, so the shading decides its light:
// what faces straight up or down throws back the glow beyond it, cold below the viewer's eyes, warm above.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/kit/model/paints.h"
#include "production/models/figures.h"
#include "production/models/hall.h"
#include "production/models/models.h"

using namespace model;
using namespace hall;

namespace {

constexpr Uv darkPaint = {7.0 / 16, 0.55 / 16};
constexpr Vec up = {0, 1, 0};

// A lamp, from wherever it is seen.
Shape glowing(const Shape& shape) {
    return shaded(shape, [](Vec, Vec normal) { return normal.y < 0 ? -up : up; });
}

// What was built along +x, carried round to a bearing.
Shape atTurn(const Shape& shape, double turn) {
    return turned(shape, Axis::y, -turn);
}

Shape dark(const Shape& shape) {
    return painted(shape, darkPaint);
}

Shape tube(Vec from, Vec to, double radius, int sides = 6) {
    Sweep how;
    how.path = {from, to};
    how.up = std::abs(normalized(to - from).y) > 0.9 ? Vec{1, 0, 0} : up;
    return sweep(polygon(sides, radius), how);
}

Shape torus(double radius, double y, double thick, int around, int sides) {
    Outline section;
    for (int i = 0; i <= sides; i++) {
        const double a = 2 * pi * (i % sides) / sides;
        section.push_back({radius + thick * std::sin(a), y - thick * std::cos(a)});
    }
    return lathe(section, around);
}

// The terraces from outside in: radius of the riser, its height, and the height of its foot.
struct Terrace {
    double radius, foot, height;
};
constexpr Terrace terraces[] = {{204, 0, 4}, {164, 4, 4}, {124, 8, 4}, {84, 12, 5}, {46, 17, 6}};
constexpr int stageSides = 80;

Shape stageFloor() {
    std::vector<Shape> parts;
    for (size_t i = 0; i < std::size(terraces); i++) {
        const auto [radius, foot, height] = terraces[i];
        const double inner = i + 1 < std::size(terraces) ? terraces[i + 1].radius : 0;
        parts.push_back(lathe({{radius - 2.4, foot + height}, {inner, foot + height}}, stageSides));
    }
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

// Along the line from the ball through a beam source. The barrel hides where the beams are told apart.
Shape projector() {
    const Outline body = {{0, -52},   {2.4, -51},  {3.4, -48}, {3.4, -34}, {4.6, -33}, {4.6, -29},
                          {3.4, -28}, {3.4, -8},   {4.6, -6},  {4.6, 6},   {3.4, 9},   {3, 34},
                          {3.8, 35},  {3.8, 37.6}, {3.2, 38},  {2.6, 37},  {2.4, 2},   {0, 0}};
    const Vec mouth = {sourceRadius, sourceHeight, 0};
    return placed(lathe(body, 16), mouth, ballCentre - mouth);
}

// The ring that the legs and the projectors' tails carry, and the line of light round it.
Shape crown() {
    return joined({torus(crownRadius + 4, crownHeight, 2.4, stageSides, 8),
                   glowing(torus(crownRadius + 10, crownHeight, 0.9, stageSides, 4))});
}

// A leg along +x: a slim blade from the floor outside of the stage, up and in to the crown.
constexpr double legBroad = 1.9, legThick = 1.4;

std::vector<Vec> legPath() {
    return curveThrough({{196, -1, 0},
                         {206, 30, 0},
                         {208, 75, 0},
                         {200, 120, 0},
                         {184, 152, 0},
                         {168, 172, 0},
                         {146, 192, 0},
                         {120, 206, 0}},
                        false, 5);
}

Shape leg() {
    Sweep how;
    how.path = legPath();
    how.up = {0, 0, 1};
    const double last = static_cast<double>(how.path.size() - 1);
    how.change = [=](int step, Outline lens) {
        const double k = step / last, taper = mix(1, 0.15, smoothStep(0.5, 1, k));
        for (Flat& p : lens) p = {p.x * legThick * taper, p.y * legBroad * taper};
        return lens;
    };
    return sweep({{1, 0.1},
                  {0.72, 0.66},
                  {0, 1},
                  {-0.72, 0.66},
                  {-1, 0.1},
                  {-1, -0.1},
                  {-0.72, -0.66},
                  {0, -1},
                  {0.72, -0.66},
                  {1, -0.1}},
                 how);
}

// Carries a mirror of the lower star.
Shape post() {
    const double foot = 4;
    const Shape shaft = lathe({{4, foot},
                               {4, foot + 1.6},
                               {1.4, foot + 4},
                               {1, postHeight - 4},
                               {2.2, postHeight - 2},
                               {2.2, postHeight + 3},
                               {1.2, postHeight + 5},
                               {0, postHeight + 5.4}},
                              10);
    return moved(shaft, {postRadius + 4, 0, 0});
}

// --- The hall's own ---

// Eight slim shafts along the wall, which run on as ribs to the dome's ring.
Shape pillar() {
    const Outline shaft = {{17, 0},   {17, 12},  {13, 16},  {9, 26},   {8, 280}, {9, 554},
                           {13, 564}, {13, 574}, {18, 580}, {18, 592}, {12, 604}};
    Sweep how;
    how.path = curveThrough(
        {{488, 570, 0}, {476, 630, 0}, {424, 702, 0}, {310, 750, 0}, {160, 782, 0}, {60, 794, 0}}, false, 3);
    how.up = {-1, 0, 0};
    const Shape rib = sweep({{-6, -5}, {6, -5}, {6, 3}, {3, 6}, {-3, 6}, {-6, 3}}, how);
    return joined({moved(lathe(shaft, 12), {wallRadius - 18, 0, 0}), rib});
}

Shape ledges() {
    const Outline plinth = {{486, 30}, {484, 28}, {482, 24}, {482, 8}, {478, 4}, {474, 0}};
    const Outline cornice = {{492, 614}, {478, 610}, {472, 598}, {476, 590}, {488, 586}, {496, 580}};
    return insideOut(
        joined({lathe({plinth.rbegin(), plinth.rend()}, 64), lathe({cornice.rbegin(), cornice.rend()}, 64)}));
}

// --- The figures ---

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

// The robot looks along +z in its own model; here it looks at the ball, sunk into the floor to its shins.
constexpr double colossusSize = 3.6,
                 colossusFloor = 32;  // the height in the robot's model that the floor cuts
constexpr double colossusRadius = 396;

Shape asColossus(const Shape& part) {
    const Shape turnedIn = turned(moved(part, {0, -colossusFloor, 0}), Axis::y, -pi / 2);
    return atTurn(moved(scaled(turnedIn, {colossusSize, colossusSize, colossusSize}), {colossusRadius, 0, 0}),
                  colossusTurn);
}

// The face on its screen, dark before glowing glass. A picture's T runs down, so outlines that run
// clockwise in it face the viewer.
Shape ringOnScreen(double s, double t, double inner, double outer) {
    const int sides = 32;
    const double tall = 16.2 / 11.8;  // round on the glass
    return grid(sides, 2, true, false, [&](int c, int r) {
        const double turn = 2 * pi * c / sides, radius = r == 0 ? outer : inner;
        return Vec{s + radius * std::cos(turn), t - radius * tall * std::sin(turn), 0.5};
    });
}

Shape barOnScreen(double s, double t, double halfWidth, double halfHeight) {
    return grid(2, 4, false, false, [&](int c, int r) {
        return Vec{s + (2 * c - 1) * halfWidth, t - (2 * r / 3.0 - 1) * halfHeight, 0.5};
    });
}

Shape face() {
    std::vector<Shape> lines;
    for (const double s : {0.29, 0.71}) {
        lines.push_back(ringOnScreen(s, 0.40, 0.145, 0.19));
        lines.push_back(ringOnScreen(s, 0.40, 0.0, 0.09));
    }
    const double loudness[] = {0.04, 0.08, 0.06, 0.12, 0.06, 0.08, 0.04};
    for (int i = 0; i < 7; i++) lines.push_back(barOnScreen(0.5 + (i - 3) * 0.09, 0.80, 0.024, loudness[i]));
    return figures::onRobotScreen(joined(lines));
}

// Hung by its spine under the dome, its nose sinking.
Shape hungShip() {
    const double size = 2.4;
    Shape ship = scaled(welded(figures::ship(), 0.6), {size, size, size});
    ship = turned(turned(ship, Axis::z, degrees(50)), Axis::x, degrees(-14));
    return atTurn(moved(turned(ship, Axis::y, degrees(14)), {205, 305, 0}), shipTurn);
}

Shape boxPillar() {
    const double size = 1.4, storey = 20 * size, radius = 382;
    const int storeys = 20;
    std::vector<Shape> boxes;
    for (int i = 0; i < storeys; i++) {
        const Shape box = scaled(figures::heapBox(), {size, size, size});
        boxes.push_back(moved(turned(box, Axis::y, degrees(15) * i), {radius, storey * (i + 0.5), 0}));
    }
    return atTurn(joined(boxes), pillarTurn);
}

// The sun behind the ship. It looks down, so that it is warm from everywhere.
Shape sunDisc() {
    const double radius = 175;
    const Vec middle = {wallRadius - 40, 350, 0};  // its edges just before the wall
    const Shape disc =
        placed(lathe({{radius, 0}, {radius - 4, 3}, {radius * 0.6, 4}, {0, 4}}, 48), middle, {-1, 0, 0});
    return shaded(atTurn(disc, shipTurn), [](Vec, Vec) { return up * -0.94 - onRing(shipTurn, 0.34, 0); });
}

struct HungProbe {
    double turn;  // degrees from the quarter's middle
    double radius, height, size, roll;
};
constexpr HungProbe hungProbes[] = {{-22, 350, 260, 2.1, 0.4},
                                    {3, 360, 350, 2.6, -0.2},
                                    {25, 350, 290, 2.1, 0.9},
                                    {-9, 250, 310, 1.5, 0.1},
                                    {13, 250, 228, 1.3, -0.6}};

Shape probeLamps() {
    std::vector<Shape> lamps;
    for (const HungProbe& hung : hungProbes) {
        // Head down, the dish towards the hall.
        Shape probe = turned(welded(figures::probe(), 1.3), Axis::z, pi);
        probe = turned(probe, Axis::y, hung.roll);
        const Vec place = {hung.radius, hung.height, 0};
        probe = moved(scaled(probe, {hung.size, hung.size, hung.size}), place);
        const Shape cable = tube(place + up * (24 * hung.size), {hung.radius, 740, 0}, 0.8, 4);
        lamps.push_back(atTurn(joined({probe, cable}), probesTurn + degrees(hung.turn)));
    }
    return joined(lamps);
}

}  // namespace

void makeStage(const char* path) {
    const double betweenSources = pi / sources;
    const Shape legs = atTurn(around(leg(), sources, Axis::y), betweenSources);
    const Shape middle =
        joined({stageFloor(), risers(), edgeLights(), around(projector(), sources, Axis::y), crown(), legs});
    const Shape posts = atTurn(around(post(), sources, Axis::y), postTurn);
    const Shape pillars = atTurn(around(pillar(), 8, Axis::y), pillarTurn + pi / 8);
    const Shape colossus =
        onlyAbove(asColossus(welded(joined({figures::robotBody(), figures::robotArms(), figures::robotTrim()}), 0.6)), -2);
    writeAml(path, {dark(middle), dark(joined({posts, pillars, ledges()})), dark(colossus),
                    dark(joined({glowing(asColossus(figures::robotScreen())), asColossus(face())})),
                    dark(joined({hungShip(), sunDisc()})), dark(boxPillar()), dark(probeLamps())});
}
