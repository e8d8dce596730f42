// Drawn pictures in the levels of video, as most players take them for granted: BT.709, brightness of 16 to
// 235.
#pragma once

#include "tools/capture/grabber.h"

// Fills `levels` with the picture as yuv420p has it: the brightness of each pixel, then the two colours, each
// once for four pixels, of which it is the mean, so that it lies in their middle. Rows in the picture's
// order.
void fillVideoLevels(const Picture& picture, std::vector<uint8_t>* levels);
