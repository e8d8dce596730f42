// The sphere maps. Each is a small studio that is looked up by direction, so that its lamps bend over a hull
// as real ones would; a map shows what the viewer's surroundings throw back, with the sky in its last rows.
#include <vector>

#include "production/kit/picture/canvas.h"
#include "production/kit/picture/noise.h"
#include "production/kit/picture/shapes.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

struct Direction {
    float x, y, z;
};

float dot(Direction p, Direction q) {
    return p.x * q.x + p.y * q.y + p.z * q.z;
}
Direction cross(Direction p, Direction q) {
    return {p.y * q.z - p.z * q.y, p.z * q.x - p.x * q.z, p.x * q.y - p.y * q.x};
}
Direction operator+(Direction p, Direction q) {
    return {p.x + q.x, p.y + q.y, p.z + q.z};
}
Direction operator*(Direction p, float k) {
    return {p.x * k, p.y * k, p.z * k};
}

// A rectangular lamp in the sky: where it hangs (degrees; azimuth 0 is behind the viewer, 90 to the right),
// its half size on the plane one unit away, its turn in that plane, how soft its edge is, and its light.
struct Softbox {
    float azimuth, elevation;
    Point half;
    float turn, softness;
    Rgba light;
};

// A lamp with the plane that it lies on.
struct HungLamp {
    Softbox lamp;
    Direction axis, right, up;
};

HungLamp hung(const Softbox& lamp) {
    const float degree = 0.017453293f;
    const float a = lamp.azimuth * degree, e = lamp.elevation * degree;
    const float c = std::cos(lamp.turn * degree), s = std::sin(lamp.turn * degree);
    const Direction axis = {std::cos(e) * std::sin(a), std::sin(e), std::cos(e) * std::cos(a)};
    const Direction level = {std::cos(a), 0, -std::sin(a)}, upright = cross(axis, level);
    return {lamp, axis, level * c + upright * -s, level * s + upright * c};
}

Rgba lit(const HungLamp& hung, Direction towards) {
    const float ahead = dot(towards, hung.axis);
    if (ahead <= 0.05f) return {};
    const Softbox& lamp = hung.lamp;
    const Point place = {dot(towards, hung.right) / ahead, dot(towards, hung.up) / ahead};
    const float distance = box(place, {0, 0}, lamp.half, std::fmin(lamp.half.x, lamp.half.y));
    return lamp.light * smoothstep(lamp.softness, -lamp.softness, distance);
}

// `count` lamps, each a step (degrees of azimuth and elevation) from the last and `fading` times as bright.
void addBank(std::vector<Softbox>& lamps, Softbox lamp, Point step, int count, float fading) {
    for (int i = 0; i < count; i++) {
        lamps.push_back(lamp);
        lamp.azimuth += step.x, lamp.elevation += step.y;
        lamp.light = lamp.light * fading;
    }
}

// Paints lamps before a ground(direction) as OpenGL's sphere map looks them up: with the unit normal n that a
// place of the disc stands for, the direction is the viewer's, mirrored at n.
template <class Ground>
void makeSphereMap(const char* path, const std::vector<Softbox>& lamps, Ground ground) {
    const int size = 512;
    std::vector<HungLamp> studio;
    for (const Softbox& lamp : lamps) studio.push_back(hung(lamp));
    Canvas canvas(size, size, opaque(0, 0, 0));
    paint(canvas, [&](float x, float y, Rgba) {
        float nx = 2 * x / size - 1, ny = 1 - 2 * y / size;
        const float radius = std::hypot(nx, ny);
        // Beyond the disc its rim runs on for a while, so that filtering finds no edge.
        if (radius > 0.999f) nx *= 0.999f / radius, ny *= 0.999f / radius;
        const float nz = std::sqrt(1 - nx * nx - ny * ny);
        const Direction towards = {2 * nz * nx, 2 * nz * ny, 2 * nz * nz - 1};
        Rgba seen = ground(towards);
        for (const HungLamp& lamp : studio) seen = seen + lit(lamp, towards);
        seen = seen * smoothstep(1.16f, 1.04f, radius);
        seen.a = 1;
        return seen;
    });
    saveRgb(canvas, path, Rows::BottomFirst);
}

