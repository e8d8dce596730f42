// The modelling kit: forms close, operations keep them closed, normals follow the smoothing angle, texture
// coordinates neither smear nor mirror, and large shapes are split for the file's 16-bit counts.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "production/kit/model/aml.h"
#include "production/kit/model/forms.h"
#include "production/kit/model/mapping.h"
#include "tests/geometry/aml_bytes.h"
#include "tests/scratch.h"

namespace {

using namespace model;

// Edges that are not walked once each way.
int openEdges(const Shape& shape) {
    std::map<std::pair<int, int>, int> walks;
    for (const Face& face : shape.faces)
        for (size_t i = 0; i < face.points.size(); i++)
            walks[{face.points[i], face.points[(i + 1) % face.points.size()]}]++;
    int open = 0;
    for (const auto& [edge, count] : walks) open += count != 1 || walks.count({edge.second, edge.first}) == 0;
    return open;
}

// By the divergence theorem: positive where fronts face outwards.
double volume(const Shape& shape) {
    double sum = 0;
    for (const Face& face : triangulated(shape).faces)
        sum += dot(shape.points[face.points[0]],
                   cross(shape.points[face.points[1]], shape.points[face.points[2]]));
    return sum / 6;
}

double surface(const Shape& shape) {
    double sum = 0;
    for (const Face& face : shape.faces) sum += length(areaVector(shape, face)) / 2;
    return sum;
}

const Outline hook = {{0, 0}, {4, 0}, {4, 1}, {1, 1}, {1, 3}, {0, 3}};  // concave, of area 6

TEST(ModelKit, FormsCloseAndFaceOutwards) {
    Sweep ring;
    ring.closedPath = true;
    for (int i = 0; i < 48; i++)
        ring.path.push_back(
            {10 * std::cos(pi * i / 24), 2 * std::sin(pi * i / 8), 10 * std::sin(pi * i / 24)});
    Sweep rod;
    rod.path = curveThrough({{0, 0, 0}, {0, 5, 1}, {3, 9, 0}}, false, 6);
    const struct {
        const char* name;
        Shape shape;
        double volume, tolerance;
    } rows[] = {
        {"box", box({4, 6, 8}, 0.5, 2), 192, 12},
        {"sphere", icosphere(3, 3), 113.1, 1.5},
        {"lathe", lathe({{0, -1}, {2, -1}, {2, 1}, {0, 1}}, 64), 25.1, 0.1},
        {"fluted lathe", flutedLathe({{0, 0}, {3, 0}, {3, 2}, {0, 2}}, {8, 0.1, 0.5}), 55, 3},
        {"extrusion", extrude(hook, 2, 0.2), 11, 0.5},
        {"closed sweep", sweep(polygon(24, 1), ring), 210, 4},
        {"capped sweep", sweep(polygon(12, 1), rod), 32, 3},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(openEdges(row.shape), 0) << row.name;
        EXPECT_NEAR(volume(row.shape), row.volume, row.tolerance) << row.name;
    }
}

TEST(ModelKit, OperationsKeepAShapeClosed) {
    const Shape start = box({4, 6, 8}, 0.5);
    const Shape closed[] = {
        scaled(start, {-1, 1, 2}),
        insideOut(insideOut(start)),
        turned(placed(start, {1, 2, 3}, {0, -1, 0}), Axis::x, 1),
    };
    for (const Shape& shape : closed) {
        EXPECT_EQ(openEdges(shape), 0) << &shape - closed;
        EXPECT_GT(volume(shape), 100) << &shape - closed;
    }
    EXPECT_LT(volume(insideOut(start)), 0);
    EXPECT_NEAR(volume(reflected(start, Axis::z)), volume(start), 1e-9);
}

TEST(ModelKit, PlacesAShapeUprightOnItsNewAxis) {
    for (const Vec up : {Vec{1, 0, 0}, Vec{0, -1, 0}, Vec{0.3, 0.5, -0.8}}) {
        Shape needle;
        needle.points = {{0, 0, 0}, {0, 2, 0}};
        const Shape there = placed(needle, {5, 6, 7}, up);
        EXPECT_LT(length(there.points[0] - Vec{5, 6, 7}), 1e-9);
        EXPECT_LT(length(there.points[1] - Vec{5, 6, 7} - normalized(up) * 2), 1e-9);
    }
}

TEST(ModelKit, CutsConcavePolygonsWithoutGapOrOverlap) {
    Shape shape;
    for (const Flat& p : hook) shape.points.push_back({p.x, p.y, 0});
    addFace(shape, {0, 1, 2, 3, 4, 5});
    const Shape cut = triangulated(shape);
    EXPECT_EQ(cut.faces.size(), 4u);
    EXPECT_NEAR(surface(cut), 6, 1e-9);
    for (const Face& face : cut.faces) EXPECT_GT(faceNormal(cut, face).z, 0.99);
}

TEST(ModelKit, SweptFramesDontTwistAndMeet) {
    Sweep how;
    how.closedPath = true;
    for (int i = 0; i < 90; i++) {
        const double a = 2 * pi * i / 90;
        how.path.push_back({std::cos(2 * a) * (3 + std::cos(3 * a)), std::sin(2 * a) * (3 + std::cos(3 * a)),
                            std::sin(3 * a)});
    }
    const Shape tube = sweep(Outline{{0.3, -0.1}, {0.3, 0.1}, {-0.3, 0.1}, {-0.3, -0.1}}, how);
    EXPECT_EQ(openEdges(tube), 0);
    // A jump of the frame anywhere, at the seam too, would bend quads out of their plane.
    for (const Face& face : tube.faces) {
        const Vec p = tube.points[face.points[0]], q = tube.points[face.points[1]],
                  r = tube.points[face.points[2]], s = tube.points[face.points[3]];
        EXPECT_GT(dot(normalized(cross(q - p, r - p)), normalized(cross(r - p, s - p))), 0.6);
    }
}

MeshSet loaded(const std::vector<Shape>& shapes) {
    const ScratchDirectory scratch;
    const std::string path = scratch.file("shape.AML");
    writeAml(path.c_str(), shapes);
    return meshesIn(contentOf(path));
}

TEST(ModelKit, NormalsFollowTheSmoothingAngle) {
    const Shape cube = box({2, 2, 2}, 0);
    const MeshSet faceted = loaded({smoothed(cube, hard)}), rounded = loaded({smoothed(cube, 1.7)});
    EXPECT_EQ(faceted.meshes[0].gvertexCount, 8);
    EXPECT_EQ(faceted.meshes[0].vertexCount, 24);
    const Mesh& mesh = rounded.meshes[0];
    for (int i = 0; i < mesh.vertexCount; i++) {
        const float* p = mesh.gvertexPosition(i);
        const float* n = mesh.vertexAttrib(i, normalAttrib);
        EXPECT_NEAR(p[0] * n[0] + p[1] * n[1] + p[2] * n[2], std::sqrt(3.0), 0.02);
    }
}

TEST(ModelKit, LargeShapesContinueInFurtherMeshes) {
    const Shape wide = grid(300, 301, false, false, [](int c, int r) { return Vec{c * 1.0, r * 1.0, 0}; });
    const MeshSet set = loaded({wide, box({1, 1, 1}, 0.1)});
    ASSERT_EQ(set.count, 4);
    int faces = 0;
    for (int i = 0; i < 3; i++) faces += set.meshes[i].faceCount;
    EXPECT_EQ(faces, 2 * 299 * 300);
}

// The orientation of a picture on a face: positive where it reads the right way round from the front.
double reading(const Face& face) {
    const Uv u = face.uvs[1] - face.uvs[0], v = face.uvs[2] - face.uvs[0];
    return -(u.x * v.y - u.y * v.x);  // T runs down
}

TEST(ModelKit, MappingsReadTheRightWayRoundInsideAndOut) {
    const Shape tube = lathe({{3, 0}, {3, 4}}, 12), ball = icosphere(5, 2);
    const Shape shapes[] = {
        mappedCylinder(tube, 4, 2),
        mappedCylinder(insideOut(tube), 4, 2),
        mappedBox(ball, 3),
        mappedBox(insideOut(ball), 3),
    };
    for (const Shape& shape : shapes) {
        for (const Face& face : shape.faces) {
            EXPECT_GT(reading(face), 0) << &shape - shapes;
            // No face runs back across the whole picture.
            for (const Uv& uv : face.uvs) EXPECT_LT(std::fabs(uv.x - face.uvs[0].x), 1.5);
        }
    }
}

}  // namespace
