// Where things lie in the two plated pictures, so that models can be painted part by part: "shiptex" for all
// that moves, "cubetex" for tunnel and hall. Both are drawn on a grid of 16 x 16 cells.
#pragma once

#include "production/kit/model/mapping.h"

namespace model {

constexpr Patch cells(double left, double top, double width, double height) {
    return {{left / 16, (top + height) / 16}, {(left + width) / 16, top / 16}};
}

namespace hull {

constexpr Patch plain = cells(0.4, 0.9, 5.2, 1.8);     // pale enamel
constexpr Patch striped = cells(10.4, 0.3, 5.2, 1.9);  // paler, with two orange stripes along it
constexpr Patch lettered = cells(6.3, 3.3, 6.3, 5.4);  // the show's name
constexpr Patch numbered = cells(3.2, 5.9, 2.6, 2.2);  // pale, "126"
constexpr Patch hazard = cells(3.3, 9.3, 6.4, 2.5);    // stripes below "no step"
constexpr Patch vents = cells(3.6, 12.9, 2.8, 2.2);    // dark slats
constexpr Patch sail = cells(10.1, 9.1, 5.8, 6.8);     // a pale wing, from its root to its tip
constexpr Patch dark = cells(6.3, 0.2, 3.4, 1.0);
// The heap's houses: two stretches of lit rooms, their timber soffit, leaves, and the lime of their slabs.
constexpr Patch rooms[] = {cells(13.1, 3.1, 2.8, 0.6), cells(13.1, 3.8, 2.8, 0.6)};
constexpr Patch timber = cells(13.1, 4.5, 2.8, 2.2), leaves = cells(13.1, 6.8, 2.8, 0.6),
                foliage = cells(13.1, 6.8, 2.8, 0.35);
constexpr Patch lime = cells(13.2, 7.6, 2.6, 0.4);
constexpr Uv orange = {13.0 / 16, 1.15 / 16};
constexpr Uv warmLamp = {1.5 / 16, 8.58 / 16}, coolLamp = {1.5 / 16, 9.58 / 16};

constexpr Uv neon = {1.0 / 16, 13.0 / 16},
             harp = {2.0 / 16, 13.0 / 16};     // dabs of the band's edge and strings
constexpr Uv beamlit = {1.0 / 16, 15.0 / 16};  // what shines as if the beams lit it

}  // namespace hull

namespace walls {

// The tunnel's, in the left half: one lit panel from joint to joint, a rail along a segment, the light of
// its rings and their black ribs.
constexpr Patch panel = cells(0.05, 0.05, 4.9, 14.4), rail = cells(6.3, 0.05, 0.5, 14.4);
constexpr Patch light = cells(0.2, 15.4, 7.6, 0.2), rib = cells(0.2, 14.8, 7.6, 0.2);

// The hall's, in the right half: behind pillar, ship, probes and colossus half of what hangs there, from its
// middle to its right edge; floor and dome from the axis to the wall over half a bay.
constexpr Patch inset(Patch patch) {
    constexpr double edge = 3.0 / 1024;  // kept clear of the neighbours
    return {{patch.low.x + edge, patch.low.y - edge}, {patch.high.x - edge, patch.high.y + edge}};
}
constexpr Patch backdrops[] = {inset(cells(8, 0, 4, 4)), inset(cells(12, 0, 4, 4)), inset(cells(8, 4, 4, 4)),
                               inset(cells(12, 4, 4, 4))};
constexpr Patch floor = inset(cells(8, 8, 4, 4)), dome = inset(cells(12, 8, 4, 4));

}  // namespace walls

}  // namespace model
