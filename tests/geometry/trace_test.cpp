#include "geometry/trace.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <functional>
#include <limits>
#include <random>

#include "tests/geometry/aml_bytes.h"

namespace {

using Triangle = std::array<Vec3, 3>;

// A set of three meshes, the first of them empty; positions don't lie first.
MeshSet meshOf(const std::vector<Triangle>& triangles) {
    const AmlMesh none = {{{texCoordAttrib, 1}, {positionAttrib, 3}}, {}, {}, {}};
    std::vector<AmlMesh> meshes = {{}, none, none};
    for (size_t i = 0; i < triangles.size(); i++) {
        AmlMesh& mesh = meshes[1 + 2 * i / triangles.size()];
        for (const Vec3& p : triangles[i]) {
            mesh.faces.push_back(uint16_t(mesh.faces.size()));
            mesh.vertices.insert(mesh.vertices.end(), {0, p.x, p.y, p.z});
        }
    }
    return meshesIn(amlFile(meshes));
}

// In the plane z = `z`, about the z axis, facing +z.
Triangle mirror(float z) {
    return {Vec3{-90, -50, z}, Vec3{90, -50, z}, Vec3{0, 90, z}};
}
Triangle turned(const Triangle& t) {
    return {t[0], t[2], t[1]};
}

void expectNear(const Vec3& actual, const Vec3& expected, float tolerance = 1e-3f) {
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.z, expected.z, tolerance);
}

TEST(TraceBeam, FacingMirrorsReflectUpToTheLimit) {
    const MeshSet mirrors = meshOf({mirror(0), turned(mirror(10))});
    TraceScene scene;
    scene.addInstance(&mirrors);
    BeamPath path;
    EXPECT_EQ(traceBeam(scene, {0, 0, 4}, {0, 0, 1}, 5, path), 5);
    ASSERT_EQ(path.count, 6);
    const float heights[] = {4, 10, 0, 10, 0, 10};
    for (int i = 0; i < 6; i++) {
        expectNear(path[i].point, {0, 0, heights[i]});
        EXPECT_NEAR(path[i].distance, i == 0 ? 0 : i == 1 ? 6 : 10, 1e-3);
        expectNear(path[i].normal, {0, 0, i == 0 ? 0.f : i % 2 ? -1.f : 1.f});
    }
}

TEST(TraceBeam, EscapeEndsAThousandFurtherOn) {
    const MeshSet mirrors = meshOf({mirror(0)});
    TraceScene scene;
    BeamPath path;
    EXPECT_EQ(traceBeam(scene, {1, 2, 3}, {0, 0, -1}, 5, path), 0);
    EXPECT_EQ(path.count, 2) << "nothing is there yet";
    EXPECT_EQ(traceBeam(scene, {1, 2, 3}, {0, 0, -1}, 0, path), 0);
    EXPECT_EQ(path.count, 1);

    scene.addInstance(&mirrors);
    EXPECT_EQ(traceBeam(scene, {1, 2, 3}, {0, 0, 1}, 5, path), 0);
    ASSERT_EQ(path.count, 2);
    expectNear(path[1].point, {1, 2, 1003});
    EXPECT_EQ(path[1].distance, 1000);
    expectNear(path[1].normal, {0, 0, 0});

    EXPECT_EQ(traceBeam(scene, {0, 0, 3}, {0, 0.6f, -0.8f}, 5, path), 0);
    ASSERT_EQ(path.count, 3);
    expectNear(path[1].point, {0, 2.25f, 0});
    expectNear(path[2].point, {0, 602.25f, 800}, 0.01f);
}

