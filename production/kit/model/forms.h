// The forms that models start from: surfaces over a grid, lathes, sweeps, extrusions, boxes and icospheres.
// Fronts face outwards where a form has an outside. Texture coordinates run with the grid; a mapping of
// mapping.h usually replaces them.
#pragma once

#include <functional>
#include <vector>

#include "production/kit/model/shape.h"

namespace model {

using Outline = std::vector<Flat>;

// Quads between `columns` x `rows` points; a closed direction joins its last point to its first. The front is
// where columns run to the right and rows run up. Texture coordinates are 0..1 each way.
Shape grid(int columns, int rows, bool closedColumns, bool closedRows,
           const std::function<Vec(int column, int row)>& place);

// Turns a profile of (radius, height) about the y axis. A profile that runs upwards with the axis on its left
// gives an outward front. Points on the axis close the shape to a pole.
Shape lathe(const Outline& profile, int sides);

// Grooves along a lathe: `count` of them, evenly spread, each `width` radians wide and `depth` units deep,
// cut into the profile's points whose height lies in low..high. `land` columns span each stretch between
// grooves.
struct Flutes {
    int count = 12;
    double width = 0.05, depth = 1;
    double low = -1e9, high = 1e9;
    int land = 3;
};
Shape flutedLathe(const Outline& profile, const Flutes& flutes, double firstAngle = 0);

// A lathe profile of plates with grooves between: `radius` gives the outside at each height, `cuts` the
// heights where one plate ends and the next begins, ascending. Grooves are `gap` wide and `depth` deep, plate
// edges rounded over `bevel`, and the plates sampled about every `step` units.
struct Plates {
    double gap = 1, depth = 1, bevel = 0.8, step = 5;
};
Outline platedProfile(const std::vector<double>& cuts, const Plates& plates,
                      const std::function<double(double height)>& radius);

// Carries a closed counter-clockwise outline along a path in frames that don't twist on
// their own; a closed path's remaining twist is spread along it. `change`, if given, edits the outline for
// each path point (scale it, roll it).
struct Sweep {
    std::vector<Vec> path;
    bool closedPath = false;
    bool capped = true;  // the ends of an open path
    Vec up = {0, 1, 0};  // where the outline's y points at the path's start, as nearly as the path allows
    std::function<Outline(int step, const Outline&)> change;
};
Shape sweep(const Outline& outline, const Sweep& how);

// Raises a closed counter-clockwise outline of the xy plane from z = 0 to `depth`, both rims chamfered by
// `bevel`.
Shape extrude(const Outline& outline, double depth, double bevel);

// A box about the origin with edges rounded over `bevel` units in 2 x `steps` strips.
Shape box(Vec size, double bevel, int steps = 1);

// An icosahedron split `level` times: 20 x 4^level faces on a sphere about the origin.
Shape icosphere(double radius, int level);

// Outlines run together into one.
Outline chained(const std::vector<Outline>& outlines);

// Outlines: a regular polygon about the origin (a circle with many sides), and any outline moved inwards by a
// distance.
Outline polygon(int sides, double radius);
Outline insetBy(const Outline& outline, double distance);

// A smooth closed or open curve through points, `steps` points from each to the next.
std::vector<Vec> curveThrough(const std::vector<Vec>& points, bool closed, int steps);

}  // namespace model
