// Of what stands in the hall, what shows already while the hall fades in.
#pragma once

#include "production/kit/model/shape.h"

namespace stage {

model::Shape plates();  // the floor's lit ones
model::Shape ship();    // as it hangs before the sun
model::Shape sun();
model::Shape pillars();

}  // namespace stage
