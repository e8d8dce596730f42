// The ship of the laser corridor: a dart of plates and a bell of six petals between two rings of emitters,
// nose towards -z, since the tunnel streams to +z. Six beams leave each ring at 30, 90, 150 ... degrees round
// the z axis.
#include <algorithm>

#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/figures.h"
#include "production/models/models.h"
#include "production/models/paints.h"

using namespace model;

namespace {

constexpr double emitterZ = 52;                  // of both rings
constexpr double frontRing = 22, rearRing = 33;  // radius of each ring's nozzle mouths

// The hull is built standing on its tail along y and laid down at the end: y = 90 is the nose. A needle, a
// shoulder under the front ring, a slim waist and the swelling that carries the engines.
double hullRadius(double y) {
    const double nose = 14.5 * std::pow(std::clamp((92 - y) / 50, 0.0, 1.0), 0.8);
    const double waist = 5.5 * smoothstep(34, 8, y) * smoothstep(-34, -4, y);
    return nose - waist + 8 * smoothstep(-10, -44, y) - 5 * smoothstep(-54, -78, y);
}

// What each stretch of the hull shows of the picture, from its lower end (y) up.
struct Band {
    double low;
    Patch patch;
};

constexpr int flutes = 6;
constexpr Band livery[] = {{-80, hull::vents},  {-62, hull::striped}, {-42, hull::lettered},
                           {-11, hull::dark},   {13, hull::plain},    {32, hull::numbered},
                           {55, hull::striped}, {74, hull::plain},    {92, {}}};

// Between two grooves each band is painted along the ship, so that it reads from nose to tail.
Shape painted(const Shape& shape) {
    return mappedBy(shape, [&](const Face& face, Vec p) {
        const Vec centre = faceCentre(shape, face);
        const Band* band = livery;
        while (centre.y > band[1].low) band++;
        const double land = std::floor(std::atan2(-centre.z, centre.x) / (2 * pi) * flutes);
        const double turn =
            std::hypot(p.x, p.z) > 0.01 ? std::atan2(-p.z, p.x) / (2 * pi) * flutes - land : 0.5;
        const double across = turn - flutes * std::round((turn - 0.5) / flutes);
        return band->patch.at((band[1].low - p.y) / (band[1].low - band->low), across);
    });
}

Shape body() {
    const Outline plates =
        platedProfile({-80, -70, -62, -42, -30, -20, -11, -3, 5, 13, 22, 32, 46, 58, 66, 74, 81, 89.5},
                      {1.8, 1.6, 1.1, 9}, hullRadius);
    const Outline tail = {{0, -74}, {hullRadius(-80) - 4, -74}, {hullRadius(-80) - 3, -80}};
    const Outline profile = chained({tail, plates, {{0, 91}}});
    return painted(flutedLathe(profile, {flutes, 0.16, 1.4, -66, 62, 4}, 0));
}

// The ship's sails are six petals of a bell, each between two beams: pearl outside, copper within, where
// those who look from behind see it, and its rim a line of light.
struct Rib {
    double out, up, half;  // from the axis, along it, and half its breadth
};
constexpr Rib ribs[] = {{13, 22, 3},     {19, 8, 7.5},  {27, -12, 10.5},
                        {38, -36, 12.5}, {48, -58, 11}, {55, -74, 7.5}};

// One side of a petal, moved outwards, from its root up to the hoop.
Shape petalSide(double lift, double wider = 0) {
    std::vector<Vec> middle, breadth;
    for (const Rib& rib : ribs)
        middle.push_back({rib.out + lift, rib.up, 0}), breadth.push_back({rib.half + wider, 0, 0});
    middle = curveThrough(middle, false, 2), breadth = curveThrough(breadth, false, 2);
    const int columns = 5, rows = int(middle.size());
    return grid(columns, rows, false, false, [&](int c, int r) {
        const double across = 2.0 * c / (columns - 1) - 1, z = -breadth[r].x * across;
        // Bent round the axis as far as a bell is.
        return Vec{std::sqrt(std::max(middle[r].x * middle[r].x - z * z, 0.0)), middle[r].y, z};
    });
}

Shape petal() {
    const Shape outer = painted(petalSide(0.9), hull::pearl),
                rim = painted(petalSide(0, 1.1), hull::coolLamp);
    const Shape inner = painted(petalSide(-0.9), hull::copper);
    return joined({insideOut(outer), insideOut(rim), rim, inner});
}

// What the ship is known by from ahead and from behind: a flat hoop that the petals carry, dark
// outside, with a line of light along its after edge.
Shape hoop() {
    const Shape band = lathe(
        {{55, -75.4}, {57.4, -76}, {58.6, -80}, {58.6, -84}, {56.2, -84}, {54.8, -77}, {55, -75.4}}, 36);
    const Shape light = lathe({{57.4, -85.2}, {58.8, -85.2}, {58.8, -84}, {57.4, -84}, {57.4, -85.2}}, 36);
    // From ahead the ship is found by the band of light before it, which nobody sees from behind.
    const Shape fore = lathe({{58.8, -74}, {46, -70}}, 36);
    return joined({painted(band, hull::dark), painted(joined({light, fore}), hull::coolLamp)});
}

// A stubby nozzle along +x from the axis, its glowing mouth at `reach`.
Shape nozzle(double from, double reach, double size) {
    const Outline tube = {{size * 1.25, from},        {size * 1.25, reach - 5.4}, {size * 0.85, reach - 4.6},
                          {size * 0.85, reach - 3.4}, {size * 1.1, reach - 2.8},  {size * 1.1, reach - 0.5},
                          {size * 0.95, reach},       {size * 0.7, reach}};
    const Outline mouth = {{size * 0.7, reach}, {size * 0.55, reach - 1.6}, {0, reach - 0.9}};
    return turned(joined({painted(lathe(tube, 14), hull::plain), painted(lathe(mouth, 14), hull::coolLamp)}),
                  Axis::z, -pi / 2);
}

// The collar that six nozzles stand on, about the y axis at height 0.
Shape emitterRing(double reach, double size) {
    const double rim = reach - 5;
    const Shape collar = flutedLathe({{rim - 9, -6.5},
                                      {rim - 3, -6},
                                      {rim - 0.8, -4.6},
                                      {rim, -3},
                                      {rim, 3},
                                      {rim - 0.8, 4.6},
                                      {rim - 3, 6},
                                      {rim - 9, 6.5}},
                                     {12, 0.1, 1, -5, 5, 4}, pi / 12);
    // Round it where the beams come out.
    const Shape line =
        lathe({{rim - 1.2, -0.45}, {rim + 0.5, -0.45}, {rim + 0.5, 0.45}, {rim - 1.2, 0.45}}, 36);
    return joined({painted(collar, hull::dark), painted(line, hull::coolLamp),
                   turned(around(nozzle(rim - 4, reach, size), 6), Axis::y, pi / 6)});
}

// Before the front ring a spearhead of six petals: from ahead it hides where the beams begin, so that the
// ship stands before them.
Shape spearhead() {
    const Outline profile = {{0, 91.5},    {3.4, 89},    {9, 80},   {18, 69.5},
                             {34.5, 58.6}, {35.4, 57.2}, {34, 56.4}};
    // Its back is black before the beams' glow.
    const Shape back = lathe({{34, 56.4}, {12, 60}}, 36);
    const Shape beamlight = lathe({{32.6, 56}, {33.8, 55.6}, {33.6, 54.8}, {32.4, 55.2}, {32.6, 56}}, 36);
    const Shape edge = lathe({{34.8, 57.8}, {36.6, 57.4}, {36.6, 56}, {34.4, 55.8}, {34.8, 57.8}}, 36);
    return joined({painted(flutedLathe(profile, {flutes, 0.16, 1.4, 56.5, 84, 4}, 0), hull::orange),
                   painted(back, hull::dark), painted(edge, hull::coolLamp),
                   painted(beamlight, hull::beamlit)});
}

Shape engine() {
    const Outline bell = {{0, -60},      {7, -62},  {11, -70},   {13.5, -78}, {15, -85.6},
                          {14.8, -86.4}, {14, -86}, {11.5, -80}, {9, -72},    {4, -66}};
    const Outline pod = {{2, -60}, {4.2, -66}, {4.6, -80}, {4.2, -84.4}, {3.2, -84}, {2.4, -77}, {0, -76}};
    const Shape cone = lathe({{0, -84}, {6, -83}, {11.4, -80}, {11, -78}, {0, -76}}, 16);
    const Shape pods = around(moved(insideOut(lathe(pod, 12)), {18.5, 0, 0}), 6);
    return joined({painted(insideOut(lathe(bell, 24)), hull::copper), painted(cone, hull::warmLamp),
                   painted(turned(pods, Axis::y, pi / 6), hull::plain)});
}

// Lit windows along the petals, through them, and round the hoop.
Shape lights() {
    std::vector<Shape> row;
    for (size_t i = 1; i < std::size(ribs); i++)
        for (const double k : {0.2, 0.5, 0.8}) {
            const Rib &from = ribs[i - 1], &to = ribs[i];
            const Shape pane = turned(welded(box({4, 4.4, 2.6}, 0)), Axis::z,
                                      std::atan2(from.out - to.out, to.up - from.up));
            row.push_back(moved(pane, {mix(from.out, to.out, k), mix(from.up, to.up, k), 0}));
        }
    const Shape lamp = moved(welded(box({2.4, 2.4, 3.6}, 0)), {57.4, -80, 0});
    return painted(joined({around(joined(row), 6), around(lamp, 24)}), hull::warmLamp);
}

// From standing to lying: y becomes -z.
Shape laidDown(const Shape& standing) {
    return turned(standing, Axis::x, -pi / 2);
}

}  // namespace

