#include "geometry/trace.h"

namespace {

constexpr float minHitDistance = 0.001f;  // so that a reflected beam leaves the surface it starts on
constexpr float unreached = 999999.0f;
constexpr float escapeLength = 1000.0f;

}  // namespace

bool intersectTriangle(const Vec3& p0, const Vec3& p1, const Vec3& p2, const Vec3& origin,
                       const Vec3& direction, float minDistance, float maxDistance, TraceHit* hit) {
    const TraceFace face = traceFace(p0, p1, p2);
    if (!meets(face, origin, direction, minDistance, maxDistance, &hit->distance)) return false;
    hit->normal = unitNormal(face);
    return true;
}

void TraceScene::addInstance(const MeshSet* set, const Matrix4* objectToWorld) {
    TraceInstance instance = {set, identity(), identity(), {}};
    if (set) instance.faces = gatherFaces(*set);
    instances.append(std::move(instance));
    if (objectToWorld) setInstanceMatrix(instances.count - 1, *objectToWorld);
}

void TraceScene::setInstanceMatrix(int index, const Matrix4& objectToWorld) {
    instances[index].objectToWorld = objectToWorld;
    instances[index].worldToObject = inverse(objectToWorld);
}

bool TraceScene::intersectRay(const Vec3& origin, const Vec3& direction, TraceHit* hit) const {
    bool anyHit = false;
    float nearest = unreached;
    for (const TraceInstance& instance : instances) {
        const Vec3 objectOrigin = transformPoint(instance.worldToObject, origin);
        const Vec3 objectDirection = transformDirection(instance.worldToObject, direction);
        float t = unreached;
        const int face = nearestFace(instance.faces, objectOrigin, objectDirection, minHitDistance, &t);
        if (face < 0) continue;
        anyHit = true;
        if (t == unreached) continue;
        const Vec3 point = transformPoint(instance.objectToWorld, objectOrigin + objectDirection * t);
        const float distance = (point - origin).length();
        if (distance < nearest) {
            nearest = distance;
            const Vec3 normal =
                unitNormal(instance.faces[face / FaceBlock::size].face(face % FaceBlock::size));
            *hit = {distance, point, transformDirection(instance.objectToWorld, normal)};
        }
    }
    return anyHit;
}

int traceBeam(const TraceScene& scene, const Vec3& start, const Vec3& startDirection, int maxBounces,
              BeamPath& path) {
    Vec3 origin = start;
    Vec3 direction = startDirection;
    path.clear();
    path.append({0, origin, {0, 0, 0}});
    for (int bounce = 0; bounce < maxBounces; bounce++) {
        TraceHit hit = {};
        if (!scene.intersectRay(origin, direction, &hit)) {
            path.append({escapeLength, origin + direction * escapeLength, {0, 0, 0}});
            return 0;
        }
        origin += direction * hit.distance;
        const Vec3 n = hit.normal;
        direction = direction - n * (2 * dot(direction, n) / n.lengthSquared());
        direction.normalize();
        path.append({hit.distance, origin, n});
    }
    return maxBounces;
}