TEST(IntersectTriangle, DistanceLimitsAreInclusiveAndBackFacesCount) {
    const Triangle t = turned(mirror(0));
    TraceHit hit;
    const auto hits = [&](float height, float least, float most) {
        return intersectTriangle(t[0], t[1], t[2], {0, 0, height}, {0, 0, -1}, least, most, &hit);
    };
    EXPECT_TRUE(hits(8, 8, 8));
    expectNear(hit.normal, {0, 0, -1});
    EXPECT_FALSE(hits(8, 8.001f, 9));
    EXPECT_FALSE(hits(8, 1, 7.999f));
    EXPECT_FALSE(hits(-8, 0.001f, 9));
    EXPECT_FALSE(intersectTriangle(t[0], t[1], t[2], {0, 0, 8}, {1, 0, 0}, 0, 9, &hit)) << "parallel";
}

TEST(TraceScene, IgnoresWhatLiesAtTheStartAndMeshesWithoutPositions) {
    MeshSet bare;
    bare.reset(1);
    bare.meshes[0].faceCount = 1;
    TraceScene scene;
    scene.addInstance(&bare);
    scene.addInstance(nullptr);
    TraceHit hit;
    EXPECT_FALSE(scene.intersectRay({0, 0, 1}, {0, 0, -1}, &hit));

    const MeshSet mirrors = meshOf({mirror(0), mirror(-5)});
    scene.addInstance(&mirrors);
    ASSERT_TRUE(scene.intersectRay({0, 0, 0.0009f}, {0, 0, -1}, &hit));
    EXPECT_NEAR(hit.distance, 5, 0.01);
    ASSERT_TRUE(scene.intersectRay({0, 0, 0.0011f}, {0, 0, -1}, &hit));
    EXPECT_NEAR(hit.distance, 0.0011, 1e-6);
}

TEST(TraceScene, NearestOfMovedAndScaledInstances) {
    const MeshSet mirrors = meshOf({mirror(0)});
    const Matrix4 scaled = {{2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 4, 0, 0, 0, -30, 1}};
    TraceScene scene;
    scene.addInstance(&mirrors, &scaled);
    scene.addInstance(&mirrors);
    TraceHit hit;
    const auto distance = [&] {
        return scene.intersectRay({0, 0, 10}, {0, 0, -1}, &hit) ? hit.distance : -1;
    };
    EXPECT_NEAR(distance(), 10, 1e-3);
    scene.setInstanceMatrix(1, translation({0, 0, -100}));
    EXPECT_NEAR(distance(), 40, 1e-3);
    expectNear(hit.point, {0, 0, -30});
    expectNear(hit.normal, {0, 0, 4});  // carried by the matrix, not normalised
    scene.setInstanceMatrix(0, translation({1000, 0, 0}));
    EXPECT_NEAR(distance(), 110, 1e-3);
}

// The search against a loop over all faces that divides first and asks then: the same face, and the same
// bits.
class FaceSearch : public testing::Test {
protected:
    std::mt19937 random;
    int rays = 0, hits = 0;

    int any(int count) { return int(random() % unsigned(count)); }
    float between(float a, float b) { return std::uniform_real_distribution<float>(a, b)(random); }

    // Corners and the middles of edges too, which single precision often holds exactly.
    Vec3 anyPointOf(const std::vector<Triangle>& triangles) {
        const Triangle& t = triangles[size_t(any(int(triangles.size())))];
        const Vec3 along = t[1] - t[0], across = t[2] - t[0];
        if (any(2)) return t[0] + along * (0.5f * float(any(3))) + across * (0.5f * float(any(3)));
        const float u = between(0, 1);
        return t[0] + along * u + across * between(0, 1 - u);
    }
    // From inside a model, from about it and off its faces; at faces, along them and along the axes.
    Ray anyRay(const std::vector<Triangle>& triangles) {
        const Vec3 axes[] = {{1, 0, 0}, {0, -1, 0}, {0, 0, 1}, {-0.6f, 0, 0.8f}};
        Vec3 origin = anyPointOf(triangles);
        if (any(3)) origin += (anyPointOf(triangles) - origin) * between(-0.2f, 1.2f);
        Vec3 direction = any(4) ? anyPointOf(triangles) - origin : axes[any(4)];
        if (any(4)) direction.normalize();  // the others end at the face
        return {origin, direction};
    }

