// The tracer against the plain loop over all faces, which divides first and asks then: the same hits, and in
// them the same bits.
#include "geometry/trace_faces.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>
#include <limits>
#include <random>

#include "geometry/aml.h"
#include "geometry/trace.h"
#include "tests/geometry/triangles.h"

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr int share = 20;  // of the rays: the sanitizers look at each face of each
#else
constexpr int share = 1;
#endif

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

// A number that is rounded to single precision after every step, whatever the compiler would like to fuse.
struct Rounded {
    float value;
    Rounded(double exact) : value(float(exact)) {}
    operator double() const { return value; }
};
Rounded operator+(Rounded a, Rounded b) {
    return double{a.value} + double{b.value};
}
Rounded operator-(Rounded a, Rounded b) {
    return double{a.value} - double{b.value};
}
Rounded operator*(Rounded a, Rounded b) {
    return double{a.value} * double{b.value};
}
Rounded operator/(Rounded a, Rounded b) {
    return double{a.value} / double{b.value};
}

template <typename Number>
struct Triple {
    Number x, y, z;
    Triple(Number x, Number y, Number z) : x(x), y(y), z(z) {}
    Triple(const Vec3& v) : x(v.x), y(v.y), z(v.z) {}
};
template <typename Number>
Triple<Number> minus(const Triple<Number>& a, const Triple<Number>& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
template <typename Number>
Number determinant(const Triple<Number>& a, const Triple<Number>& b, const Triple<Number>& c) {
    return a.x * (b.y * c.z - b.z * c.y) + a.y * (b.z * c.x - b.x * c.z) + a.z * (b.x * c.y - b.y * c.x);
}

struct FaceHit {
    int face = -1;
    float distance = 999999;
};

// The first operand of each determinant is what stands outside the cross product: rounding depends on it.
template <typename Number>
FaceHit plainLoop(const std::vector<Triangle>& triangles, const Ray& ray) {
    using T = Triple<Number>;
    const T o = ray.origin, d = ray.direction;
    FaceHit nearest;
    for (int i = 0; i < int(triangles.size()); i++) {
        const T p0 = triangles[i][0];
        const T a = minus(p0, T(triangles[i][1])), b = minus(p0, T(triangles[i][2])), c = minus(p0, o);
        const Number whole = determinant(a, b, d);
        const Number beta = determinant(c, b, d) / whole, gamma = determinant(a, c, d) / whole;
        const Number t = determinant(a, b, c) / whole;
        if (beta > 0 && beta < 1 && gamma > 0 && beta + gamma < 1 && t >= 0.001f && t <= nearest.distance)
            nearest = {i, float(t)};
    }
    return nearest;
}

bool same(float a, float b) {
    return std::bit_cast<uint32_t>(a) == std::bit_cast<uint32_t>(b);
}
bool same(const Vec3& a, const Vec3& b) {
    return same(a.x, b.x) && same(a.y, b.y) && same(a.z, b.z);
}

struct Tally {
    int rays = 0, hits = 0;
};

// Each search that this processor can run, against the plain loop.
template <typename Number = float>
Tally compare(const std::vector<Triangle>& triangles, int count, const std::function<Ray()>& nextRay) {
    const std::vector<FaceBlock> blocks = gatherFaces(meshOf(triangles));
    Tally tally;
    for (; tally.rays < count && !testing::Test::HasFailure(); tally.rays++) {
        const Ray ray = nextRay();
        const FaceHit plain = plainLoop<Number>(triangles, ray);
        if (plain.face >= 0) tally.hits++;
        for (const auto& [instructionSet, search] : faceSearches()) {
            FaceHit found;
            found.face = search(blocks, ray.origin, ray.direction, 0.001f, &found.distance);
            if (found.face == plain.face && same(found.distance, plain.distance)) continue;
            ADD_FAILURE() << instructionSet << ", ray " << tally.rays << ": face " << found.face << " at "
                          << found.distance << " instead of face " << plain.face << " at " << plain.distance;
        }
    }
    return tally;
}

// Rays of all kinds about a model: from inside and outside it, off its faces, at its corners and edges, along
// its faces, and along the axes.
struct RayMaker {
    const std::vector<Triangle>& triangles;
    std::mt19937 random;
    Vec3 low = {infinity, infinity, infinity}, high = {-infinity, -infinity, -infinity};

    RayMaker(const std::vector<Triangle>& triangles, int seed) : triangles(triangles), random(seed) {
        for (const Triangle& t : triangles) {
            for (const Vec3& p : t) {
                low.set(std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z));
                high.set(std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z));
            }
        }
    }

    int any(int count) { return int(random() % count); }
    float between(float a, float b) { return std::uniform_real_distribution<float>(a, b)(random); }
    Vec3 anyDirection() {
        Vec3 direction = {between(-1, 1), between(-1, 1), between(-1, 1)};
        direction.normalize();
        return direction;
    }
    Vec3 anyPlace() {
        const Vec3 rim = 0.2f * (high - low);
        return {between(low.x - rim.x, high.x + rim.x), between(low.y - rim.y, high.y + rim.y),
                between(low.z - rim.z, high.z + rim.z)};
    }
    // Of a face: corners and the middles of edges too, which single precision often holds exactly.
    Vec3 anyPointOfFace() {
        const Triangle& t = triangles[any(int(triangles.size()))];
        const Vec3 along = t[1] - t[0], across = t[2] - t[0];
        if (any(2)) return t[0] + along * (0.5f * any(3)) + across * (0.5f * any(3));
        const float u = between(0, 1);
        return t[0] + along * u + across * between(0, 1 - u);
    }
    Vec3 towards(const Vec3& from, const Vec3& to) {
        Vec3 direction = to - from;
        if (any(4)) direction.normalize();  // the others meet t = 1 about there
        return direction;
    }

    Ray next() {
        const Vec3 axes[] = {{1, 0, 0}, {0, -1, 0}, {0, 0, 1}, {-0.6f, 0, 0.8f}};
        const Vec3 origin = any(3) ? anyPlace() : anyPointOfFace();
        switch (any(4)) {
            case 0:
                return {origin, anyDirection()};
            case 1:
                return {origin, axes[any(4)]};
            case 2:
                return {anyPointOfFace(), towards(origin, anyPointOfFace())};
            default:
                return {origin, towards(origin, anyPointOfFace())};
        }
    }
};

