// The box of the heap: a house of one storey, a little under 20 units high, twenty of which lie across each
// other. Between two pale slabs stand lit rooms behind glass; at one end the upper slab is missing, and a
// terrace grows a garden. Its timber soffit is what a viewer from below sees.
#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "production/models/figures.h"
#include "production/models/models.h"
#include "production/models/paints.h"
#include "production/shared/evenings.h"

using namespace model;

namespace {

constexpr double halfLength = 55, halfWidth = 22.5, halfHeight = 9.3;
constexpr double slab = 3.2;  // thickness of floor and roof
constexpr double roofFrom = -30, glassFrom = -27, glassTo = 51, glassHalf = 19;
constexpr double parapet = 6.4;  // height of the terrace's, slab included
constexpr double trunkRadius = 13, trunkDepth = 130, mastHeight = 50;

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

// A stretch of rooms from slab to slab, each behind a pane that looks another way, so that they glint one
// after another. Lit ones face the light far below, and there is a glow beyond the heap that way, too; dark
// ones look straight out, where there is none.
Shape stretch(Vec from, Vec along, int number) {
    constexpr double leans[heap::roomsInStretch] = {0.0, -0.3, 0.25, -0.1, 0.3, 0.1}, lit = 1.6, dark = 0.3;
    const Vec step = along * (1.0 / heap::roomsInStretch), tall = {0, 2 * (halfHeight - slab), 0};
    const Patch& rooms = hull::rooms[number];
    std::vector<Shape> panes;
    for (int i = 0; i < heap::roomsInStretch; i++) {
        const Patch room = {rooms.at(double(i) / heap::roomsInStretch, 0),
                            rooms.at(double(i + 1) / heap::roomsInStretch, 1)};
        const double down = heap::evenings[number][i] == 'o' ? dark : lit;
        panes.push_back(shaded(painted(sheet(from + step * i, step, tall), room), [&](Vec, Vec normal) {
            return normal + normalized(along) * leans[i] - Vec{0, down, 0};
        }));
    }
    return joined(panes);
}

// The long sides are two stretches each, the ends one.
Shape glass() {
    const double low = slab - halfHeight, out = glassHalf + 0.1, half = (glassTo - glassFrom) / 2;
    const double middle = glassFrom + half;
    return joined(
        {stretch({glassFrom, low, out}, {half, 0, 0}, 0), stretch({middle, low, out}, {half, 0, 0}, 1),
         stretch({glassTo, low, -out}, {-half, 0, 0}, 0), stretch({middle, low, -out}, {-half, 0, 0}, 1),
         stretch({glassTo + 0.1, low, glassHalf}, {0, 0, -2 * glassHalf}, 1),
         stretch({glassFrom - 0.1, low, -glassHalf}, {0, 0, 2 * glassHalf}, 0)});
}

// Under the floor: timber, each half a picture that looks outwards a breath. Any more would throw the comet
// back from under the top storeys.
Shape soffit() {
    constexpr double edge = 1.2, y = -halfHeight - 0.05, z = halfWidth - edge;
    const auto half = [&](double from, double side) {
        const Shape sheeting = sheet({from, y, -z}, {halfLength - edge, 0, 0}, {0, 0, 2 * z});
        return shaded(painted(sheeting, hull::timber), [=](Vec p, Vec normal) {
            return normal + Vec{0.1 * side, 0, 0.06 * p.z / z};
        });
    };
    return joined({half(edge - halfLength, -1), half(0, 1)});
}

Shape hedge() {
    const double low = slab * 0.3 - halfHeight, tall = parapet + 1.2 - slab * 0.3, out = halfWidth + 0.25;
    const double from = -halfLength - 0.25, deep = roofFrom - from;
    return joined({sheet({from, low, -out}, {0, 0, 2 * out}, {0, tall, 0}),
                   sheet({from, low, out}, {deep, 0, 0}, {0, tall, 0}),
                   sheet({roofFrom, low, -out}, {-deep, 0, 0}, {0, tall, 0})});
}

// Shrubs, and cypresses among them. None is a ball: each is lumpy in its own way.
Shape shrubs() {
    constexpr struct {
        double x, z, size, tall;  // `tall` in sizes
    } places[] = {{-51, -17, 2.2, 2.6}, {-50.5, -9, 3.2, 0.9}, {-51, -2, 2.8, 1.3}, {-51, 6, 2.0, 2.5},
                  {-50, 15, 3.9, 1.0},  {-42, 18.5, 2.6, 1.6}, {-40, -18, 3.2, 0.8}};
    std::vector<Shape> all;
    for (const auto& place : places) {
        const Shape lumpy = bent(icosphere(place.size, 1), [&](Vec p) {
            const double lump =
                std::sin(2.1 * p.x + place.z) * std::sin(1.7 * p.z + place.x) * std::sin(1.9 * p.y);
            const double taper = place.tall > 2 ? 1 - 0.35 * p.y / place.size : 1;
            return Vec{p.x * (1 + 0.35 * lump) * taper, p.y * (1 + 0.25 * lump),
                       p.z * (1 + 0.35 * lump) * taper};
        });
        all.push_back(moved(scaled(lumpy, {1, place.tall, 1}),
                            {place.x, parapet - halfHeight + 0.7 * place.size * place.tall, place.z}));
    }
    return joined(all);
}

// The lift's trunk, which the storeys hide but below the lowest, and the mast, which shows above the highest.
Shape trunk() {
    Outline profile;
    for (double y = -trunkDepth; y < -halfHeight; y += 20) {
        profile.push_back({trunkRadius, y});
        profile.push_back({trunkRadius, y + 16});
        profile.push_back({trunkRadius - 1.4, y + 17});
        profile.push_back({trunkRadius - 1.4, y + 19});
    }
    profile.push_back({trunkRadius, halfHeight + 1});
    return lathe(profile, 12);
}
Shape trunkRings() {
    std::vector<Shape> rings;
    for (double y = -trunkDepth; y < -halfHeight; y += 20)
        rings.push_back(lathe({{trunkRadius - 1, y + 17.2}, {trunkRadius - 1, y + 18.8}}, 12));
    return joined(rings);
}
Shape mast() {
    return lathe({{3.2, halfHeight},
                  {3, halfHeight + 8},
                  {0.9, halfHeight + mastHeight},
                  {0, halfHeight + mastHeight}},
                 8);
}
Shape mastLamp() {
    return moved(icosphere(2.8, 1), {0, halfHeight + mastHeight, 0});
}

}  // namespace

Shape figures::heapBox() {
    return joined({floorSlab(), roofSlab(), rooms(), terraceWalls()});
}

void makeHeapBox(const char* path) {
    constexpr double lamps = 1.9;
    // A breath of a curve, so that a light crosses a slab instead of filling it at once.
    const Shape slabs =
        shaded(painted(joined({floorSlab(), roofSlab(), terraceWalls()}), hull::lime), [](Vec p, Vec normal) {
            if (normal.y > 0.5) return normal + Vec{0.9 * p.x / halfLength, 0, 0.9 * p.z / halfWidth};
            return normal + Vec{0.3 * p.x / halfLength, -0.35, 0.2 * p.z / halfWidth};
        });
    writeAml(path, {slabs, soffit(), glass(), litFromBelow(painted(hedge(), hull::leaves), 0.35),
                    litFromBelow(painted(shrubs(), hull::foliage), 1.6),
                    litFromBelow(painted(joined({trunk(), mast()}), hull::dark), 0.3),
                    litFromBelow(painted(joined({trunkRings(), mastLamp()}), hull::warmLamp), lamps)});
}
