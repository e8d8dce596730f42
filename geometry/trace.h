// Ray tracing over meshes, and the path of a beam that bounces between them as off mirrors.
// Distances are in world units unless a comment says otherwise; a face's winding decides where its normal is.
#pragma once

#include <vector>

#include "geometry/growable_array.h"
#include "geometry/matrix4.h"
#include "geometry/mesh.h"
#include "geometry/trace_faces.h"
#include "geometry/vec3.h"

struct Ray {
    Vec3 origin;
    Vec3 direction;
};

struct TraceHit {
    float distance;
    Vec3 point;
    Vec3 normal;
};

struct BeamPoint {
    float distance;  // of the segment that ends here
    Vec3 point;
    Vec3 normal;  // of the surface; (0, 0, 0) at the beam's origin and in the open
};

using BeamPath = GrowableArray<BeamPoint>;

struct TraceInstance {
    const MeshSet* set;
    Matrix4 objectToWorld;
    Matrix4 worldToObject;
    std::vector<FaceBlock> faces;
};

struct TraceScene {
    GrowableArray<TraceInstance> instances;

    TraceScene() = default;
    explicit TraceScene(int capacity) : instances(capacity) {}

    // The set must hold plain positions (meshes without them are never hit) and keep them: they are taken
    // once, here. Without a matrix the instance stands in the world as it is.
    void addInstance(const MeshSet* set, const Matrix4* objectToWorld = nullptr);
    // The index is not checked.
    void setInstanceMatrix(int index, const Matrix4& objectToWorld);

    // The nearest hit of all instances, beyond 0.001 (object units). True if anything was hit; `hit` is
    // written if it lies nearer than 999999. The normal is carried to the world without normalising it.
    bool intersectRay(const Vec3& origin, const Vec3& direction, TraceHit* hit) const;
};

// Fills the hit's distance and unit normal if the ray meets the triangle's inside (edges and corners miss) at
// a distance, in lengths of `direction`, from `minDistance` to `maxDistance`, both included.
bool intersectTriangle(const Vec3& p0, const Vec3& p1, const Vec3& p2, const Vec3& origin,
                       const Vec3& direction, float minDistance, float maxDistance, TraceHit* hit);

// The polyline of a beam with a unit `direction`: its origin, a point per reflection, and, if it escapes
// before the last of `maxBounces`, a point 1000 further on. Returns maxBounces, or 0 after an escape.
int traceBeam(const TraceScene& scene, const Vec3& origin, const Vec3& direction, int maxBounces,
              BeamPath& path);
