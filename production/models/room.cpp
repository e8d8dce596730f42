// The hall round the ball: the copy that beams are traced against, and what is drawn over it. Ten pleated
// bays stand between ten pillars; above hangs a ring that holds the five beam sources.
#include <span>

#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/kit/model/paints.h"
#include "production/models/models.h"

using namespace model;

namespace {

constexpr int bays = 10;
constexpr int columns = bays * 2;  // a ridge and a crease to each bay
constexpr int sources = 5;
constexpr double sourceRadius = 120, sourceHeight = 140;  // of the beams' origins
constexpr Vec ballCentre = {0, 70, 0};

// A height of the skin: the distances from the axis of its ridges, and of its creases in every other bay and
// in the bays between. Creases swing in and out from course to course, so that hardly two plates are
// parallel. Plates above it, up to the next: how many in each quad, how far they swell (units), what each
// quad shows, or each plate of it.
struct Course {
    double y, ridge, crease, otherCrease;
    int across = 1, along = 1;
    double swell = 0;
    Patch patch = walls::upperHalf;
    bool eachPlate = false;
};

constexpr Course wall[] = {{0, 304, 304, 304, 2, 1, 1, walls::lowerHalf, false},
                           {26, 318, 336, 322, 2, 2, 3, walls::upperHalf, false},
                           {92, 318, 318, 344, 2, 1, 3, walls::lamp, true},
                           {158, 318, 342, 318, 2, 2, 3, walls::lowerHalf, false},
                           {224, 310, 318, 336, 2, 1, 2, walls::upperHalf, false},
                           {248, 284, 288, 290}};
constexpr Course ceiling[] = {{248, 284, 288, 290, 2, 2, 2, walls::lamp, true},
                              {276, 196, 204, 204, 2, 2, 2, walls::lamp, true},
                              {266, 92, 92, 92},
                              {282, 70, 70, 70},
                              {290, 0, 0, 0}};
constexpr Course ground[] = {{0, 0, 0, 0},
                             {0, 66, 66, 66, 1, 2, 3, walls::lamp, true},
                             {0, 180, 180, 180, 2, 2, 4, walls::lamp, true},
                             {0, 304, 304, 304}};

// A place round the hall; ridges have whole even columns.
Vec inHall(double column, double radius, double y) {
    const double angle = 2 * pi * (column + 1) / columns;
    return {radius * std::cos(angle), y, radius * std::sin(angle)};
}

// The quads from one course to the next. Columns run clockwise seen from above, so that a rising front faces
// the axis.
Shape belt(const Course* course) {
    return welded(grid(columns, 2, true, false, [&](int c, int r) {
        const Course& at = course[r];
        return inHall(c, c % 2 == 0 ? at.ridge : c % 4 == 1 ? at.crease : at.otherCrease, at.y);
    }));
}

Shape collisionSkin(std::span<const Course> courses) {
    std::vector<Shape> belts;
    for (size_t i = 0; i + 1 < courses.size(); i++)
        belts.push_back(mappedEach(belt(&courses[i]), courses[i].patch));
    return joined(belts);
}

// The skin cut into plates that swell, so that each holds a highlight of its own.
Shape platedSkin(std::span<const Course> courses) {
    std::vector<Shape> belts;
    for (size_t i = 0; i + 1 < courses.size(); i++) {
        const Course& course = courses[i];
        Shape plates = mappedEach(belt(&course), course.patch);
        plates = divided(plates, course.across, course.along);
        if (course.eachPlate) plates = mappedEach(plates, course.patch);
        belts.push_back(pillowed(plates, {0.05, 1, course.swell, course.swell > 2 ? 4 : 2}));
    }
    return joined(belts);
}

Shape pillar() {
    const Outline wall = platedProfile({7, 20, 26, 88, 94, 155, 161, 212, 218, 232}, {2, 1.4, 1.2, 32},
                                       [](double y) { return 9.4 + 1.6 * smoothStep(190, 232, y); });
    const Outline profile =
        chained({{{13, 0}, {13, 5}, {11.4, 6.4}}, wall, {{13, 233}, {14, 236}, {14, 242}, {11, 248}}});
    return moved(lathe(profile, 12), inHall(0, 316, 0));
}

// A rib from a pillar's head over the ceiling to the ring in its middle.
Shape rib() {
    Sweep how;
    how.path = curveThrough({inHall(0, 312, 222), inHall(0, 296, 240), inHall(0, 262, 252),
                             inHall(0, 196, 271), inHall(0, 140, 267), inHall(0, 92, 262)},
                            false, 3);
    how.up = {0, -1, 0};
    return sweep({{-5, -4}, {5, -4}, {5, 2}, {3.4, 4}, {-3.4, 4}, {-5, 2}}, how);
}

Shape oculus() {
    const Outline rim = {{98, 268},   {98, 262},   {96, 258.6}, {92, 257.4},
                         {86, 257.4}, {82, 258.6}, {80, 262},   {80, 270}};
    const Outline lamp = {{58, 288}, {58, 281}, {55, 278}, {48, 278}, {45, 281}, {36, 282},
                          {34, 277}, {30, 274}, {22, 274}, {19, 278}, {8, 276},  {0, 275}};
    const Shape ring = panelled(insideOut(lathe({rim.rbegin(), rim.rend()}, 40)), {0.8, 0.8, 0.9, 0.9});
    return joined({ring, insideOut(lathe({lamp.rbegin(), lamp.rend()}, 40))});
}

// A ring set in the middle of a bay.
Shape porthole(int bay) {
    const Outline rings = {{21, -24}, {21, 2},  {19.6, 4}, {16.4, 4}, {15, 2},
                           {14, -1},  {11, -1}, {10, 1.4}, {5, 3.4},  {0, 4}};
    const Vec place = inHall(1 + 2 * bay, 322, 125);
    return placed(lathe(rings, 18), place, {-place.x, 0, -place.z});
}

// The mouth of a beam source, its axis on the line to the ball.
Shape source() {
    const Outline profile = {{0, -30},    {3.4, -29},  {4.4, -26}, {4.4, -20},  {6.4, -19},  {6.4, -12},
                             {4.6, -11},  {4.6, -9.6}, {5.6, -9},  {5.6, -7.4}, {4.4, -6.8}, {4.4, -5.4},
                             {5.2, -4.8}, {5.2, -1},   {4.6, 0},   {3, 0},      {2.2, -2},   {0, -2.6}};
    const Vec mouth = {sourceRadius, sourceHeight, 0};
    return placed(lathe(profile, 16), mouth, ballCentre - mouth);
}

// The hanging ring, and a rod to the ceiling at each source.
Shape gantry() {
    const double radius = 138, y = 151;
    const Outline section = {{radius - 4, y}, {radius - 2.6, y - 3}, {radius + 2.6, y - 3},
                             {radius + 4, y}, {radius + 2.6, y + 3}, {radius - 2.6, y + 3},
                             {radius - 4, y}};
    const Shape ring = panelled(lathe(section, 45), {0.5, 0.5, 0.6, 0.9});
    const Outline rod = {{0, y},      {5, y + 1},    {5, y + 5},     {1.8, y + 8}, {1.8, y + 50}, {3, y + 51},
                         {3, y + 55}, {1.8, y + 56}, {1.8, y + 104}, {4, y + 108}, {4, y + 122}};
    const Shape hanger = moved(lathe(rod, 10), {radius, 0, 0});
    return joined({ring, around(joined({hanger, source()}), sources, Axis::y)});
}

}  // namespace

void makeRoomCollision(const char* path) {
    writeAml(path,
             {smoothed(joined({collisionSkin(wall), collisionSkin(ceiling), collisionSkin(ground)}), hard)});
}

void makeRoom(const char* path) {
    const Shape shell = joined({platedSkin(wall), platedSkin(ceiling), platedSkin(ground)});
    std::vector<Shape> fittings = {oculus(), gantry(), around(joined({pillar(), rib()}), bays, Axis::y)};
    for (int bay = 0; bay < bays; bay++) fittings.push_back(porthole(bay));
    // Everything that stands before the walls is as pale as their lamps, so that it stands out.
    writeAml(path, {shell, painted(joined(fittings), walls::lampLight)});
}
