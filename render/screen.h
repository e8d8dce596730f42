// The size of the screen: the window, the picture in every render target, the screenshot.
#pragma once

#include <stdlib.h>

constexpr int screenWidth = 800;   // pixels
constexpr int screenHeight = 600;  // pixels

// Frames that are read back pass through no scaler, also where SDL 1.2 is a layer over SDL 2. To be called
// before SDL starts.
inline void keepFramesUnscaled() {
    setenv("SDL12COMPAT_OPENGL_SCALING", "0", 1);
}
