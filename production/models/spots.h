// The spots of light that the mirror ball throws on the gallery of the hall's wall.
#pragma once

#include "production/kit/model/shape.h"

namespace spots {

// Small squares. Half of them are shaded so that each shows the viewer the comet's head at a moment of its
// own, and then what trails behind it: neighbours come one after the other, against the camera's way round.
// The others show a lamp over him then, every other one the warm one.
model::Shape onWall();

}  // namespace spots
