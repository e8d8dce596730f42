// What is seen of the hall's mirror ball.
#pragma once

#include "production/kit/model/shape.h"

namespace ball {

// The mirrors, in their place in the hall.
model::Shape mirrors();

// A shell behind them, whose inside shines round the ball.
model::Shape rim();

}  // namespace ball
