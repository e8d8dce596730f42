// What SDL's window shows on the display, apart from GL: X's headers take names that everybody wants.
#pragma once

#include <cstdint>

// `rgba` takes width x height pixels of the window's lower left, bottom row first, opaque.
void grabWindow(int width, int height, uint8_t* rgba);
