#include "production/kit/model/shape.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

namespace model {

Vec areaVector(const Shape& shape, const Face& face) {
    Vec sum;
    const size_t count = face.points.size();
    const Vec origin = shape.points[face.points[0]];
    for (size_t i = 0; i < count; i++)
        sum +=
            cross(shape.points[face.points[i]] - origin, shape.points[face.points[(i + 1) % count]] - origin);
    return sum;
}

Vec faceNormal(const Shape& shape, const Face& face) {
    return normalized(areaVector(shape, face));
}

Vec faceCentre(const Shape& shape, const Face& face) {
    Vec sum;
    for (int point : face.points) sum += shape.points[point];
    return sum * (1.0 / face.points.size());
}

void addFace(Shape& shape, std::vector<int> points, std::vector<Uv> uvs) {
    uvs.resize(points.size());
    shape.faces.push_back({std::move(points), std::move(uvs)});
}

Shape joined(const std::vector<Shape>& parts) {
    Shape whole;
    for (const Shape& part : parts) {
        const int first = int(whole.points.size());
        whole.points.insert(whole.points.end(), part.points.begin(), part.points.end());
        for (Face face : part.faces) {
            for (int& point : face.points) point += first;
            whole.faces.push_back(std::move(face));
        }
    }
    return whole;
}

Shape bent(Shape shape, const std::function<Vec(Vec)>& place) {
    for (Vec& point : shape.points) point = place(point);
    return shape;
}

Shape moved(Shape shape, Vec by) {
    for (Vec& point : shape.points) point += by;
    return shape;
}

Shape scaled(Shape shape, Vec by) {
    for (Vec& point : shape.points) point = {point.x * by.x, point.y * by.y, point.z * by.z};
    return by.x * by.y * by.z < 0 ? insideOut(std::move(shape)) : shape;
}

Shape turned(Shape shape, Axis axis, double radians) {
    const double c = std::cos(radians), s = std::sin(radians);
    for (Vec& p : shape.points) {
        if (axis == Axis::x) p = {p.x, c * p.y - s * p.z, s * p.y + c * p.z};
        if (axis == Axis::y) p = {c * p.x + s * p.z, p.y, c * p.z - s * p.x};
        if (axis == Axis::z) p = {c * p.x - s * p.y, s * p.x + c * p.y, p.z};
    }
    return shape;
}

Shape reflected(const Shape& shape, Axis axis) {
    return scaled(shape,
                  {axis == Axis::x ? -1.0 : 1, axis == Axis::y ? -1.0 : 1, axis == Axis::z ? -1.0 : 1});
}

Shape withMirror(const Shape& shape) {
    return joined({shape, reflected(shape, Axis::x)});
}

Shape around(const Shape& shape, int copies) {
    std::vector<Shape> parts;
    for (int i = 0; i < copies; i++) parts.push_back(turned(shape, Axis::y, 2 * pi * i / copies));
    return joined(parts);
}

Shape placed(const Shape& shape, Vec origin, Vec up) {
    const Vec y = normalized(up);
    // Half-way between y and the new axis lies the axis of a half turn that carries one into the other; a
    // half turn about y first keeps x and z near where they were.
    const Vec half = y.y > -0.999999 ? normalized(y + Vec{0, 1, 0}) : Vec{1, 0, 0};
    return bent(shape, [&](Vec p) {
        const Vec q = {-p.x, p.y, -p.z};
        return half * (2 * dot(half, q)) - q + origin;
    });
}

Shape insideOut(Shape shape) {
    for (Face& face : shape.faces) {
        std::reverse(face.points.begin(), face.points.end());
        std::reverse(face.uvs.begin(), face.uvs.end());
    }
    return shape;
}

Shape smoothed(Shape shape, double radians) {
    for (Face& face : shape.faces) face.smoothing = radians;
    return shape;
}

namespace {

// Sums round each point the normals of its faces, weighed by area and by the angle at the corner (Thürmer and
// Wüthrich 1998, with the area added).
class CornerNormals {
public:
    explicit CornerNormals(const Shape& triangles) : shape(triangles), facesAt(triangles.points.size()) {
        for (size_t f = 0; f < shape.faces.size(); f++) {
            const Vec area = areaVector(shape, shape.faces[f]);
            unit.push_back(normalized(area));
            size.push_back(length(area));
            for (int point : shape.faces[f].points) facesAt[point].push_back(f);
        }
    }

