// The size of the screen: the window, the picture in every render target, the screenshot.
#pragma once

constexpr int screenWidth = 800;   // pixels
constexpr int screenHeight = 600;  // pixels
