// The box of the heap: a house of one storey, a little under 20 units high, twenty of which lie across each
// other. Between two slabs stand lit rooms behind glass; at one end the upper slab is missing, and a
// terrace grows a garden. What a viewer from below sees most of is its underside, painted like a lantern's.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/figures.h"
#include "production/models/models.h"
#include "production/models/paints.h"
#include "production/shared/house.h"

using namespace model;
using namespace house;

namespace {

constexpr double roofFrom = -30;
constexpr double parapet = 6.4;  // height of the terrace's, slab included
constexpr double trunkRadius = 12.2, trunkDepth = 130, mastHeight = 62;

// The light circles far below the heap. What is to catch it wherever it stands faces down by `share` more
// than it does.
Shape litFromBelow(const Shape& shape, double share) {
    return shaded(shape, [=](Vec, Vec normal) { return normal - Vec{0, share, 0}; });
}

Shape block(Vec low, Vec high, double bevel) {
    return moved(box(high - low, bevel), (low + high) * 0.5);
}

// Front where `along` points to the right and `up` upwards.
Shape sheet(Vec corner, Vec along, Vec up) {
    return grid(2, 2, false, false, [=](int c, int r) { return corner + along * c + up * r; });
}

Shape floorSlab() {
    return block({-halfLength, -halfHeight, -halfWidth}, {halfLength, slab - halfHeight, halfWidth}, 0.7);
}

Shape roofSlab() {
    return block({roofFrom, halfHeight - slab, -halfWidth}, {halfLength, halfHeight, halfWidth}, 0.7);
}

Shape rooms() {
    return block({glassFrom, slab - halfHeight, -glassHalf}, {glassTo, halfHeight - slab, glassHalf}, 0);
}

// What closes the terrace: three walls with a hedge on them.
Shape terraceWalls() {
    const double low = slab - halfHeight, top = parapet - halfHeight, in = 3;
    return joined({block({-halfLength, low, -halfWidth}, {in - halfLength, top, halfWidth}, 0.5),
                   block({in - halfLength, low, halfWidth - in}, {roofFrom, top, halfWidth}, 0.5),
                   block({in - halfLength, low, -halfWidth}, {roofFrom, top, in - halfWidth}, 0.5)});
}

// A stretch of rooms from slab to slab behind panes, each of which leans and bulges, so that they are lit and
// glint one after another, in streaks. They face the light far below, but no more than that they throw back
// little of the glow beyond the heap. `along` is of length 1.
Shape stretch(Vec from, Vec along, int number) {
    constexpr double downs[] = {1.3, 1.7, 1.5, 1.8}, bulge = 0.7;
    const auto [length, panes] = stretches[number];
    const double breadth = length / panes;
    const Vec step = along * breadth, tall = {0, roomHeight, 0};
    const Patch rooms = patchOf(atlas::hull::rooms[number]);
    std::vector<Shape> all;
    for (int i = 0; i < panes; i++) {
        const Patch part = {rooms.at(double(i) / panes, 0), rooms.at(double(i + 1) / panes, 1)};
        const Vec corner = from + step * i, middle = corner + step * 0.5;
        all.push_back(shaded(painted(sheet(corner, step, tall), part), [&](Vec p, Vec normal) {
            const Vec aside = {p.x - middle.x, 0, p.z - middle.z};
            return normal + aside * (bulge / breadth) - Vec{0, downs[i], 0};
        }));
    }
    return joined(all);
}

// Each side has a shape of its own, so that a storey has another outline after each quarter turn: before,
// one half stands back behind a balcony; behind, the other comes out to the slabs' edge.
constexpr double bayOut = halfWidth + 3.5;

Shape core() {
    const double low = slab - halfHeight, high = -low;
    return joined({block({glassFrom, low, -glassHalf}, {glassTo, high, behindBalcony}, 0),
                   block({glassFrom, low, behindBalcony}, {glassMiddle, high, glassHalf}, 0),
                   block({glassMiddle, low, -bayOut}, {bayTo, high, -glassHalf}, 0)});
}

// The balcony's floor, and floor and roof of the bay.
constexpr double balconyFrom = glassMiddle + 2, balconyTo = halfLength - 6, balconyOut = halfWidth + 8;
Shape outworks() {
    const double low = -halfHeight;
    return joined(
        {block({balconyFrom, low + 0.4, halfWidth - 1}, {balconyTo, low + slab - 0.4, balconyOut}, 0.4),
         block({glassMiddle - 1, low, -bayOut - 1}, {bayTo + 1, low + slab, 2 - halfWidth}, 0.4),
         block({glassMiddle - 1, -low - slab, -bayOut - 1}, {bayTo + 1, -low, 2 - halfWidth}, 0.4)});
}

// The balcony's rails.
Shape rails() {
    std::vector<Shape> all;
    for (const double y : {4.2, 6.6})
        for (const double x : {balconyFrom, balconyTo})
            all.push_back(
                block({x - 0.3, y - halfHeight, halfWidth}, {x + 0.3, y - halfHeight + 0.5, balconyOut}, 0));
    for (const double y : {1.2, 4.2, 6.6})
        all.push_back(block({balconyFrom, y - halfHeight, balconyOut - 0.3},
                            {balconyTo, y - halfHeight + 0.5, balconyOut + 0.2}, 0));
    return joined(all);
}
// Garlands of lamps over the balcony and round the terrace.
Shape garlands() {
    std::vector<Shape> all;
    const auto hang = [&](Vec from, Vec to, int bows, int lamps) {
        for (int i = 0; i < lamps; i++) {
            const double k = (i + 0.5) / lamps, sag = std::fabs(std::sin(pi * bows * k));
            all.push_back(moved(lathe({{0, -0.85}, {0.85, 0}, {0, 0.85}}, 4),
                                from + (to - from) * k - Vec{0, 2.6 * sag, 0}));
        }
    };
    constexpr double y = 6.4, left = -53.5, edge = 21;
    hang({balconyFrom, y, balconyOut - 1}, {balconyTo, y, balconyOut - 1}, 2, 9);
    hang({left, y, -edge}, {left, y, edge}, 2, 10);
    hang({roofFrom, y, edge}, {left, y, edge}, 1, 5);
    hang({roofFrom, y, -edge}, {left, y, -edge}, 1, 5);
    return joined(all);
}

Shape glass() {
    constexpr double breath = 0.3;
    const double low = slab - halfHeight;
    return joined({stretch({glassFrom, low, glassHalf + breath}, {1, 0, 0}, 0),
                   stretch({glassMiddle, low, behindBalcony + breath}, {1, 0, 0}, 1),
                   stretch({bayTo, low, -bayOut - breath}, {-1, 0, 0}, 2),
                   stretch({glassMiddle, low, -glassHalf - breath}, {-1, 0, 0}, 3),
                   stretch({glassTo + breath, low, behindBalcony}, {0, 0, -1}, 4),
                   stretch({glassFrom - breath, low, -glassHalf}, {0, 0, 1}, 5)});
}

// The slabs' edges, each side's with a line of light of its own, which draw every storey.
Shape edges() {
    constexpr double out = 0.08, longest = 2 * halfLength, wide = 2 * halfWidth;
    std::vector<Shape> all;
    const auto edge = [&](int side, Vec from, Vec along) {
        const double share = (std::fabs(along.x) + std::fabs(along.z)) / longest;
        const Patch whole = hull::edge(side);
        all.push_back(painted(sheet(from, along, {0, slab, 0}), {whole.low, whole.at(share, 1)}));
    };
    const double y = halfHeight - slab;
    edge(0, {roofFrom, y, halfWidth + out}, {halfLength - roofFrom, 0, 0});
    edge(1, {halfLength, y, -halfWidth - out}, {roofFrom - halfLength, 0, 0});
    edge(2, {halfLength + out, y, halfWidth}, {0, 0, -wide});
    edge(3, {roofFrom - out, y, -halfWidth}, {0, 0, wide});
    return joined(all);
}

// Under the floor, looking outwards a little: what faces away from the viewer throws back the glow beyond the
// heap, and that would lie over the heap as a veil.
Shape soffit() {
    constexpr double y = -halfHeight - 0.19, vault = 0.9, length = soffitLength, width = soffitWidth;
    std::vector<Shape> quarters;
    for (const double x : {-length, 0.0})
        for (const double z : {-width, 0.0})
            quarters.push_back(sheet({x, y, z}, {length, 0, 0}, {0, 0, width}));
    const Shape painted = mappedBy(joined(quarters), [](const Face&, Vec p) {
        return hull::soffit.at(std::fabs(p.x) / length, std::fabs(p.z) / width);
    });
    return shaded(painted, [](Vec p, Vec normal) {
        return normal + Vec{p.x / length, 0, p.z / width} * vault;
    });
}

Shape hedge() {
    const double low = slab * 0.3 - halfHeight, tall = parapet + 1.2 - slab * 0.3, out = halfWidth + 0.25;
    const double from = -halfLength - 0.25, deep = roofFrom - from;
    return joined({sheet({from, low, -out}, {0, 0, 2 * out}, {0, tall, 0}),
                   sheet({from, low, out}, {deep, 0, 0}, {0, tall, 0}),
                   sheet({roofFrom, low, -out}, {-deep, 0, 0}, {0, tall, 0})});
}

// Tufts of blades, each its own way, and cypresses in ragged tiers among them.
Shape tuft(double size, int seed) {
    std::vector<Shape> blades;
    for (int i = 0; i < 9; i++) {
        const double turn = 2.4 * i + seed, rise = 0.25 + 0.16 * ((5 * i + seed) % 7);
        const double length = size * (0.9 + 0.12 * ((3 * i + seed) % 6));
        const Shape blade = lathe({{0.2 * size, 0}, {0.26 * size, 0.4 * length}, {0, length}}, 3);
        blades.push_back(placed(blade, {}, {std::cos(turn), rise, std::sin(turn)}));
    }
    return joined(blades);
}
Shape cypress(double size, int seed) {
    std::vector<Shape> tiers;
    for (int i = 0; i < 4; i++) {
        const double r = size * (0.9 - 0.17 * i), y = size * 0.95 * i;
        tiers.push_back(
            moved(turned(lathe({{r, 0}, {0.25 * r, 1.5 * size}, {0, 1.9 * size}}, 5), Axis::y, seed + i),
                  {0, y, 0}));
    }
    return joined(tiers);
}
Shape shrubs() {
    constexpr double onGarden = parapet - halfHeight, onBalcony = slab - halfHeight;
    std::vector<Shape> all;
    const auto plant = [&](const Shape& shape, Vec at) { all.push_back(moved(shape, at)); };
    plant(cypress(2.7, 1), {-51, onGarden - 1, -17});
    plant(tuft(4.2, 2), {-50.5, onGarden, -9});
    plant(tuft(3.2, 5), {-51, onGarden, -1});
    plant(cypress(2.3, 3), {-50, onGarden - 1, 7});
    plant(tuft(4.8, 1), {-50, onGarden, 16});
    plant(tuft(3.4, 4), {-40, onGarden, 19});
    plant(tuft(3.8, 3), {-38, onGarden, -19});
    plant(tuft(3.6, 6), {18, onBalcony, halfWidth + 4});
    plant(tuft(2.8, 2), {44, onBalcony, halfWidth + 4});
    return joined(all);
}

// The lift's trunk, which the storeys hide but below the lowest, and the mast, which shows above the highest.
Shape trunk() {
    Outline profile;
    for (double y = -trunkDepth; y < -halfHeight; y += 20) profile.push_back({trunkRadius, y});
    profile.push_back({trunkRadius, halfHeight + 1});
    return lathe(profile, 12);
}
Shape trunkRings() {
    std::vector<Shape> rings;
    for (double y = -trunkDepth; y < -halfHeight; y += 20)
        rings.push_back(lathe({{trunkRadius + 0.3, y + 17.2}, {trunkRadius + 0.3, y + 18.8}}, 12));
    return joined(rings);
}
Shape mast() {
    return lathe({{3.2, halfHeight},
                  {3, halfHeight + 8},
                  {0.9, halfHeight + mastHeight},
                  {0, halfHeight + mastHeight}},
                 8);
}
// Rings of light round it, which the storeys above hide as they do the mast, and its lamp.
Shape beacon() {
    std::vector<Shape> all = {moved(icosphere(3.2, 1), {0, halfHeight + mastHeight, 0})};
    for (int i = 0; i < 4; i++) {
        const double y = halfHeight + 14 + 11 * i, r = 9.5 - 1.8 * i;
        all.push_back(lathe({{r, y}, {r, y + 0.9}}, 20));
    }
    return joined(all);
}

}  // namespace

