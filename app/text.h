// Bitmap text in screen pixels, over the finished picture: for diagnostics, no frame of the show draws any.
// Use: begin2DText, drawText as often as wanted, end2DText; or drawTextLine alone.
#pragma once

enum Font : int {
    fixed8x13,
    fixed9x15,
    helvetica10,
    helvetica12,
    helvetica18,
    timesRoman10,
    timesRoman24,
};

// A character's bitmap: `height` rows from the bottom up, each in whole bytes, the leftmost pixel in a byte's
// highest bit. Width 0 and no rows where a font has none.
struct Glyph {
    int width, height;  // pixels
    const unsigned char* rows;
};
Glyph glyphOf(int font, char character);

// Pixel coordinates from the lower left of the viewport, without texture, depth test and lighting, until
// end2DText brings back what was in force before. Leaves GL_MODELVIEW current.
void begin2DText(int width, int height);
void end2DText();

// From (x, y), the left end of the base line, in the current colour. A start outside the view draws nothing.
// Only 7-bit characters have glyphs, others are left out; a number that is no font's draws nothing.
void drawText(float x, float y, int font, const char* text);

// In 9 x 15, `y` being the bottom of the line's cell, counted from the bottom of the screen. Applies the
// viewport of the current aspect.
void drawTextLine(const char* text, float x, float y);
