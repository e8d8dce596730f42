// The sea's part of "shiptex": jellyfish as lanterns of stained glass, their arms and threads, and the water.
#pragma once

#include "production/kit/picture/canvas.h"

// The colour of a place in or beside the sea's cells, in cells of the picture's grid.
picture::Rgba lanternsAt(picture::Point place);
