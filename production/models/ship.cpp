// The ship of the laser corridor: a dish on a slender body, with a lance ahead of it whose spearhead goes far
// before the ship, three great petals swept back behind it, and a jet that trails from the stern. Its nose is
// towards -z, since the tunnel streams to +z.
// Six beams leave each of two rings at 30, 90, 150 ... degrees round the z axis.
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

// The ship is built standing on its tail along y and laid down at the end. No viewer comes nearer to the axis
// than 123 units, and he looks at its middle. Who is beside it, ahead of the dish, sees the lance leave the
// frame past 130; the spearhead is for those far ahead, to whom it stands clear of the beams' glow.
constexpr double noseTip = 360, headBack = 228, rootBack = 76, dishMouth = 58, dishRadius = 70;
constexpr double stern = -150, jetEnd = -320;

double hullRadius(double y) {
    const double waist = 4.5 * smoothstep(42, 12, y) * smoothstep(-42, -12, y);
    return 16 - waist + 10 * smoothstep(-40, -74, y) - 11 * smoothstep(-70, stern, y);
}

constexpr int flutes = 6;
constexpr double fluteWidth = 0.16;

// Between two grooves each land is of a colour along the whole ship, so that it is seen to spin.
Shape painted(const Shape& shape, Uv even, Uv odd) {
    return mappedBy(shape, [&](const Face& face, Vec) {
        const Vec centre = faceCentre(shape, face);
        const int land = int(std::floor(std::atan2(-centre.z, centre.x) / (2 * pi) * flutes + flutes));
        return land % 2 == 0 ? even : odd;
    });
}

// From their shade to their full tone.
const Patch copper = patchOf(atlas::hull::copper.within(0.05)),
            flame = patchOf(atlas::hull::flame.within(0.05));

Shape body() {
    const Outline plates =
        platedProfile({stern, -138, -104, -62, -42, -20, 4, 28, 46, 60}, {1.8, 1.6, 1.1, 16}, hullRadius);
    const Outline tail = {{0, stern + 6}, {hullRadius(stern) - 4, stern + 6}, {hullRadius(stern) - 3, stern}};
    const Shape hull = flutedLathe(chained({tail, plates}), {flutes, fluteWidth, 1.4, stern + 8, 62, 3});
    return painted(hull, hull::pearl, middleOf(atlas::hull::dark));
}

// A petal's middle from its root to its tip: how far from the axis, how far along it, and half its breadth.
struct Rib {
    double out, up, half;
};
constexpr Rib ribs[] = {{13, 2, 4},     {36, -8, 13},   {66, -20, 24}, {98, -34, 28},
                        {128, -49, 26}, {153, -63, 15}, {174, -75, 1}};

// A sheet along a petal, lifted off its middle; `aside` is where across it a column runs, by half its
// breadth.
Shape petalSheet(double lift, int columns, const std::function<double(double half, int column)>& aside) {
    std::vector<Vec> middle, breadth;
    for (const Rib& rib : ribs)
        middle.push_back({rib.out + lift * 0.5, rib.up + lift * 0.85, 0}),
            breadth.push_back({rib.half, 0, 0});
    middle = curveThrough(middle, false, 3), breadth = curveThrough(breadth, false, 3);
    return grid(columns, int(middle.size()), false, false, [&](int c, int r) {
        const double z = aside(breadth[r].x, c);
        // Bent to a trough.
        return middle[r] + Vec{-0.004 * z * z, -0.006 * z * z, z};
    });
}

// The front burns from dark to hot, the back, which those who look from behind see, is copper; both do so
// towards their edges, and about them is a line of light.
Shape petal() {
    const auto side = [](double lift, Patch patch, double middle, double edge) {
        const int columns = 7;
        Shape shape = petalSheet(lift, columns,
                                 [](double half, int c) { return half * (2.0 * c / (columns - 1) - 1); });
        for (Face& face : shape.faces)
            for (Uv& uv : face.uvs)
                uv = patch.at(mix(middle, edge, std::pow(std::fabs(2 * uv.x - 1), 1.5)), 0.5);
        return shape;
    };
    std::vector<Shape> sides = {insideOut(side(0.9, flame, 0.3, 0.8)), side(-0.9, copper, 0, 0.15)};
    for (const double s : {-1, 1}) {
        const Shape rim = painted(petalSheet(0, 2, [=](double half, int c) { return s * (half + 1.5 * c); }),
                                  hull::coolLamp);
        sides.push_back(rim), sides.push_back(insideOut(rim));
    }
    return joined(sides);
}