Shape figures::heapBox() {
    return joined({floorSlab(), roofSlab(), rooms(), terraceWalls()});
}

void makeHeapBox(const char* path) {
    constexpr double lamps = 6;
    // A breath of a curve, so that a light crosses a slab instead of filling it at once. Its sides look away
    // from the heap's axis, as if it were a column, so that the same light stays on the same side of it,
    // whichever way its storeys turn; and down, to the light that circles there, behind it at times.
    const auto curved = [](Vec p, Vec normal) {
        if (normal.y > 0.5) return normal + Vec{0.9 * p.x / halfLength, 0, 0.9 * p.z / halfWidth};
        if (normal.y < -0.5) return normal + Vec{0.1 * p.x / halfLength, 0, 0.1 * p.z / halfWidth};
        return normal * 0.3 + normalized(Vec{p.x, 0, p.z}) - Vec{0, 0.7, 0};
    };
    const Shape slabs =
        shaded(painted(joined({floorSlab(), roofSlab(), terraceWalls()}), hull::shade), curved);
    const Shape dark = joined(
        {shaded(painted(outworks(), hull::shade), curved), shaded(painted(core(), hull::shade), curved)});
    writeAml(path,
             {slabs, dark, soffit(), glass(), litFromBelow(painted(hedge(), hull::leaves), 0.35),
              litFromBelow(painted(shrubs(), hull::foliage), 0.7),
              litFromBelow(painted(joined({trunk(), mast()}), hull::dark), 0.3), litFromBelow(edges(), lamps),
              litFromBelow(painted(joined({trunkRings(), beacon(), rails(), garlands()}), hull::warmLamp),
                           lamps)});
}