MeshSet loadModel(const char* path) {
    MeshSet set;
    ResDescFile file(path);
    loadAml(set, file, path);
    for (Mesh& mesh : set) {
        if (mesh.hasAttrib(gvertexAttrib)) mesh.expandPositions(path);
    }
    return set;
}

// What the beams of the show see.
class CollisionModel : public testing::TestWithParam<const char*> {};

TEST_P(CollisionModel, IsHitAsByThePlainLoop) {
    const std::vector<Triangle> triangles = trianglesOf(loadModel(GetParam()));
    RayMaker maker(triangles, 1);
    const Tally tally = compare(triangles, 300000 / share, [&] { return maker.next(); });
    EXPECT_GT(tally.hits, tally.rays / 3);
    EXPECT_LT(tally.hits, tally.rays);
}

INSTANTIATE_TEST_SUITE_P(FaceSearch, CollisionModel,
                         testing::Values("data/huone_simple.AML", "data/pallero.AML", "data/tunneli.AML"));

// On a grid of small whole numbers edges, corners and ties come out exactly; off it, hardly ever.
std::vector<Triangle> randomTriangles(RayMaker& maker, int count, bool onGrid) {
    std::vector<Triangle> triangles(count);
    for (Triangle& t : triangles) {
        for (Vec3& p : t) {
            p.set(maker.between(-8, 8), maker.between(-8, 8), maker.between(-8, 8));
            if (onGrid) p.set(std::round(p.x / 2), std::round(p.y / 2), std::round(p.z / 2));
        }
        if (maker.any(8) == 0) t = triangles[maker.any(count)];  // once more, or all zeros
    }
    return triangles;
}

template <typename Number>
Tally compareOnRandomFaces(int scenes, int raysPerScene) {
    const std::vector<Triangle> none = {{Vec3{-8, -8, -8}, Vec3{8, 8, 8}, Vec3{0, 0, 0}}};
    RayMaker maker(none, 2);
    Tally total;
    for (int scene = 0; scene < scenes && !testing::Test::HasFailure(); scene++) {
        const bool onGrid = scene % 2;
        const std::vector<Triangle> triangles = randomTriangles(maker, 1 + maker.any(50), onGrid);
        RayMaker rays(triangles, scene);
        const Tally tally = compare<Number>(triangles, raysPerScene, [&] {
            Ray ray = rays.next();
            for (float* x = &ray.origin.x; onGrid && x <= &ray.origin.z; x++) *x = std::round(*x);
            return ray;
        });
        total.rays += tally.rays;
        total.hits += tally.hits;
    }
    return total;
}

