#include "geometry/trace.h"

#include <cmath>

namespace {

constexpr float minHitDistance = 0.001f;  // so that a reflected beam leaves the surface it starts on
constexpr float unreached = 999999.0f;
constexpr float escapeLength = 1000.0f;

// beta a + gamma b + t d = p0 - o, the meeting of ray and plane, solved by Cramer's rule (P. Shirley,
// "Fundamentals of Computer Graphics", on ray-triangle intersection). Divides only where the signs and sizes
// of numerator and denominator leave a hit open, which rejects nothing that the divided values would not.
inline bool meets(const TraceFace& face, const Vec3& origin, const Vec3& direction, float minDistance,
                  float maxDistance, float* distance) {
    const Vec3 c = face.p0 - origin;
    const Vec3 bd = cross(face.b, direction);
    const float determinant = dot(face.a, bd);
    const float betaNumerator = dot(c, bd);
    if (!(betaNumerator * determinant >= 0 && std::fabs(betaNumerator) < std::fabs(determinant)))
        return false;
    const float beta = betaNumerator / determinant;
    const float gamma = dot(face.a, cross(c, direction)) / determinant;
    if (!(beta > 0 && beta < 1 && gamma > 0 && beta + gamma < 1)) return false;
    const float t = dot(face.a, cross(face.b, c)) / determinant;
    if (!(t >= minDistance && t <= maxDistance)) return false;
    *distance = t;
    return true;
}

// cross(p1 - p0, p2 - p0) from the edges that point the other way: the signs cancel.
Vec3 unitNormal(const TraceFace& face) {
    Vec3 normal = cross(face.a, face.b);
    normal.normalize();
    return normal;
}

Vec3 vertexPosition(const Mesh& mesh, int vertex) {
    const float* position = mesh.vertexAttrib(vertex, positionAttrib);
    return {position[0], position[1], position[2]};
}

TraceFace traceFace(const Vec3& p0, const Vec3& p1, const Vec3& p2) {
    return {p0, p0 - p1, p0 - p2};
}

std::vector<TraceFace> gatherFaces(const MeshSet& set) {
    std::vector<TraceFace> faces;
    for (const Mesh& mesh : set) {
        if (!mesh.hasAttrib(positionAttrib)) continue;
        for (int i = 0; i < mesh.faceCount; ++i) {
            const uint16_t* corners = mesh.face(i);
            faces.push_back(traceFace(vertexPosition(mesh, corners[0]), vertexPosition(mesh, corners[1]),
                                      vertexPosition(mesh, corners[2])));
        }
    }
    return faces;
}

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
        const TraceFace* nearestFace = nullptr;
        for (const TraceFace& face : instance.faces) {
            if (meets(face, objectOrigin, objectDirection, minHitDistance, t, &t)) nearestFace = &face;
        }
        if (!nearestFace) continue;
        anyHit = true;
        if (t == unreached) continue;
        const Vec3 point = transformPoint(instance.objectToWorld, objectOrigin + objectDirection * t);
        const float distance = (point - origin).length();
        if (distance < nearest) {
            nearest = distance;
            *hit = {distance, point, transformDirection(instance.objectToWorld, unitNormal(*nearestFace))};
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
    for (int bounce = 0; bounce < maxBounces; ++bounce) {
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