// What lies straight behind a hull and so glances off its outline: light that is cool on the left, warm on
// the right and strongest from above.
Rgba rimLight(Direction towards) {
    const float aside = towards.x / (std::hypot(towards.x, towards.y) + 1e-4f);
    const float above = towards.y / (std::hypot(towards.x, towards.y) + 1e-4f);
    const Rgba tint =
        mix(light(0.50f, 0.62f, 1.0f), light(1.0f, 0.66f, 0.42f), smoothstep(-0.5f, 0.7f, aside));
    return tint * (smoothstep(-0.25f, -0.85f, towards.z) * mix(0.45f, 1, smoothstep(-0.8f, 0.6f, above)));
}

}  // namespace

// On hull, walls and boxes, added to the lit texture and then to itself by the glow: dark but for banks of
// fine tubes, which draw lines on a flat panel where a broad lamp would fill it.
void makeStudio(const char* path) {
    std::vector<Softbox> lamps = {
        {20, -26, {0.5f, 0.016f}, -6, 0.02f, light(0.40f, 0.24f, 0.09f)},
        {165, 10, {0.5f, 0.03f}, -20, 0.06f, light(0.12f, 0.20f, 0.32f)},
        {-150, -20, {0.6f, 0.02f}, 25, 0.04f, light(0.10f, 0.16f, 0.26f)},
    };
    addBank(lamps, {6, 42, {1.0f, 0.009f}, 4, 0.008f, light(0.46f, 0.55f, 0.64f)}, {0, 6}, 8, 0.80f);
    addBank(lamps, {-48, 16, {0.008f, 0.30f}, 5, 0.008f, light(0.40f, 0.54f, 0.70f)}, {-8, 0}, 7, 0.82f);
    addBank(lamps, {66, -10, {0.009f, 0.55f}, 16, 0.010f, light(0.62f, 0.36f, 0.12f)}, {7, 0}, 5, 0.76f);
    addBank(lamps, {-22, 10, {0.15f, 0.008f}, 0, 0.007f, light(0.26f, 0.33f, 0.40f)}, {0, 6}, 3, 1.12f);
    // Sparks for the facets that the banks miss.
    for (int i = 0; i < 46; i++) {
        const float radius = mix(0.014f, 0.034f, randomAt(i, 2, 9));
        const Rgba tint = mix(light(0.50f, 0.66f, 0.80f), light(0.80f, 0.56f, 0.28f),
                              smoothstep(0.6f, 0.9f, randomAt(i, 3, 9)));
        lamps.push_back({mix(-105, 105, randomAt(i, 0, 9)),
                         mix(-52, 40, randomAt(i, 1, 9)),
                         {radius, radius},
                         0,
                         0.010f,
                         tint * mix(0.4f, 0.9f, randomAt(i, 4, 9))});
    }
    makeSphereMap(path, lamps, [&](Direction towards) {
        const float ahead = smoothstep(-0.3f, 0.8f, towards.z);
        const Rgba floor = light(0.006f, 0.014f, 0.017f), sky = light(0.012f, 0.015f, 0.024f);
        // From behind the viewer, which ship and boxes face and the tunnel's walls don't.
        const Rgba fill = mix(light(0.040f, 0.025f, 0.014f), light(0.030f, 0.042f, 0.056f),
                              smoothstep(-0.25f, 0.25f, towards.y));
        return mix(floor, sky, smoothstep(-0.1f, 0.1f, towards.y)) * ahead +
               fill * smoothstep(0.35f, 0.95f, towards.z) +
               light(0.035f, 0.055f, 0.085f) * bell(towards.y, 0.022f);
    });
}

