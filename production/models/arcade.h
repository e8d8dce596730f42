// The hall's wall: an arcade all round, whose niches are lit from within, and over it a gallery in the dark.
#pragma once

#include "production/kit/model/shape.h"

namespace arcade {

using model::Shape;

constexpr int bays = 24;
double turnOf(int number);  // of a bay's middle, radians

// The back of its niches, which shows the light in them; and the gallery.
Shape niches();
Shape gallery();

// Of the bay whose middle lies at turn 0: the sides of its niche, and the piers with their arch.
Shape reveals();
Shape stone();

// Lines of light round every niche.
Shape mouldings();

}  // namespace arcade
