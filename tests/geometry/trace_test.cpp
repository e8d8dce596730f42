#include "geometry/trace.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <random>

#include "tests/geometry/triangles.h"

namespace {

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
    BeamPath path(16);
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
    TraceScene scene(16);
    scene.addInstance(&mirrors);
    BeamPath path;
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

TEST(TraceBeam, StaysOutOfEmptyScenesAndZeroBounces) {
    const TraceScene scene;
    BeamPath path;
    EXPECT_EQ(traceBeam(scene, {0, 0, 0}, {1, 0, 0}, 5, path), 0);
    EXPECT_EQ(path.count, 2);
    EXPECT_EQ(traceBeam(scene, {0, 0, 0}, {1, 0, 0}, 0, path), 0);
    EXPECT_EQ(path.count, 1);
}

// Coordinates that single precision holds exactly, so that beta and gamma come out as 0 and 1.
TEST(IntersectTriangle, EdgesAndCornersMiss) {
    const Vec3 p0 = {0, 0, 0}, p1 = {4, 0, 0}, p2 = {0, 4, 0}, down = {0, 0, -1};
    TraceHit hit;
    const auto hits = [&](float x, float y) {
        return intersectTriangle(p0, p1, p2, {x, y, 8}, down, 0.001f, 999999, &hit);
    };
    for (const auto& [x, y] :
         {std::pair{2.f, 0.f}, {0.f, 2.f}, {2.f, 2.f}, {0.f, 0.f}, {4.f, 0.f}, {0.f, 4.f}})
        EXPECT_FALSE(hits(x, y)) << x << " " << y;
    for (const auto& [x, y] : {std::pair{-1.f, 1.f}, {1.f, -1.f}, {3.f, 2.f}}) EXPECT_FALSE(hits(x, y));
    ASSERT_TRUE(hits(1, 1));
    EXPECT_EQ(hit.distance, 8);
    expectNear(hit.normal, {0, 0, 1});
    EXPECT_TRUE(hits(1e-6f, 1e-6f));
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
    EXPECT_FALSE(intersectTriangle(t[0], t[1], t[2], {0, 0, 8}, {1, 0, 0}, 0, 9, &hit));  // parallel
}

TEST(TraceScene, IgnoresWhatLiesAtTheStart) {
    const MeshSet mirrors = meshOf({mirror(0), mirror(-5)});
    TraceScene scene;
    scene.addInstance(&mirrors);
    TraceHit hit;
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

TEST(TraceScene, MeshesWithoutPositionsAreNeverHit) {
    MeshSet bare;
    bare.reset(2);
    bare.meshes[0].faceCount = 1;
    TraceScene scene;
    scene.addInstance(&bare);
    scene.addInstance(nullptr);
    TraceHit hit;
    EXPECT_FALSE(scene.intersectRay({0, 0, 1}, {0, 0, -1}, &hit));
}

// The same question in double precision and another formula: the plane's point and its side of the edges.
struct Point {
    double x, y, z;
};
Point operator-(const Point& a, const Point& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
Point cross(const Point& a, const Point& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
double dot(const Point& a, const Point& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

Point toWorld(const Matrix4& matrix, const Vec3& p) {
    const float* m = matrix.m;
    const auto row = [&](int i) {
        return double{m[i]} * p.x + double{m[4 + i]} * p.y + double{m[8 + i]} * p.z + m[12 + i];
    };
    return {row(0), row(1), row(2)};
}

struct Meeting {
    double distance;
    double clearance;  // from the nearest edge, inside positive; in the triangle's own measure
};

std::optional<Meeting> meet(const Point& a, const Point& b, const Point& c, const Point& o, const Point& d) {
    const Point normal = cross(b - a, c - a);
    const double t = dot(normal, a - o) / dot(normal, d);
    if (!(t > 0)) return {};
    const Point p = {o.x + t * d.x, o.y + t * d.y, o.z + t * d.z};
    const double area = dot(normal, normal);
    const auto side = [&](const Point& from, const Point& to) {
        return dot(normal, cross(to - from, p - from)) / area;
    };
    return Meeting{t, std::min({side(a, b), side(b, c), side(c, a)})};
}

TEST(TraceScene, AgreesWithDoublePrecisionOnRandomScenes) {
    constexpr double doubtful = 1e-3;  // of an edge or of another hit: single precision may decide otherwise
    std::mt19937 random(3);
    std::uniform_real_distribution<float> place(-100, 100), extent(-40, 40), angle(0, 6);
    const auto anyPoint = [&](auto& range) { return Vec3{range(random), range(random), range(random)}; };
    int hits = 0, misses = 0;
    for (int run = 0; run < 20; run++) {
        std::vector<Triangle> triangles(30);
        for (Triangle& t : triangles) {
            const Vec3 middle = anyPoint(place);
            for (Vec3& corner : t) corner = middle + anyPoint(extent);
        }
        const MeshSet set = meshOf(triangles);
        const Matrix4 stretch = {{1.5f, 0, 0, 0, 0, 0.7f, 0, 0, 0.2f, 0, 1, 0, 0, 0, 0, 1}};
        const std::array<Matrix4, 2> matrices = {
            identity(),
            affineProduct(translation(anyPoint(place)), affineProduct(rotationY(angle(random)), stretch))};
        TraceScene scene;
        scene.addInstance(&set);
        scene.addInstance(&set, &matrices[1]);
        for (int ray = 0; ray < 100; ray++) {
            const Vec3 origin = anyPoint(place);
            Vec3 direction = anyPoint(extent);
            direction.normalize();
            double nearest = 1e30, second = 1e30;
            bool clear = true;
            for (const Matrix4& matrix : matrices)
                for (const Triangle& t : triangles) {
                    const auto met =
                        meet(toWorld(matrix, t[0]), toWorld(matrix, t[1]), toWorld(matrix, t[2]),
                             {origin.x, origin.y, origin.z}, {direction.x, direction.y, direction.z});
                    if (!met || met->clearance < -doubtful) continue;
                    if (met->clearance < doubtful || met->distance < 0.1) clear = false;
                    second = std::min(second, std::max(nearest, met->distance));
                    nearest = std::min(nearest, met->distance);
                }
            const bool anything = nearest < 1e30;
            if (!clear || (anything && second - nearest < doubtful)) continue;
            TraceHit hit;
            ASSERT_EQ(scene.intersectRay(origin, direction, &hit), anything);
            if (anything) {
                EXPECT_NEAR(hit.distance, nearest, 0.02);
                expectNear(hit.point, origin + direction * hit.distance, 0.02f);
                hits++;
            } else {
                misses++;
            }
        }
    }
    EXPECT_GT(hits, 300);
    EXPECT_GT(misses, 100);
}

}  // namespace
