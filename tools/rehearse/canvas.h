// Plain shapes and text over the finished picture, in pixels from the lower left of the screen. What GL's
// state was before is there again afterwards.
#pragma once

#include <string>

#include "app/text.h"

struct Ink {
    float r, g, b, a = 1;

    Ink faded(float share) const { return {r, g, b, a * share}; }
};

// What they mean on the desk.
inline constexpr Ink bright = {0.97f, 0.98f, 1.00f}, plain = {0.80f, 0.83f, 0.88f},
                     quiet = {0.62f, 0.66f, 0.74f};   // figures, text, and what explains them
inline constexpr Ink marked = {1.00f, 0.86f, 0.45f};  // what is on, or otherwise than it was
inline constexpr Ink looped = {0.45f, 0.95f, 0.75f}, wrong = {1.00f, 0.47f, 0.40f};
inline constexpr Ink paneInk = {0.02f, 0.025f, 0.04f, 0.78f};

// Between these two, and only there, the others draw.
void beginCanvas();
void endCanvas();

void fillBox(float x, float y, float width, float height, Ink ink);
// From one ink at the left to another at the right.
void fillBlend(float x, float y, float width, float height, Ink left, Ink right);
// Of a music, as it was measured: each pair of bytes is a column a pixel wide from x on, the peak and the
// loudness within it, around `middle`; full scale reaches `reach` up and down.
void drawWaveform(const std::string& waveform, float x, float middle, float reach, Ink peak, Ink loud);
// A dark pane with a hairline around it.
void drawPane(float x, float y, float width, float height);
// A triangle that points down to (x, y).
void drawMarker(float x, float y, float size, Ink ink);

// `y` is the base line. Returns where the text ends.
float write(float x, float y, Font font, Ink ink, const std::string& text);
float writeRight(float x, float y, Font font, Ink ink, const std::string& text);
float textWidth(Font font, const std::string& text);
