// Where the comet's head lies in the picture of reflections "envmap", in degrees: `azimuth` from straight
// behind the viewer to the right, `elevation` up; its tail runs on to the right. The picture paints it there,
// the hall's shading aims there.
#pragma once

namespace comet {

constexpr double azimuth = 4, elevation = -60, tail = 45;

}  // namespace comet
