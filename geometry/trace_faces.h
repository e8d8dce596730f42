// Faces laid out for tracing, and the search through all of them, several at a time, for the one that a ray
// hits first. The same bits come out on every processor.
#pragma once

#include <span>
#include <vector>

#include "geometry/mesh.h"
#include "geometry/vec3.h"

// A face ready for tracing: its first corner and the edges back to it from the two others.
struct TraceFace {
    Vec3 p0;
    Vec3 a;  // p0 - p1
    Vec3 b;  // p0 - p2
};

TraceFace traceFace(const Vec3& p0, const Vec3& p1, const Vec3& p2);

// True if the ray meets the face's inside (edges and corners miss) at a distance, in lengths of `direction`,
// from `minDistance` to `maxDistance`, both included. Only then is `distance` written.
bool meets(const TraceFace& face, const Vec3& origin, const Vec3& direction, float minDistance,
           float maxDistance, float* distance);

// cross(p1 - p0, p2 - p0) at unit length; not finite for a face without an area.
Vec3 unitNormal(const TraceFace& face);

// As many faces as are tested before the first look at what came out, coordinate by coordinate.
struct alignas(64) FaceBlock {
    static constexpr int size = 16;

    struct Coordinates {
        float x[size], y[size], z[size];

        Vec3 at(int i) const { return {x[i], y[i], z[i]}; }
        void put(int i, const Vec3& v) {
            x[i] = v.x;
            y[i] = v.y;
            z[i] = v.z;
        }
    };
    Coordinates p0, a, b;

    TraceFace face(int i) const { return {p0.at(i), a.at(i), b.at(i)}; }
};

// The faces of all meshes of the set that have positions, in order. What is left of the last block are faces
// of no extent, which nothing meets.
std::vector<FaceBlock> gatherFaces(const MeshSet& set);

// The index of the face that the ray meets nearest, from `minDistance` to `*distance`, and there the last of
// those that are met at the same distance; -1 if there is none. Writes the distance found.
int nearestFace(std::span<const FaceBlock> blocks, const Vec3& origin, const Vec3& direction,
                float minDistance, float* distance);
// What it comes to on a processor that has no AVX.
int nearestFaceWithoutAvx(std::span<const FaceBlock> blocks, const Vec3& origin, const Vec3& direction,
                          float minDistance, float* distance);
