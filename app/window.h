// The one window, full screen or not, and the signals that end the program as its close button does.
#pragma once

#include <SDL/SDL.h>

// Opens the window and makes its GL context current. Ends the program if that fails. Whatever way the program
// ends from here on, the desktop gets its video mode back. With `samples` above 0 each pixel is drawn from at
// least that many, where the driver has such a window; GL_SAMPLES tells. With `awaitsScreen` each swap waits
// until the screen has shown the picture before, where the driver can. A window without alpha is told of on
// standard error.
SDL_Surface* openWindow(bool fullscreen, int samples = 0, bool awaitsScreen = false);

// From here on a hang-up (the terminal has been closed) is noted instead of ending the process, unless
// whoever started the program has it ignored. SDL makes events of the other signals that ask for an end.
void watchForHangUp();
bool hungUp();
