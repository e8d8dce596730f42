// A square of worked metal that repeats without a seam: plates, grooves and bolts are stamped as heights and
// colours, and one light over the finished relief gives every bevel, shadow and worn edge.
#pragma once

#include <vector>

#include "production/kit/picture/shapes.h"

namespace picture {

struct Relief {
    int size;                    // pixels each way
    std::vector<float> heights;  // in pixels above the ground
    std::vector<Rgba> colours;   // what the metal or its paint throws back
    std::vector<Rgba> glows;     // light of its own

    Relief(int size, Rgba ground);
};

// Where a shape lies, for stamping: everything that it changes is within `half` of its middle.
struct Extent {
    Point middle, half;
};

// Calls visit(index, place relative to the extent's middle) for every pixel of the extent, wrapped round the
// square's edges.
template <class Visit>
void visitWrapped(const Relief& relief, Extent extent, Visit visit) {
    const int x0 = int(std::floor(extent.middle.x - extent.half.x));
    const int x1 = int(std::ceil(extent.middle.x + extent.half.x));
    const int y0 = int(std::floor(extent.middle.y - extent.half.y));
    const int y1 = int(std::ceil(extent.middle.y + extent.half.y));
    for (int y = y0; y < y1; y++) {
        for (int x = x0; x < x1; x++) {
            const int column = ((x % relief.size) + relief.size) % relief.size;
            const int row = ((y % relief.size) + relief.size) % relief.size;
            visit(size_t(row) * relief.size + column,
                  Point{x + 0.5f - extent.middle.x, y + 0.5f - extent.middle.y});
        }
    }
}

// Raises (or sinks) what lies inside a shape by `height`, over a bevel of `bevel` pixels inside its edge;
// `shape` gives the distance for a place relative to the middle.
template <class Shape>
void raise(Relief& relief, Extent extent, float height, float bevel, Shape shape) {
    visitWrapped(relief, extent, [&](size_t i, Point place) {
        relief.heights[i] += height * unit(0.5f - shape(place) / bevel);
    });
}

// Paints a shape in a colour, `strength` of it.
template <class Shape>
void tint(Relief& relief, Extent extent, Rgba colour, float strength, Shape shape) {
    visitWrapped(relief, extent, [&](size_t i, Point place) {
        relief.colours[i] = mix(relief.colours[i], colour, strength * coverage(shape(place)));
    });
}

// Makes a shape shine, with a halo of `reach` pixels; the extent has to have room for it.
template <class Shape>
void shine(Relief& relief, Extent extent, Rgba glow, float reach, Shape shape) {
    visitWrapped(relief, extent, [&](size_t i, Point place) {
        const float distance = shape(place);
        const float halo = 0.5f * std::exp(-std::fmax(distance, 0.0f) * 4 / reach);
        relief.glows[i] = relief.glows[i] + glow * std::fmax(coverage(distance), halo);
    });
}

struct Weather {
    float grain = 0.12f;  // unevenness of the metal, of its colour
    float wear = 0.5f;    // bare metal on raised edges
    float grime = 0.5f;   // dirt in corners and runs below them
    unsigned seed = 1;
};

// The finished picture, lit from the upper left.
Canvas lit(const Relief& relief, const Weather& weather);

}  // namespace picture