    Vec at(size_t face, size_t corner) const {
        const int point = shape.faces[face].points[corner];
        Vec sum;
        for (size_t other : facesAt[point]) {
            const double limit = std::min(shape.faces[face].smoothing, shape.faces[other].smoothing);
            if (other == face || dot(unit[face], unit[other]) > std::cos(limit))
                sum += unit[other] * (size[other] * angleAt(other, point));
        }
        return normalized(sum);
    }

private:
    double angleAt(size_t face, int point) const {
        const std::vector<int>& points = shape.faces[face].points;
        const size_t i = std::find(points.begin(), points.end(), point) - points.begin();
        const Vec a = normalized(shape.points[points[(i + 1) % 3]] - shape.points[point]);
        const Vec b = normalized(shape.points[points[(i + 2) % 3]] - shape.points[point]);
        return std::acos(std::clamp(dot(a, b), -1.0, 1.0));
    }

    const Shape& shape;
    std::vector<std::vector<size_t>> facesAt;
    std::vector<Vec> unit;
    std::vector<double> size;  // twice the area
};

}  // namespace

std::vector<std::array<Vec, 3>> cornerNormals(const Shape& triangles) {
    const CornerNormals normals(triangles);
    std::vector<std::array<Vec, 3>> all;
    for (size_t f = 0; f < triangles.faces.size(); f++)
        all.push_back({normals.at(f, 0), normals.at(f, 1), normals.at(f, 2)});
    return all;
}

Shape shaded(const Shape& whole, const std::function<Vec(Vec point, Vec normal)>& facing) {
    constexpr double least = 0.04;  // of the way to the face's own normal
    Shape shape = triangulated(whole);
    const std::vector<std::array<Vec, 3>> normals = cornerNormals(shape);
    for (size_t f = 0; f < shape.faces.size(); f++) {
        Face& face = shape.faces[f];
        const Vec own = faceNormal(shape, face);
        face.normals.clear();
        for (size_t i = 0; i < 3; i++) {
            const Vec wanted = normalized(facing(shape.points[face.points[i]], normals[f][i]));
            const double behind = std::max(0.0, least - dot(wanted, own));
            face.normals.push_back(normalized(wanted + own * behind));
        }
    }
    return shape;
}

Shape litAs(const Shape& whole, const std::function<Vec(Vec point)>& facing) {
    Shape shape = triangulated(whole);
    for (Face& face : shape.faces) {
        face.normals.clear();
        for (const int point : face.points) face.normals.push_back(normalized(facing(shape.points[point])));
    }
    return shape;
}

namespace {

// Numbers points so that those within `tolerance` of an earlier one get its number. Points are looked up in
// the cells of a grid around them, so the result doesn't depend on where the grid's lines fall.
class Welder {
public:
    explicit Welder(double tolerance) : tolerance(tolerance) {}

    int numberOf(Vec p) {
        const double cell = tolerance * 4;
        const long long x = std::llround(p.x / cell), y = std::llround(p.y / cell),
                        z = std::llround(p.z / cell);
        for (long long i = x - 1; i <= x + 1; i++) {
            for (long long j = y - 1; j <= y + 1; j++) {
                for (long long k = z - 1; k <= z + 1; k++) {
                    const auto found = cells.find({i, j, k});
                    if (found == cells.end()) continue;
                    for (int point : found->second)
                        if (length(points[point] - p) <= tolerance) return point;
                }
            }
        }
        points.push_back(p);
        cells[{x, y, z}].push_back(int(points.size()) - 1);
        return int(points.size()) - 1;
    }

