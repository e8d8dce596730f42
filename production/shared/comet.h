// Where the comet's head lies in the picture of reflections "envmap", and how broad it is, in degrees:
// `azimuth` from straight behind the viewer to the right, `elevation` up; its tail runs on to the right. The
// picture paints it there, the hall's shading aims there.
#pragma once

namespace comet {

constexpr double azimuth = 4, elevation = -60, tail = 80;
// Of the bells across head and tail; the tail's grows so much from its root to its end.
constexpr double headBreadth = 2.0, tailBreadth = 1.7, tailGrowth = -0.9;
constexpr double azimuthShrinks = 0.6;  // about, so high up

}  // namespace comet
