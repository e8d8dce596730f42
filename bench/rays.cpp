// Rays a second of the tracer against Embree on the same meshes, and what the beams of a frame cost.
#if __has_include(<embree4/rtcore.h>)
#include <embree4/rtcore.h>
#else
#include <embree3/rtcore.h>
#endif

#include <algorithm>
#include <cmath>
#include <random>

#include "bench/bench.h"
#include "effects/beams.h"
#include "effects/huone.h"
#include "geometry/trace.h"
#include "tools/capture/stepped_show.h"

namespace {

constexpr int rayCount = 500;
constexpr int runs = 200;
constexpr float radius = 100;
constexpr double beamsGoal = 0.1;  // ms of one core
constexpr double raysGoal = 1000;  // thousand a second at 1000 faces

// A ball of plain positions, of bands and sectors that make about `faces` faces.
void makeBall(Mesh& mesh, int faces) {
    const int bands = int(std::sqrt(faces / 4.0));
    const int sectors = faces / (2 * bands);
    mesh.attribCount = 1;
    mesh.attribType[0] = positionAttrib;
    mesh.attribSize[0] = 3;
    mesh.rebuildAttribs();
    mesh.vertexCount = (bands + 1) * (sectors + 1);
    mesh.faceCount = 2 * bands * sectors;
    mesh.vertices = std::make_unique<float[]>(3 * mesh.vertexCount);
    mesh.faces = std::make_unique<uint16_t[]>(3 * mesh.faceCount);
    float* position = mesh.vertices.get();
    for (int i = 0; i < mesh.vertexCount; i++) {
        const double latitude = M_PI * (i / (sectors + 1)) / bands;
        const double longitude = 2 * M_PI * (i % (sectors + 1)) / sectors;
        *position++ = float(radius * std::sin(latitude) * std::cos(longitude));
        *position++ = float(radius * std::cos(latitude));
        *position++ = float(radius * std::sin(latitude) * std::sin(longitude));
    }
    uint16_t* corner = mesh.faces.get();
    for (int i = 0; i < bands * sectors; i++) {
        const int a = i / sectors * (sectors + 1) + i % sectors;
        const int b = a + sectors + 1;
        for (int index : {a, b, a + 1, a + 1, b, b + 1}) *corner++ = uint16_t(index);
    }
}

std::vector<Ray> raysFromInside() {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> within(-0.5f, 0.5f);
    std::vector<Ray> rays(rayCount);
    for (Ray& ray : rays) {
        ray.origin.set(within(random) * radius, within(random) * radius, within(random) * radius);
        ray.direction.set(within(random), within(random), within(random) + 0.01f);
        ray.direction.normalize();
    }
    return rays;
}

double ourRaysPerSecond(const MeshSet& set, const std::vector<Ray>& rays) {
    TraceScene scene(1);
    scene.addInstance(&set);
    const double seconds = bestSeconds(runs, [&] {
        TraceHit hit;
        for (const Ray& ray : rays) scene.intersectRay(ray.origin, ray.direction, &hit);
    });
    return rays.size() / seconds;
}

RTCScene embreeScene(RTCDevice device, const Mesh& mesh) {
    RTCScene scene = rtcNewScene(device);
    RTCGeometry geometry = rtcNewGeometry(device, RTC_GEOMETRY_TYPE_TRIANGLE);
    void* positions =
        rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3, 12, mesh.vertexCount);
    std::copy_n(mesh.vertices.get(), 3 * mesh.vertexCount, static_cast<float*>(positions));
    void* corners =
        rtcSetNewGeometryBuffer(geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3, 12, mesh.faceCount);
    std::copy_n(mesh.faces.get(), 3 * mesh.faceCount, static_cast<unsigned*>(corners));
    rtcCommitGeometry(geometry);
    rtcAttachGeometry(scene, geometry);
    rtcReleaseGeometry(geometry);
    rtcCommitScene(scene);
    return scene;
}

void intersect(RTCScene scene, RTCRayHit* hit) {
#if RTC_VERSION_MAJOR >= 4
    rtcIntersect1(scene, hit);
#else
    RTCIntersectContext context;
    rtcInitIntersectContext(&context);
    rtcIntersect1(scene, &context, hit);
#endif
}

double embreeRaysPerSecond(const Mesh& mesh, const std::vector<Ray>& rays) {
    RTCDevice device = rtcNewDevice("threads=1");
    RTCScene scene = embreeScene(device, mesh);
    const double seconds = bestSeconds(runs, [&] {
        for (const Ray& ray : rays) {
            RTCRayHit hit{};
            hit.ray = {ray.origin.x,
                       ray.origin.y,
                       ray.origin.z,
                       0.001f,
                       ray.direction.x,
                       ray.direction.y,
                       ray.direction.z,
                       0,
                       INFINITY,
                       ~0u,
                       0,
                       0};
            hit.hit.geomID = RTC_INVALID_GEOMETRY_ID;
            intersect(scene, &hit);
        }
    });
    rtcReleaseScene(scene);
    rtcReleaseDevice(device);
    return rays.size() / seconds;
}

// Of one frame of the room, at the models that its beams see.
double roomBeamsSeconds() {
    SteppedShow show(30);
    show.music.ms = 150000;
    demo->clock.update();
    Huone& room = static_cast<Huone&>(*demo->effects["huone"]);
    room.moveBall();
    return bestSeconds(500, [&] {
        for (int source = 0; source < Huone::beamSources; source++) {
            for (int aim = -1; aim <= 1; aim++) {
                const Ray ray = Huone::beam(source, aim);
                traceBeam(room.caster.scene, ray.origin, ray.direction, beamBounces, room.caster.path);
            }
        }
    });
}

}  // namespace

Figures benchRays(const std::string&) {
    Figures figures = {
        {"the room's fifteen beams", roomBeamsSeconds() * 1000, "ms", 0, Goal::valueAtMost, beamsGoal}};
    const std::vector<Ray> rays = raysFromInside();
    for (int faces : {200, 1000, 5000}) {
        MeshSet set;
        set.reset(1);
        makeBall(*set.begin(), faces);
        figures.push_back({"rays, " + std::to_string(faces) + " faces", ourRaysPerSecond(set, rays) / 1000,
                           "thousand/s", embreeRaysPerSecond(*set.begin(), rays) / 1000});
        if (faces == 1000) {
            figures.back().kind = Goal::valueAtLeast;
            figures.back().goal = raysGoal;
        }
    }
    return figures;
}
