// The places of the pictures that models are painted with, part by part.
#pragma once

#include "production/kit/model/mapping.h"
#include "production/shared/atlas.h"

namespace model {

constexpr Patch patchOf(const atlas::Cells& cells) {
    return {{cells.left / 16, cells.bottom() / 16}, {cells.right() / 16, cells.top / 16}};
}
constexpr Uv middleOf(const atlas::Cells& cells) {
    return {cells.middleX() / 16, cells.middleY() / 16};
}

// Of plates, what is clear of their edges, grooves and bolts.
namespace hull {

constexpr Patch plain = patchOf(atlas::hull::pale.part(0.4, 0.9, 5.2, 1.8));  // pale enamel
constexpr Patch sail =
    patchOf(atlas::hull::wing.within(0.1));  // the cells of a wing, from its root to its tip
constexpr Patch dark = patchOf(atlas::hull::dark.part(0.3, 0.2, 3.4, 1.0));
constexpr Patch gable = patchOf(atlas::hull::gable), soffit = patchOf(atlas::hull::soffit),
                core = patchOf(atlas::hull::core.within(0.04)),
                stairs = patchOf(atlas::hull::stairs.within(0.02));
constexpr Uv housePaint(atlas::hull::HousePaint which) {
    return middleOf(atlas::hull::housePaint(which));
}
constexpr Patch houseWall(int side) {
    return patchOf(atlas::hull::houseWall(side));
}
constexpr Patch water = patchOf(atlas::hull::water.within(atlas::hull::bleed));
constexpr Patch outside(int kind) {
    return patchOf(atlas::hull::outside(kind).within(atlas::hull::bleed));
}
constexpr Patch inside(int kind) {
    return patchOf(atlas::hull::inside(kind).within(atlas::hull::bleed));
}
constexpr Patch arm(int kind) {
    return patchOf(atlas::hull::arm(kind).within(atlas::hull::bleed));
}
constexpr Patch thread(int kind) {
    return patchOf(atlas::hull::thread(kind).within(atlas::hull::bleed));
}
constexpr Uv orange = middleOf(atlas::hull::stripe), warmLamp = middleOf(atlas::hull::warmLamp),
             coolLamp = middleOf(atlas::hull::coolLamp), shade = middleOf(atlas::hull::shade);

// Of the firebird, each with its bleed left out.
constexpr Patch feather(int kind, bool back) {
    return patchOf(atlas::hull::feather(kind, back).within(atlas::hull::bleed));
}
constexpr Patch body = patchOf(atlas::hull::body.within(atlas::hull::bleed)),
                eye = patchOf(atlas::hull::eye.within(atlas::hull::bleed)),
                beak = patchOf(atlas::hull::beak.within(atlas::hull::bleed));

constexpr Patch lacquer(atlas::hull::Lacquer which) {
    return patchOf(atlas::hull::lacquer(which).within(0.08));
}

}  // namespace hull

namespace walls {

constexpr Patch bay = patchOf(atlas::walls::bay.within(0.04)),
                gallery = patchOf(atlas::walls::gallery.within(0.04)),
                rib = patchOf(atlas::walls::rib.within(0.04)),
                black = patchOf(atlas::walls::black.within(0.3));

constexpr Patch dome = patchOf(atlas::walls::dome.within(3.0 / 64));

}  // namespace walls

}  // namespace model
