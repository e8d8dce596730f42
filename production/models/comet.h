// The streak of light that flies round the hall's wall once a turn of the camera.
#pragma once

#include "production/kit/model/shape.h"

namespace comet {

// Bands before the wall on which it is seen: over the night behind the probes, then past the colossus' head
// into its hand.
model::Shape tracks();

// Shades what stands in the hall so that the comet seems to shine from it from the time that it reaches the
// colossus' hand, or so many seconds after that: dark before, and fading for two seconds.
model::Shape litInPassing(const model::Shape& shape, double after);

}  // namespace comet
