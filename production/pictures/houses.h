// The heap's part of "shiptex": its houses' rooms, soffits, edges and leaves.
#pragma once

#include "production/kit/picture/canvas.h"

// The colour of a pixel about a place that lies in the houses' cells, both in cells of the picture's grid.
picture::Rgba housesAt(picture::Point place, float pixel);
