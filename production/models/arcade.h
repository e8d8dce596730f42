// The hall's wall: an arcade all round, whose niches are lit from within, and over it a gallery in the dark.
#pragma once

#include "production/models/hall.h"

namespace arcade {

using model::Shape;

constexpr int bays = 24;
// How far out its piers end and how far their columns come in from there; and where the gallery stands.
constexpr double front = hall::wallRadius - 28, bulge = 12, gallery = front + 8;
constexpr double clearOfColumns = front - bulge - 2;  // so far out, things hang just before it all
double turnOf(int number);                            // of a bay's middle, radians

// The backs of its niches, which show the light in them; and what stays dark, which is their sides and the
// gallery.
Shape niches();
Shape shadows();

// An arch and the column on its right, of the bay whose middle lies at turn 0.
Shape stone();

// Lines of light round every niche.
Shape mouldings();

}  // namespace arcade
