// Points, directions and texture coordinates of the modelling kit, in double precision so that welding and
// offsetting don't drift; the writer rounds to single precision once, at the end.
#pragma once

#include <numbers>

#include "production/kit/maths.h"

namespace model {

using kit::bell, kit::cross, kit::curveBetween, kit::dot, kit::length, kit::mix, kit::normalized,
    kit::smoothstep;

constexpr double pi = std::numbers::pi;

using Vec = kit::Vector3<double>;
using Flat = kit::Vector2<double>;  // of an outline or of a lathe's profile
using Uv = Flat;                    // of a picture: S, then T, which runs down

// As radians.
constexpr double degrees(double angle) {
    return angle * pi / 180;
}

// Of a number, what is left over the whole number below it: 0..1.
inline double fraction(double x) {
    return x - std::floor(x);
}

}  // namespace model
