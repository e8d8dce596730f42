// The sphere maps. Each is a small studio that is looked up by direction, so that its lamps bend over a hull
// as real ones would; a map shows what the viewer's surroundings throw back, with the sky in its last rows.
#include <vector>

#include "production/kit/picture.h"
#include "production/kit/picture_noise.h"
#include "production/kit/picture_shapes.h"
#include "production/pictures/pictures.h"

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
Direction unitLength(Direction p) {
    const float k = 1 / std::sqrt(dot(p, p));
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

Rgba lit(const Softbox& lamp, Direction towards) {
    const float degree = 0.017453293f;
    const float a = lamp.azimuth * degree, e = lamp.elevation * degree;
    const Direction axis = {std::cos(e) * std::sin(a), std::sin(e), std::cos(e) * std::cos(a)};
    const float ahead = dot(towards, axis);
    if (ahead <= 0.05f) return {};
    const Direction right =
        unitLength(cross(std::fabs(axis.y) > 0.99f ? Direction{0, 0, -1} : Direction{0, 1, 0}, axis));
    const Direction up = cross(axis, right);
    const Point place = turned({dot(towards, right) / ahead, dot(towards, up) / ahead}, lamp.turn * degree);
    const float distance = box(place, {0, 0}, lamp.half, std::fmin(lamp.half.x, lamp.half.y) * 0.5f);
    return lamp.light * smoothstep(lamp.softness, -lamp.softness, distance);
}

// Paints surroundings(direction) as OpenGL's sphere map looks them up: with the unit normal n that a place of
// the disc stands for, the direction is the viewer's, mirrored at n.
template <class Surroundings>
void makeSphereMap(const char* path, Surroundings surroundings) {
    const int size = 512;
    Canvas canvas(size, size, opaque(0, 0, 0));
    paint(canvas, [&](float x, float y, Rgba) {
        float nx = 2 * x / size - 1, ny = 1 - 2 * y / size;
        const float radius = std::hypot(nx, ny);
        // Beyond the disc its rim runs on, so that filtering finds no edge.
        if (radius > 0.999f) nx *= 0.999f / radius, ny *= 0.999f / radius;
        const float nz = std::sqrt(1 - nx * nx - ny * ny);
        Rgba seen = surroundings({2 * nz * nx, 2 * nz * ny, 2 * nz * nz - 1});
        seen.a = 1;
        return seen;
    });
    saveRgb(canvas, path, Rows::BottomFirst);
}

}  // namespace

// On hull, walls and boxes, added to the lit texture: dark, with two long lamps overhead, a window to the
// left and a warm strip low on the right.
void makeStudio(const char* path) {
    const std::vector<Softbox> lamps = {
        {10, 52, {1.1f, 0.05f}, 4, 0.05f, light(0.50f, 0.60f, 0.70f)},
        {10, 66, {1.1f, 0.05f}, 4, 0.05f, light(0.28f, 0.36f, 0.46f)},
        {-62, 18, {0.16f, 0.22f}, 0, 0.03f, light(0.34f, 0.46f, 0.60f)},
        {-88, 18, {0.16f, 0.22f}, 0, 0.03f, light(0.22f, 0.32f, 0.44f)},
        {74, -14, {0.05f, 0.60f}, 18, 0.05f, light(0.62f, 0.38f, 0.14f)},
        {165, 10, {0.5f, 0.03f}, -20, 0.06f, light(0.16f, 0.26f, 0.40f)},
    };
    makeSphereMap(path, [&](Direction towards) {
        Rgba sum = light(0.05f, 0.08f, 0.12f) * bell(towards.y, 0.05f) + light(0.012f, 0.016f, 0.022f);
        for (const Softbox& lamp : lamps) sum = sum + lit(lamp, towards);
        return sum;
    });
}

void makeRobotChrome(const char* path) {
    const std::vector<Softbox> lamps = {
        {30, 48, {0.8f, 0.10f}, -8, 0.06f, light(0.50f, 0.52f, 0.56f)},
        {-70, 20, {0.10f, 0.7f}, 6, 0.05f, light(0.36f, 0.40f, 0.46f)},
        {100, 0, {0.06f, 0.8f}, -10, 0.05f, light(0.45f, 0.36f, 0.26f)},
    };
    const std::vector<Stop> sky = {{-1, light(0.05f, 0.045f, 0.05f)},    {-0.10f, light(0.10f, 0.09f, 0.09f)},
                                   {-0.02f, light(0.03f, 0.03f, 0.04f)}, {0.03f, light(0.42f, 0.42f, 0.44f)},
                                   {0.35f, light(0.20f, 0.21f, 0.25f)},  {1, light(0.07f, 0.08f, 0.11f)}};
    makeSphereMap(path, [&](Direction towards) {
        Rgba sum = gradient(sky, towards.y);
        for (const Softbox& lamp : lamps) sum = sum + lit(lamp, towards);
        return sum;
    });
}

void makeArmChrome(const char* path) {
    const std::vector<Softbox> lamps = {
        {-30, 40, {0.9f, 0.045f}, 10, 0.03f, light(0.62f, 0.66f, 0.72f)},
        {-30, 54, {0.9f, 0.045f}, 10, 0.03f, light(0.36f, 0.40f, 0.46f)},
        {80, 5, {0.05f, 0.9f}, 0, 0.03f, light(0.50f, 0.44f, 0.36f)},
    };
    makeSphereMap(path, [&](Direction towards) {
        Rgba sum = light(0.09f, 0.095f, 0.11f) * (0.6f + 0.4f * towards.y) +
                   light(0.25f, 0.26f, 0.28f) * bell(towards.y, 0.06f);
        for (const Softbox& lamp : lamps) sum = sum + lit(lamp, towards);
        return sum;
    });
}

void makeHallReflections(const char* path) {
    makeSphereMap(path, [&](Direction towards) {
        const float azimuth = std::atan2(towards.x, towards.z);
        const float columns =
            std::pow(0.5f + 0.5f * std::cos(azimuth * 8), 12.0f) * bell(towards.y - 0.1f, 0.4f);
        return light(0.10f, 0.42f, 0.40f) * columns + light(0.02f, 0.07f, 0.07f) * (0.5f + 0.5f * towards.y) +
               light(0.30f, 0.35f, 0.34f) * bell(towards.y - 0.85f, 0.08f);
    });
}
