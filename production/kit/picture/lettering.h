// The show's own alphabet: upright capitals of thick and thin strokes whose horizontals are streaks, blades
// that start broad and run out to a needle. Text is set into a field of distances, from which a picture takes
// fills, outlines, bevels and halos of any colour.
#pragma once

#include <string>
#include <vector>

#include "production/kit/picture/shapes.h"

namespace picture {

// How a line of text is cut and spaced. Lengths are in capital heights where not stated otherwise.
struct Lettering {
    float height;            // of a capital, in pixels
    float weight = 0.16f;    // breadth of a thick stroke
    float contrast = 0.62f;  // 0: all strokes alike; 1: thin ones vanish
    float gap = 0.17f;       // mean clear space between letters
    float pixelAspect = 1;   // width over height of a pixel where the picture is shown
};

enum class Align { Left, Centre };

// Distances in pixel heights to the edge of all text set so far, negative inside; cut off at `reach`.
struct LetteringField {
    int width, height;
    float reach;
    std::vector<float> distances;

    LetteringField(int width, int height, float reach)
        : width(width), height(height), reach(reach), distances(size_t(width) * height, reach) {}
    float at(int x, int y) const { return distances[size_t(y) * width + x]; }
    // For the pixel centres that paint() gives.
    float at(float x, float y) const { return at(int(x), int(y)); }
};

// A line of text and its place, in pixels from the top left: `x` is its left end or its middle,
// `baseline` the row its letters stand on. The text is UTF-8: A-Z, Å, Ä and Ö, digits, space and
// . , : ; ! ? ' - + / & ( ); small letters are set as capitals, anything else as a space.
struct TextLine {
    std::string text;
    float x, baseline;
    Align align = Align::Left;
};

// The width of a line in pixels.
float textWidth(const std::string& text, const Lettering& style);

void setText(LetteringField& field, const Lettering& style, const TextLine& line);

// How far the side of a stroke at that pixel, were it cut like a wedge, faces a lamp above on the left: about
// -1 to 1, 0 on a ridge. Not for the field's outermost pixels.
float bevelFacing(const LetteringField& text, int x, int y, float pixelAspect);

}  // namespace picture
