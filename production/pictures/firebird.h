// The firebird's part of "shiptex": its feathers, its body and its eye, drawn by lines of light.
#pragma once

#include "production/kit/picture/canvas.h"

// The colour of a place in or beside the firebird's cells, in cells of the picture's grid.
picture::Rgba firebirdAt(picture::Point place);
