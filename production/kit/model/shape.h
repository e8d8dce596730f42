// A shape under construction: polygons over shared points, and what can be done to any shape, however it was
// made. Operations return a new shape, so a model reads as an expression built from the inside out.
#pragma once

#include <array>
#include <functional>
#include <vector>

#include "production/kit/model/vector.h"

namespace model {

constexpr double hard = 0;    // smoothing angle of a facet: every edge shows
constexpr double soft = 0.7;  // radians (40 degrees): bevels flow into their faces, corners stay

// A planar (or nearly planar) polygon, counter-clockwise seen from its front.
struct Face {
    std::vector<int> points;  // indices into the shape's points
    std::vector<Uv> uvs;      // one per corner
    double smoothing = soft;  // radians: neighbours that bend away by less share their normals with this face
    std::vector<Vec> normals = {};  // if not empty, what light takes each corner to face (see shaded())
};

struct Shape {
    std::vector<Vec> points;
    std::vector<Face> faces;
};

enum class Axis { x, y, z };

// Newell's method (Sutherland et al. 1974): right for any polygon, concave or slightly bent; the length is
// twice the area.
Vec areaVector(const Shape& shape, const Face& face);
Vec faceNormal(const Shape& shape, const Face& face);
Vec faceCentre(const Shape& shape, const Face& face);

// Adds a polygon; corners without texture coordinates get (0, 0).
void addFace(Shape& shape, std::vector<int> points, std::vector<Uv> uvs = {});

Shape joined(const std::vector<Shape>& parts);
Shape moved(Shape shape, Vec by);
Shape scaled(Shape shape, Vec by);  // negative factors mirror and keep the front in front
Shape turned(Shape shape, Axis axis, double radians);
Shape reflected(const Shape& shape, Axis axis);  // the mirror image alone
Shape withMirror(const Shape& shape);            // the shape and its mirror image in x
Shape around(const Shape& shape, int copies);    // copies spread evenly round the y axis, the first in place
Shape placed(const Shape& shape, Vec origin, Vec up);  // the shape's y axis turned to `up`, its origin moved
Shape insideOut(Shape shape);
Shape bent(Shape shape, const std::function<Vec(Vec)>& place);  // moves every point
Shape smoothed(Shape shape, double radians);                    // sets the smoothing angle of every face

// By face and corner, the normals that light meets: the face's own and those of the faces around the point
// that bend away by less than the smoothing angle, so that flat plates stay flat and their bevels carry the
// turn.
std::vector<std::array<Vec, 3>> cornerNormals(const Shape& triangles);

// Light falls otherwise than the surface lies: `facing` says where each corner seems to look, from its place
// and the normal that it had. What would look behind its face is turned until it just doesn't. Cuts polygons
// to triangles. To be done last: whatever turns or bends the shape leaves these normals as they are.
Shape shaded(const Shape& whole, const std::function<Vec(Vec point, Vec normal)>& facing);

// The same for what may be lit from behind its face, too: where neighbours look one way, no facet shows.
Shape litAs(const Shape& whole, const std::function<Vec(Vec point)>& facing);

// Joins points closer than `tolerance` and drops what collapses: repeated corners, then faces below three.
Shape welded(const Shape& shape, double tolerance = 1e-6);

// Polygons cut to triangles (ear clipping, so concave outlines hold).
Shape triangulated(const Shape& shape);

}  // namespace model