// A stubby nozzle along +x from the axis, its glowing mouth at `reach`.
Shape nozzle(double from, double reach, double size) {
    const Outline tube = {{size * 1.25, from},        {size * 1.25, reach - 5.4}, {size * 0.85, reach - 4.6},
                          {size * 0.85, reach - 3.4}, {size * 1.1, reach - 2.8},  {size * 1.1, reach - 0.5},
                          {size * 0.95, reach},       {size * 0.7, reach}};
    const Outline mouth = {{size * 0.7, reach}, {size * 0.55, reach - 1.6}, {0, reach - 0.9}};
    return turned(joined({painted(lathe(tube, 8), hull::plain), painted(lathe(mouth, 8), hull::coolLamp)}),
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
                                     {12, 0.1, 1, -5, 5, 1}, pi / 12);
    // Round it where the beams come out.
    const Shape line =
        lathe({{rim - 1.2, -0.45}, {rim + 0.5, -0.45}, {rim + 0.5, 0.45}, {rim - 1.2, 0.45}}, 36);
    return joined({painted(collar, hull::dark), painted(line, hull::coolLamp),
                   turned(around(nozzle(rim - 4, reach, size), 6), Axis::y, pi / 6)});
}

// Six facets with lines of light on their edges.
Shape facetted(const Outline& profile, double line, Uv even, Uv odd) {
    const Shape facets = insideOut(smoothed(lathe(profile, 6), hard));
    const auto [radius, low] = profile.back();
    const Shape back = insideOut(lathe({{radius, low}, {radius * 0.8, low - 3}, {4, low + 2}}, 6));
    std::vector<Vec> path;
    for (const Flat& p : profile) path.push_back({p.x + 0.4, p.y, 0});
    const Shape edge = sweep(polygon(4, line), {.path = path, .up = {0, 0, 1}, .change = {}});
    const Shape rim = lathe({{radius + 1, low - 1.4},
                             {radius + 1, low + 1.4},
                             {radius - 1.4, low + 2},
                             {radius - 1.4, low - 2},
                             {radius + 1, low - 1.4}},
                            6);
    return joined(
        {painted(facets, even, odd),
         mappedBy(back, [=](const Face&,
                            Vec p) { return copper.at(mix(0.1, 1.0, std::hypot(p.x, p.z) / radius), 0.5); }),
         painted(joined({around(edge, 6), rim}), hull::coolLamp)});
}

// The spearhead on its lance, and the lance's root.
Shape spearhead() {
    return joined(
        {facetted({{0, noseTip}, {7, noseTip - 28}, {20, noseTip - 68}, {36, noseTip - 112}, {46, headBack}},
                  1.2, hull::orange, copper.at(0.9, 0.5)),
         painted(lathe({{4.6, rootBack + 43}, {4, headBack}}, 6), copper.at(0.6, 0.5))});
}

Shape lanceRoot() {
    return facetted(
        {{4.4, rootBack + 46}, {7, rootBack + 37}, {13, rootBack + 22}, {20, rootBack + 8}, {22, rootBack}},
        0.7, copper.at(1, 0.5), copper.at(0.6, 0.5));
}

// From ahead the dish hides where the beams begin; its inside is black before their glow.
Shape dish() {
    const double r = dishRadius, mouth = dishMouth;
    const Outline profile = {{14, rootBack - 1},   {20, 71},           {32, 67},  {50, mouth + 6},
                             {r - 1, mouth + 2.6}, {r + 1, mouth + 1}, {r, mouth}};
    const Shape inside = lathe({{r, mouth}, {r * 0.74, mouth + 1}}, 36);
    return joined({painted(insideOut(flutedLathe(profile, {flutes, fluteWidth, 1.4, mouth + 2, 72, 4})),
                           copper.at(0.8, 0.5), middleOf(atlas::hull::dark)),
                   painted(insideOut(inside), hull::dark)});
}

// What the jet leaves.
Shape sternBell() {
    const Outline profile = {{4, stern + 4},     {10, stern},      {15, stern - 8},
                             {20, stern - 18},   {22, stern - 24}, {21.6, stern - 25},
                             {20.6, stern - 24}, {16, stern - 16}, {9, stern - 8}};
    return painted(insideOut(lathe(profile, 24)), hull::dark);
}

// The jet, from hot to dark.
Shape jet() {
    const double length = stern - 12 - jetEnd;
    Outline profile;
    for (const double k : {0.0, 0.06, 0.14, 0.25, 0.4, 0.6, 0.8, 1.0})
        profile.push_back({k == 0 ? 0 : 14.5 * std::pow(1 - k, 0.8), stern - 12 - length * k});
    return mappedBy(insideOut(lathe(profile, 16)), [&](const Face&, Vec p) {
        const double k = (stern - 12 - p.y) / length;
        return flame.at(std::pow(1 - k, 1.2), 0.5);
    });
}

