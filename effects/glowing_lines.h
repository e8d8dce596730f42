// Lines that glow: drawn over themselves several times, added to the picture, wider and fainter each time.
#pragma once

struct GlowStroke {
    float width;  // pixels
    float red;
    float green;
    float blue;
    float alpha;  // at the brightest end of a line
};

// Additive, smooth, untextured and without depth writes; the end puts all of that back (texturing on, white)
// but leaves the line width.
void beginGlowingLines();
void endGlowingLines();
