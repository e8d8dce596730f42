// The keys: for the authors' own work on the timing, and the way out.
#pragma once

#include <SDL/SDL.h>

// Acts on one key press; keys without a meaning do nothing.
void handleKey(SDLKey key);

// How far the key moves the music; 0 if it doesn't.
float seekSeconds(SDLKey key);
