// The sea's part of "shiptex": jellyfish as lanterns of stained glass, their arms and threads, and the water.
#pragma once

#include "production/kit/picture/canvas.h"

// The colour of a pixel about a place that lies in the sea's cells, both in cells of the picture's grid.
picture::Rgba lanternsAt(picture::Point place, float pixel);
