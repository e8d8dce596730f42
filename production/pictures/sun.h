// The skin of the sun's mask, as "shiptex" carries it.
#pragma once

#include "production/kit/picture/canvas.h"

// The colour of a place of the mask, in the units of its layout.
picture::Rgba sunSkin(float x, float y);
