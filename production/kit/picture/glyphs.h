// The letters of the show's own alphabet as outlines: strokes drawn by a pen of some breadth.
#pragma once

#include <vector>

#include "production/kit/picture/shapes.h"

namespace picture {

using Contour = std::vector<Point>;

// In capital heights, x from the letter's origin to the right, y up from the baseline.
struct Glyph {
    std::vector<Contour> parts;  // they overlap
    bool blank = false;          // no such letter
    bool boxed = false;          // a sign, spaced as if it were full height: it would slip into hollows
};

// Half the breadth of thick and of thin strokes, in capital heights.
struct Cut {
    float thick, thin;
};

// A capital, digit or sign of the alphabet.
Glyph glyphOf(char32_t letter, Cut cut);

}  // namespace picture
