// The heap's part of "shiptex": its houses' fronts, walls and undersides.
#pragma once

#include "production/kit/picture/canvas.h"

// The colour of a place in or beside the houses' cells, in cells of the picture's grid.
picture::Rgba housesAt(picture::Point place);