// On the robot's body, which has no other picture: the lit colour times this. A dark floor, a hard horizon
// with the night's colours above it, a bank of tubes overhead and tall windows at the sides.
void makeRobotChrome(const char* path) {
    std::vector<Softbox> lamps = {
        {-70, 16, {0.16f, 0.62f}, 4, 0.02f, light(0.62f, 0.74f, 0.92f)},
        {-90, 16, {0.08f, 0.62f}, 4, 0.02f, light(0.38f, 0.46f, 0.60f)},
        {84, 4, {0.07f, 0.90f}, -8, 0.03f, light(0.98f, 0.70f, 0.44f)},
        {150, 30, {0.9f, 0.10f}, 10, 0.05f, light(0.35f, 0.40f, 0.48f)},
    };
    addBank(lamps, {8, 34, {0.9f, 0.035f}, -5, 0.012f, light(0.78f, 0.84f, 0.90f)}, {0, 11}, 5, 0.84f);
    // Below, for a viewer who looks up at it.
    addBank(lamps, {-14, -20, {0.60f, 0.020f}, 7, 0.012f, light(0.30f, 0.46f, 0.56f)}, {2, -10}, 4, 0.86f);
    addBank(lamps, {40, -16, {0.016f, 0.34f}, 12, 0.012f, light(0.56f, 0.40f, 0.26f)}, {7, -2}, 4, 0.84f);
    const std::vector<Stop> sky = {
        {-1, light(0.010f, 0.008f, 0.012f)},  {-0.5f, light(0.03f, 0.026f, 0.032f)},
        {-0.06f, light(0.13f, 0.10f, 0.09f)}, {-0.045f, light(0.006f, 0.006f, 0.010f)},
        {0.0f, light(0.012f, 0.012f, 0.02f)}, {0.02f, light(0.46f, 0.54f, 0.60f)},
        {0.10f, light(0.12f, 0.19f, 0.24f)},  {0.30f, light(0.05f, 0.06f, 0.10f)},
        {0.55f, light(0.06f, 0.03f, 0.10f)},  {1, light(0.02f, 0.012f, 0.035f)}};
    makeSphereMap(path, lamps,
                  [&](Direction towards) { return gradient(sky, towards.y) + rimLight(towards) * 0.78f; });
}

// On its arms, its face and the ring: gun metal, a cross of fine tubes.
void makeArmChrome(const char* path) {
    const std::vector<Softbox> lamps = {
        {-30, 40, {0.9f, 0.035f}, 10, 0.02f, light(0.78f, 0.82f, 0.88f)},
        {-30, 52, {0.9f, 0.035f}, 10, 0.02f, light(0.46f, 0.50f, 0.56f)},
        {78, 5, {0.05f, 0.9f}, 0, 0.02f, light(0.60f, 0.50f, 0.38f)},
        {92, 5, {0.03f, 0.9f}, 0, 0.02f, light(0.40f, 0.34f, 0.26f)},
        {-85, -5, {0.12f, 0.5f}, 0, 0.02f, light(0.32f, 0.36f, 0.42f)},
    };
    const std::vector<Stop> sky = {
        {-1, light(0.02f, 0.02f, 0.022f)},     {-0.08f, light(0.09f, 0.085f, 0.09f)},
        {-0.02f, light(0.01f, 0.01f, 0.012f)}, {0.03f, light(0.28f, 0.29f, 0.32f)},
        {0.2f, light(0.06f, 0.09f, 0.12f)},    {0.5f, light(0.06f, 0.035f, 0.10f)},
        {1, light(0.02f, 0.015f, 0.035f)}};
    makeSphereMap(path, lamps,
                  [&](Direction towards) { return gradient(sky, towards.y) + rimLight(towards) * 0.55f; });
}

// The hall's own: tall lamps all round and a ring of light overhead. The room binds it and leaves it switched
// off, so it is seen only where somebody turns its unit on.
void makeHallReflections(const char* path) {
    std::vector<Softbox> lamps;
    addBank(lamps, {-160, 8, {0.022f, 0.42f}, 0, 0.015f, light(0.10f, 0.46f, 0.42f)}, {32, 0}, 11, 1);
    addBank(lamps, {-170, 58, {0.07f, 0.02f}, 0, 0.02f, light(0.42f, 0.56f, 0.54f)}, {24, 0}, 15, 1);
    const std::vector<Stop> walls = {{-1, light(0.004f, 0.012f, 0.014f)},
                                     {-0.2f, light(0.010f, 0.045f, 0.046f)},
                                     {0.2f, light(0.014f, 0.070f, 0.068f)},
                                     {1, light(0.010f, 0.030f, 0.034f)}};
    makeSphereMap(path, lamps, [&](Direction towards) { return gradient(walls, towards.y); });
}