// Lit windows along the petals, through them, along the stern's dark lands and on the dish, and its edge.
Shape lights() {
    std::vector<Shape> onPetals, onHull;
    const auto pane = [](double out, double up, double lean, Vec size) {
        return moved(turned(welded(box(size, 0)), Axis::z, lean), {out, up, 0});
    };
    for (size_t i = 1; i + 1 < std::size(ribs); i++)
        for (const double k : {0.2, 0.5, 0.8}) {
            const Rib &from = ribs[i - 1], &to = ribs[i];
            onPetals.push_back(pane(mix(from.out, to.out, k), mix(from.up, to.up, k),
                                    std::atan2(from.out - to.out, to.up - from.up), {4, 4.4, 2.6}));
        }
    for (double y = -134; y < -72; y += 7) onHull.push_back(pane(hullRadius(y) * 0.985, y, 0, {1.2, 3.4, 2}));
    const Shape onDish =
        joined({around(pane(36, 66.5, 0, {3, 2, 2}), 12), around(pane(61, 62.5, 0, {4, 2, 2.4}), 18)});
    const double r = dishRadius, mouth = dishMouth;
    const Shape edge = lathe(
        {{r, mouth + 2}, {r + 2, mouth + 1.4}, {r + 2, mouth - 0.2}, {r - 0.4, mouth - 0.4}, {r, mouth + 2}},
        36);
    return joined({painted(joined({around(joined(onPetals), 3),
                                   turned(around(joined(onHull), 3), Axis::y, pi / 2), onDish}),
                           hull::warmLamp),
                   painted(insideOut(edge), hull::coolLamp)});
}

// From standing to lying: y becomes -z.
Shape laidDown(const Shape& standing) {
    return turned(standing, Axis::x, -pi / 2);
}

Shape rings() {
    return joined({moved(emitterRing(frontRing, 3.2), {0, emitterZ, 0}),
                   moved(emitterRing(rearRing, 4.6), {0, -emitterZ, 0})});
}

// The corridor's light stands behind the ship, lower right. All of it is shaded as if it leaned back there:
// so one side of what is round is lit, the other in the shade, and neither goes out as the ship turns, from
// ahead and from behind.
Shape leaningBack(const Shape& standing, const std::function<double(Vec p, Vec normal)>& along) {
    return shaded(laidDown(standing), [&](Vec p, Vec normal) {
        return normal * 0.82 + Vec{0, 0, along(p, normal)};
    });
}

// A petal is shaded as if it were smoothly bent across, and leaned to the corridor's light as far as its own
// side allows: so those ahead see its front lit.
Vec ofPetal(Vec p, Vec normal) {
    const Vec outwards = normalized(Vec{p.x, p.y, 0}), aside = {-outwards.y, outwards.x, 0};
    const double off = std::remainder(std::atan2(p.y, p.x), 2 * pi / 3);
    const bool front = normal.z < 0;
    const Vec wanted = normalized(outwards * (front ? 0.15 : 0.5) + aside * ((front ? 0.6 : 1.6) * off) +
                                  Vec{0, 0, front ? 0.95 : 0.15});
    return wanted + normal * std::max(0.0, 0.16 - dot(wanted, normal));
}

}  // namespace

Shape figures::ship() {
    return laidDown(
        joined({body(), around(petal(), 3), rings(), spearhead(), lanceRoot(), dish(), sternBell()}));
}

void makeShip(const char* path) {
    const auto fixed = [](double lean) { return [=](Vec, Vec) { return lean; }; };
    // The dish throws back the tunnel's lights at those beside it; ahead it stays dark before the beams.
    const auto ofDish = [](Vec p, Vec normal) {
        const Vec outwards = normalized(Vec{p.x, p.y, 0});
        const bool inside = std::hypot(p.x, p.y) < dishRadius && normal.z > 0;
        return inside ? normal : normal * 0.5 + outwards * 0.85 + Vec{0, 0, 0.42};
    };
    writeAml(path,
             {joined({leaningBack(joined({body(), rings()}),
                                  [](Vec p, Vec) {
                                      return mix(0.72, 0.4, smoothstep(10, 40, p.z)) +
                                             0.05 * smoothstep(50, 90, p.z);
                                  }),
                      shaded(laidDown(around(petal(), 3)), ofPetal), leaningBack(spearhead(), fixed(0.85)),
                      leaningBack(lanceRoot(), fixed(0.8)), shaded(laidDown(dish()), ofDish),
                      leaningBack(sternBell(), fixed(0.6)), leaningBack(jet(), fixed(1.6)),
                      leaningBack(lights(), [](Vec p, Vec) { return p.z < -50 ? 0.9 : 1.8; })})});
}