    std::vector<Vec> points;

private:
    double tolerance;
    std::map<std::tuple<long long, long long, long long>, std::vector<int>> cells;
};

}  // namespace

Shape welded(const Shape& shape, double tolerance) {
    Welder welder(tolerance);
    std::vector<int> number;
    for (const Vec& point : shape.points) number.push_back(welder.numberOf(point));

    Shape result;
    result.points = std::move(welder.points);
    for (const Face& face : shape.faces) {
        Face kept;
        kept.smoothing = face.smoothing;
        for (size_t i = 0; i < face.points.size(); i++) {
            const int point = number[face.points[i]];
            if (std::find(kept.points.begin(), kept.points.end(), point) != kept.points.end()) continue;
            kept.points.push_back(point);
            kept.uvs.push_back(face.uvs[i]);
            if (!face.normals.empty()) kept.normals.push_back(face.normals[i]);
        }
        if (kept.points.size() >= 3) result.faces.push_back(std::move(kept));
    }
    return result;
}

namespace {

// True when corner b of the outline is convex and no other corner lies in the triangle a b c.
bool isEar(const Shape& shape, const std::vector<int>& outline, size_t b, Vec normal) {
    const size_t count = outline.size();
    const size_t a = (b + count - 1) % count, c = (b + 1) % count;
    const Vec pa = shape.points[outline[a]], pb = shape.points[outline[b]], pc = shape.points[outline[c]];
    if (dot(cross(pb - pa, pc - pb), normal) <= 1e-12) return false;
    for (size_t i = 0; i < count; i++) {
        if (i == a || i == b || i == c) continue;
        const Vec p = shape.points[outline[i]];
        if (dot(cross(pb - pa, p - pa), normal) >= 0 && dot(cross(pc - pb, p - pb), normal) >= 0 &&
            dot(cross(pa - pc, p - pc), normal) >= 0)
            return false;
    }
    return true;
}

// Near ties count as shorter, so that all quads of a row are cut the same way.
bool firstDiagonalIsShorter(const Shape& shape, const Face& quad) {
    const auto diagonal = [&](int a, int b) {
        return length(shape.points[quad.points[a]] - shape.points[quad.points[b]]);
    };
    return diagonal(0, 2) <= diagonal(1, 3) + 1e-9;
}

void addTriangle(Shape& out, const Face& face, size_t a, size_t b, size_t c) {
    out.faces.push_back({{face.points[a], face.points[b], face.points[c]},
                         {face.uvs[a], face.uvs[b], face.uvs[c]},
                         face.smoothing});
    if (!face.normals.empty()) out.faces.back().normals = {face.normals[a], face.normals[b], face.normals[c]};
}

void clipEars(const Shape& shape, const Face& face, Shape& out) {
    const Vec normal = faceNormal(shape, face);
    std::vector<int> outline = face.points;
    std::vector<size_t> corner(outline.size());
    for (size_t i = 0; i < corner.size(); i++) corner[i] = i;
    while (outline.size() > 3) {
        size_t ear = 0;
        while (ear + 1 < outline.size() && !isEar(shape, outline, ear, normal)) ear++;
        const size_t before = (ear + outline.size() - 1) % outline.size(), after = (ear + 1) % outline.size();
        addTriangle(out, face, corner[before], corner[ear], corner[after]);
        outline.erase(outline.begin() + ear);
        corner.erase(corner.begin() + ear);
    }
    addTriangle(out, face, corner[0], corner[1], corner[2]);
}

}  // namespace

Shape triangulated(const Shape& shape) {
    Shape result;
    result.points = shape.points;
    for (const Face& face : shape.faces) {
        if (face.points.size() == 3) {
            result.faces.push_back(face);
        } else if (face.points.size() == 4) {
            // The shorter diagonal keeps bent quads from folding.
            const size_t from = firstDiagonalIsShorter(shape, face) ? 0 : 1;
            addTriangle(result, face, from, from + 1, (from + 2) % 4);
            addTriangle(result, face, from, (from + 2) % 4, (from + 3) % 4);
        } else {
            clipEars(shape, face, result);
        }
    }
    return result;
}

}  // namespace model