    void compare(const std::vector<Triangle>& triangles, int count, const std::function<Ray()>& nextRay) {
        const std::vector<FaceBlock> blocks = gatherFaces(meshOf(triangles));
        for (int i = 0; i < count && !HasFailure(); i++, rays++) {
            const Ray ray = nextRay();
            float distance = 999999;
            const int face = plainLoop(triangles, ray, &distance);
            hits += face >= 0;
            for (const auto search : {nearestFace, nearestFaceWithoutAvx}) {
                float found = 999999;
                EXPECT_EQ(search(blocks, ray.origin, ray.direction, 0.001f, &found), face) << "ray " << rays;
                EXPECT_EQ(std::bit_cast<uint32_t>(found), std::bit_cast<uint32_t>(distance))
                    << "ray " << rays;
            }
        }
    }

private:
    static int plainLoop(const std::vector<Triangle>& triangles, const Ray& ray, float* distance) {
        int nearest = -1;
        for (size_t i = 0; i < triangles.size(); i++) {
            const auto& [p0, p1, p2] = triangles[i];
            const Vec3 a = p0 - p1, b = p0 - p2, c = p0 - ray.origin, bd = cross(b, ray.direction);
            const float whole = dot(a, bd), beta = dot(c, bd) / whole;
            const float gamma = dot(a, cross(c, ray.direction)) / whole, t = dot(a, cross(b, c)) / whole;
            if (!(beta > 0 && beta < 1 && gamma > 0 && beta + gamma < 1)) continue;
            if (!(t >= 0.001f && t <= *distance)) continue;
            nearest = int(i);
            *distance = t;
        }
        return nearest;
    }
};

// On a grid of small whole numbers edges, corners and ties come out exactly; off it, hardly ever.
TEST_F(FaceSearch, FindsWhatThePlainLoopFindsAmongRandomFaces) {
    for (int scene = 0; scene < 200; scene++) {
        const auto onGrid = [&](float x) { return scene % 2 ? std::round(x) : x; };
        std::vector<Triangle> triangles(size_t(1 + any(50)));
        for (Triangle& t : triangles) {
            for (Vec3& p : t) p = {onGrid(between(-4, 4)), onGrid(between(-4, 4)), onGrid(between(-4, 4))};
            if (any(8) == 0) t = triangles[size_t(any(int(triangles.size())))];  // once more, or all zeros
        }
        compare(triangles, 500, [&] {
            const auto [origin, direction] = anyRay(triangles);
            return Ray{{onGrid(origin.x), onGrid(origin.y), onGrid(origin.z)}, direction};
        });
    }
    EXPECT_GT(hits, rays / 4);
    EXPECT_LT(hits, rays * 9 / 10);
}

// Sizes whose products overflow or vanish, and values that are none, in faces and rays.
TEST_F(FaceSearch, TakesExtremeNumbersAsThePlainLoopDoes) {
    constexpr float infinity = std::numeric_limits<float>::infinity(), none = NAN;
    const float extremes[] = {0,      -0.0f, 1,     -1,     3,        1e-20f,    -1e-23f, 1e-38f,
                              1e-45f, 1e12f, 1e19f, -3e38f, infinity, -infinity, none,    0.001f};
    const float scales[] = {1, 1, 1e-11f, 1e-13f, 1e-20f, 1e10f, 1e15f};
    const auto anywhere = [&](float scale) {
        const auto number = [&] { return scale * (any(3) ? between(-4, 4) : extremes[any(16)]); };
        return Vec3{number(), number(), number()};
    };
    for (int scene = 0; scene < 500; scene++) {
        const float scale = scales[any(7)];
        std::vector<Triangle> triangles(size_t(1 + any(40)));
        for (Triangle& t : triangles) t = {anywhere(scale), anywhere(scale), anywhere(scale)};
        compare(triangles, 200, [&] { return Ray{anywhere(scale), anywhere(any(2) ? 1 : scale)}; });
    }
    EXPECT_GT(hits, 1000);
}

}  // namespace
