// The figures of the scenes as shapes, in the coordinates of their own models: the hall gathers them once
// more.
#pragma once

#include "production/kit/model/shape.h"

namespace figures {

model::Shape robotShells();                               // its plates and hands
model::Shape robotWorks();                                // joints and frames: all that is dark
model::Shape robotScreen();                               // the face's glass
constexpr model::Flat robotScreenHalf = {16.2, 11.8};     // of its breadth and height
model::Shape robotTrim();                                 // painted parts and lamps
model::Shape onRobotScreen(const model::Shape& picture);  // from x = S, y = T, z = height over the glass
model::Shape ship();

}  // namespace figures