Shape figures::ship() {
    const Shape standing =
        joined({body(), around(petal(), 6), moved(emitterRing(frontRing, 3.2), {0, emitterZ, 0}),
                moved(emitterRing(rearRing, 4.6), {0, -emitterZ, 0}), hoop(), spearhead(), engine()});
    return laidDown(standing);
}

namespace {

// The corridor's light stands behind the ship, lower right. All of it is shaded as if it leaned back there:
// so one side of what is round is lit, the other in the shade, and neither goes out as the ship turns, from
// ahead and from behind. Most the hoop as a viewer from ahead sees it, then the petals' outside, the more the
// further out, and the nose, which are all he finds of a far ship: they throw back what glows beyond it,
// their inside would burn on beats. The hull little, since further back it throws broad lamps at him, and a
// beat makes white of that. The nose's back is in no light at all: it stands before the glow of the beams.
// How far a place leans back so, along z.
double leaningBack(Vec p, Vec normal) {
    constexpr double body = 22, hoop = 57, tips = 54;  // distances from the axis
    const double reach = std::hypot(p.x, p.y);
    if (reach >= hoop) return normal.z < -0.5 ? 1.9 : 0.4;
    if (p.z < -55) return normal.z < 0 ? 1.1 : reach > 34.2 ? 0.4 : -3;
    if (reach < body && p.z > 30) return 0.3;                       // the bell hides it from ahead
    if (reach < body) return 0.6 - 0.45 * smoothstep(0, -30, p.z);  // least before the beams of the nose
    if (normal.z < -0.9) return 1.9;
    const bool outside = p.x * normal.x + p.y * normal.y > 0;
    return outside ? mix(0.15, 1.3, smoothstep(body + 4, tips, reach)) : 0.15;
}

}  // namespace

void makeShip(const char* path) {
    writeAml(path, {shaded(figures::ship(),
                           [](Vec p, Vec normal) {
                               return normal * 0.82 + Vec{0, 0, leaningBack(p, normal)};
                           }),
                    shaded(laidDown(lights()), [](Vec, Vec normal) {
                        return normal * 0.45 + Vec{0, 0, 1};
                    })});
}
