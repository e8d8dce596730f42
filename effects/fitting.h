// Where effects and the models that they draw have to fit each other: for both. In model units, angles in
// radians.
#pragma once

namespace fitting {

// The room's beams leave a ring above the floor for the ball's centre, on its axis.
constexpr int beamSources = 5;
constexpr float sourceRadius = 120, sourceHeight = 140, ballHeight = 70;

// A segment of the tunnel, and how the next one, further towards -z, is turned: so many steps of a twist.
constexpr float segmentLength = 300;
constexpr int twistPerSegment = 4;
constexpr double twistRadians = 0.2;

constexpr float pedestalHeight = 94;  // the robot's casing
constexpr float discRadius = 100;     // of the light that sinks down it, to its corners
constexpr float storey = 20;          // of the heap

}  // namespace fitting
