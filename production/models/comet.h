// The streak of light that flies round the hall's wall once a turn of the camera.
#pragma once

#include "production/kit/model/shape.h"

namespace comet {

// Bands before the wall on which it is seen: over the night behind the planet, and from over the tower to the
// sun.
model::Shape tracks();

}  // namespace comet
