#include "geometry/trace_faces.h"

#include <cmath>

namespace {

// beta a + gamma b + t d = p0 - o, the meeting of ray and plane, solved by Cramer's rule (P. Shirley,
// "Fundamentals of Computer Graphics", on ray-triangle intersection): the determinant and two numerators.
struct Meeting {
    float determinant;
    float beta;
    float gamma;
};

[[gnu::always_inline]] inline Meeting meeting(const TraceFace& face, const Vec3& c, const Vec3& direction) {
    const Vec3 bd = cross(face.b, direction);
    return {dot(face.a, bd), dot(c, bd), dot(face.a, cross(c, direction))};
}

// 0 only where beta or gamma, once divided, would lie outside 0..1. Without a branch, so that compilers do
// several faces at once.
[[gnu::always_inline]] inline int mayBeInside(const Meeting& m) {
    const float size = std::fabs(m.determinant);
    const int betaIsPositive = m.beta * m.determinant >= 0, betaIsBelow1 = std::fabs(m.beta) < size;
    const int gammaIsPositive = m.gamma * m.determinant >= 0, gammaIsBelow1 = std::fabs(m.gamma) < size;
    return betaIsPositive & betaIsBelow1 & gammaIsPositive & gammaIsBelow1;
}

// All faces of a block are sifted at once before the few that may be hit are tested one by one.
[[gnu::always_inline]] inline int search(std::span<const FaceBlock> blocks, const Vec3& rayOrigin,
                                         const Vec3& rayDirection, float minDistance, float* distance) {
    const Vec3 origin = rayOrigin, direction = rayDirection;
    int nearest = -1;
    for (size_t k = 0; k < blocks.size(); k++) {
        const FaceBlock& block = blocks[k];
        int candidates[FaceBlock::size];
        int any = 0;
        for (int i = 0; i < FaceBlock::size; i++) {
            const TraceFace face = block.face(i);
            candidates[i] = mayBeInside(meeting(face, face.p0 - origin, direction));
            any |= candidates[i];
        }
        if (!any) continue;
        for (int i = 0; i < FaceBlock::size; i++) {
            if (candidates[i] && meets(block.face(i), origin, direction, minDistance, *distance, distance))
                nearest = int(k) * FaceBlock::size + i;
        }
    }
    return nearest;
}

#ifdef __x86_64__
// Twice as fast, and the same bits: there are no fused multiply-adds in it.
[[gnu::target("avx")]] int searchByAvx(std::span<const FaceBlock> blocks, const Vec3& origin,
                                       const Vec3& direction, float minDistance, float* distance) {
    return search(blocks, origin, direction, minDistance, distance);
}
#endif

Vec3 vertexPosition(const Mesh& mesh, int vertex) {
    const float* position = mesh.vertexAttrib(vertex, positionAttrib);
    return {position[0], position[1], position[2]};
}

}  // namespace

TraceFace traceFace(const Vec3& p0, const Vec3& p1, const Vec3& p2) {
    return {p0, p0 - p1, p0 - p2};
}

bool meets(const TraceFace& face, const Vec3& origin, const Vec3& direction, float minDistance,
           float maxDistance, float* distance) {
    const Vec3 c = face.p0 - origin;
    const Meeting m = meeting(face, c, direction);
    if (!mayBeInside(m)) return false;
    const float beta = m.beta / m.determinant;
    const float gamma = m.gamma / m.determinant;
    if (!(beta > 0 && beta < 1 && gamma > 0 && beta + gamma < 1)) return false;
    const float t = dot(face.a, cross(face.b, c)) / m.determinant;
    if (!(t >= minDistance && t <= maxDistance)) return false;
    *distance = t;
    return true;
}

// From the edges that point the other way: the signs cancel.
Vec3 unitNormal(const TraceFace& face) {
    Vec3 normal = cross(face.a, face.b);
    normal.normalize();
    return normal;
}

std::vector<FaceBlock> gatherFaces(const MeshSet& set) {
    std::vector<FaceBlock> blocks;
    int count = 0;
    for (const Mesh& mesh : set) {
        if (!mesh.hasAttrib(positionAttrib)) continue;
        for (int i = 0; i < mesh.faceCount; i++, count++) {
            const uint16_t* corners = mesh.face(i);
            const TraceFace face =
                traceFace(vertexPosition(mesh, corners[0]), vertexPosition(mesh, corners[1]),
                          vertexPosition(mesh, corners[2]));
            const int place = count % FaceBlock::size;
            if (place == 0) blocks.push_back({});
            blocks.back().p0.put(place, face.p0);
            blocks.back().a.put(place, face.a);
            blocks.back().b.put(place, face.b);
        }
    }
    return blocks;
}

int nearestFace(std::span<const FaceBlock> blocks, const Vec3& origin, const Vec3& direction,
                float minDistance, float* distance) {
#ifdef __x86_64__
    static const bool haveAvx = __builtin_cpu_supports("avx");
    if (haveAvx) return searchByAvx(blocks, origin, direction, minDistance, distance);
#endif
    return nearestFaceWithoutAvx(blocks, origin, direction, minDistance, distance);
}

int nearestFaceWithoutAvx(std::span<const FaceBlock> blocks, const Vec3& origin, const Vec3& direction,
                          float minDistance, float* distance) {
    return search(blocks, origin, direction, minDistance, distance);
}
