// Texture coordinates for finished shapes. Scales are model units for one repeat of the texture; T runs down
// the picture as it is stored (row 0 is T = 0), so what stands upright in the file stands upright on a wall.
#pragma once

#include "production/kit/model_shape.h"

namespace model {

// Each face from the axis that its normal is nearest to: no smears, a seam where the axis changes.
Shape mappedBox(Shape shape, double unitsPerRepeat, Uv offset = {});

// All faces along one axis.
Shape mappedPlanar(Shape shape, Axis axis, double unitsPerRepeat, Uv offset = {});

// `repeats` times around the axis, units along it for faces that stand; faces that lie across the axis are
// mapped along it. Faces are unwrapped one by one, so no face runs back over the whole picture.
Shape mappedCylinder(Shape shape, Axis axis, int repeats, double unitsPerRepeat);

Shape uvScaled(Shape shape, double s, double t);

}  // namespace model
