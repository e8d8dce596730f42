// The house of the heap, for its model and for the pictures of its rooms, undersides and edges. In units of
// the heap.
#pragma once

namespace house {

constexpr double halfLength = 55, halfWidth = 22.5, halfHeight = 9.3;
constexpr double slab = 2.4;  // thickness of floor and roof
constexpr double roomHeight = 2 * (halfHeight - slab);

// Its glass, whose one half stands back behind a balcony; the bay's begins short of its end.
constexpr double glassFrom = -27, glassTo = 51, glassHalf = 19, behindBalcony = 11, bayTo = glassTo - 8;
constexpr double glassMiddle = (glassFrom + glassTo) / 2;

// Two stretches of rooms on each long side and one on each end.
struct Stretch {
    double length;
    int panes;
};
constexpr Stretch stretches[] = {{glassMiddle - glassFrom, 3},   {glassMiddle - glassFrom, 4},
                                 {bayTo - glassMiddle, 3},       {glassTo - glassMiddle, 3},
                                 {behindBalcony + glassHalf, 3}, {2 * glassHalf, 4}};

// Half the painted underside's, within its edge.
constexpr double soffitEdge = 1.2, soffitLength = halfLength - soffitEdge,
                 soffitWidth = halfWidth - soffitEdge;

}  // namespace house
