// The hall's wall: an arcade all round, whose niches are lit from within, and over it a gallery in the dark.
#pragma once

#include "production/kit/model/shape.h"

namespace arcade {

using model::Shape;

constexpr int bays = 24;
double turnOf(int number);  // of a bay's middle, radians

// The backs of its niches, which show the light in them; and what stays dark, which is their sides and the
// gallery.
Shape niches();
Shape shadows();

// An arch and the column on its right, of the bay whose middle lies at turn 0.
Shape stone();

// Lines of light round every niche.
Shape mouldings();

}  // namespace arcade
