// The hall's part of "cubetex": what hangs on the walls of its four quarters, its floor and its dome.
#pragma once

#include "production/kit/picture/canvas.h"

// The colour of a place in pixels of the whole picture (1024 x 1024), which has to lie in its right half.
picture::Rgba hallPictures(float x, float y);