TEST(FaceSearch, FindsWhatThePlainLoopFindsAmongRandomFaces) {
    const Tally tally = compareOnRandomFaces<float>(600 / share, 2000);
    EXPECT_GT(tally.hits, tally.rays / 4);
    EXPECT_LT(tally.hits, tally.rays * 3 / 4);
}

TEST(FaceSearch, RoundsAfterEveryStep) {
    EXPECT_GT(compareOnRandomFaces<Rounded>(100 / share, 1000).hits, 20000 / share);
}

// Sizes whose products overflow or vanish, and values that are none, in faces and rays.
TEST(FaceSearch, TakesExtremeNumbersAsThePlainLoopDoes) {
    const float extremes[] = {0,      -0.0f, 1,     -1,     3,        1e-20f,    -1e-23f,    1e-38f,
                              1e-45f, 1e12f, 1e19f, -3e38f, infinity, -infinity, notANumber, 0.001f};
    RayMaker maker({}, 4);
    const auto number = [&] {
        return maker.any(3) ? maker.between(-4, 4) : extremes[maker.any(std::size(extremes))];
    };
    const auto scaled = [&](float scale) {
        return Vec3{scale * number(), scale * number(), scale * number()};
    };
    int hits = 0;
    for (int scene = 0; scene < 2000 / share; scene++) {
        const float scales[] = {1, 1, 1e-11f, 1e-13f, 1e-20f, 1e10f, 1e15f};
        const float scale = scales[maker.any(std::size(scales))];
        std::vector<Triangle> triangles(1 + maker.any(40));
        for (Triangle& t : triangles) t = {scaled(scale), scaled(scale), scaled(scale)};
        hits += compare(triangles, 200, [&] {
                    return Ray{scaled(scale), scaled(maker.any(2) ? 1 : scale)};
                }).hits;
    }
    EXPECT_GT(hits, 4000 / share);
}

bool same(const BeamPath& a, const BeamPath& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const BeamPoint& p, const BeamPoint& q) {
        return same(p.distance, q.distance) && same(p.point, q.point) && same(p.normal, q.normal);
    });
}

int plainSearch(std::span<const FaceBlock> blocks, const Vec3& origin, const Vec3& direction,
                float minDistance, float* distance) {
    int nearest = -1;
    for (int i = 0; i < int(blocks.size()) * FaceBlock::size; i++) {
        const TraceFace face = blocks[i / FaceBlock::size].face(i % FaceBlock::size);
        if (meets(face, origin, direction, minDistance, *distance, distance)) nearest = i;
    }
    return nearest;
}

// Five bounces on, the smallest difference would have grown.
TEST(FaceSearch, LeadsBeamsTheSameWay) {
    const MeshSet room = loadModel("data/huone_simple.AML"), ball = loadModel("data/pallero.AML");
    const std::vector<Triangle> triangles = trianglesOf(room);
    RayMaker maker(triangles, 5);
    TraceScene scene;
    scene.addInstance(&room);
    scene.addInstance(&ball);
    int bounces = 0;
    BeamPath plain, path;
    for (int beam = 0; beam < 20000 / share; beam++) {
        const Matrix4 turn = affineProduct(rotationY(maker.between(0, 6)), rotationX(maker.between(0, 6)));
        scene.setInstanceMatrix(1, affineProduct(translation({0, 70, 0}), turn));
        const Ray ray = {maker.anyPlace(), maker.anyDirection()};
        scene.search = plainSearch;
        traceBeam(scene, ray.origin, ray.direction, 5, plain);
        bounces += plain.count - 1;
        for (const auto& [instructionSet, search] : faceSearches()) {
            scene.search = search;
            traceBeam(scene, ray.origin, ray.direction, 5, path);
            ASSERT_TRUE(same(path, plain)) << instructionSet << ", beam " << beam;
        }
    }
    EXPECT_GT(bounces, 30000 / share);
}

}  // namespace
