// Texture coordinates for finished shapes. Scales are model units for one repeat of the texture; T runs down
// the picture as it is stored (row 0 is T = 0), so what stands upright in the file stands upright on a wall.
#pragma once

#include <functional>

#include "production/kit/model/shape.h"

namespace model {

// Each face from the axis that its normal is nearest to: no smears, a seam where the axis changes.
Shape mappedBox(Shape shape, double unitsPerRepeat);

// `repeats` times around the y axis (rightwards as its viewer sees it, inside or out), units along it for
// faces that stand; faces that lie across the axis are mapped along it. Faces are unwrapped one by one, so no
// face runs back over the whole picture.
Shape mappedCylinder(Shape shape, int repeats, double unitsPerRepeat);

// A rectangle of a picture: its lower left and upper right corner as a viewer of the wall sees them.
struct Patch {
    Uv low, high;

    // A place of it: 0..1 from its left to its right and from its lower to its upper edge.
    Uv at(double across, double up) const { return {mix(low.x, high.x, across), mix(low.y, high.y, up)}; }
};

// Each corner of each face, at `point`, shows what `place` says.
Shape mappedBy(Shape shape, const std::function<Uv(const Face& face, Vec point)>& place);

// Texture coordinates of 0..1 (as forms are made with) carried into a patch, T = 0 to its lower edge.
Shape painted(Shape shape, const Patch& patch);

// One place of the picture for all: a plain colour.
Shape painted(Shape shape, Uv place);

}  // namespace model
