// "star" (star2.png): the sky round the robot, drawn unlit. The whole ball lies folded in the square as the
// model of the sky unfolds it. One river of cloud crosses a night that is black elsewhere, violet where it is
// thin and teal where it is deep, with warm dust in its lanes. Dim, since the glow makes nearly four times as
// much of a broad light.
#include "production/kit/picture/canvas.h"
#include "production/kit/picture/noise.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

constexpr int size = 1024;

float signOf(float x) {
    return x < 0 ? -1.0f : 1.0f;
}

// Between a place of the picture and where it lies in the sky. The zenith is in the middle.
Direction directionAt(float x, float y) {
    const float u = 2 * x / size - 1, v = 1 - 2 * y / size;
    const float up = 1 - std::fabs(u) - std::fabs(v);
    if (up >= 0) return normalized(Direction{u, up, v});
    return normalized(Direction{(1 - std::fabs(v)) * signOf(u), up, (1 - std::fabs(u)) * signOf(v)});
}
Point placeOf(Direction d) {
    const float sum = std::fabs(d.x) + std::fabs(d.y) + std::fabs(d.z);
    float u = d.x / sum, v = d.z / sum;
    if (d.y < 0) {
        const float turned = (1 - std::fabs(v)) * signOf(u);
        v = (1 - std::fabs(u)) * signOf(v);
        u = turned;
    }
    return {(u + 1) * 0.5f * size, (1 - v) * 0.5f * size};
}

// The river's plane: it rises steeply from one horizon to the other.
const Direction riverPole = normalized(Direction{0.62f, 0.50f, 0.60f});

// How much of a cloud lies at a place, and what it is made of.
struct Cloud {
    float density;  // 0..1
    float teal;     // 0: violet
    float dust;     // warm
    float shadow;   // of the dark lanes in it
};

Cloud cloudAt(Direction d) {
    const float bendX = fractalNoise(d.x * 2.6f, d.y * 2.6f, d.z * 2.6f, 4, 301),
                bendY = fractalNoise(d.x * 2.6f, d.y * 2.6f, d.z * 2.6f, 4, 311);
    const auto bent = [&](float scale, float bend, int octaves, uint32_t seed) {
        return fractalNoise(d.x * scale + bend * bendX, d.y * scale + bend * bendY,
                            d.z * scale - bend * bendX, octaves, seed);
    };
    const float off = dot(d, riverPole) + 0.16f * bendX;
    const float river = bell(off, 0.34f), bed = bell(off, 0.12f);
    Cloud cloud;
    cloud.density = smoothstep(0.05f, 0.95f, river * (0.75f + 0.9f * bent(3.6f, 1.2f, 7, 321)) + 0.10f);
    cloud.shadow =
        smoothstep(0.16f, 0.0f, std::fabs(bent(3.4f, 1.5f, 6, 331))) * smoothstep(0.2f, 0.8f, river);
    cloud.teal = smoothstep(-0.10f, 0.30f, bent(1.7f, 0.6f, 3, 341));
    cloud.dust = bed * smoothstep(-0.05f, 0.40f, bent(2.6f, 1.3f, 5, 351));
    return cloud;
}

Rgba colourOf(const Cloud& cloud) {
    const float d = cloud.density;
    const Rgba body = mix(opaque(0.070f, 0.016f, 0.120f), opaque(0.004f, 0.060f, 0.088f), cloud.teal);
    const Rgba heart = mix(opaque(0.16f, 0.050f, 0.13f), opaque(0.04f, 0.14f, 0.13f), cloud.teal);
    const Rgba lit =
        body * d + heart * (0.8f * d * d * d) + opaque(0.16f, 0.070f, 0.024f) * (0.8f * cloud.dust * d);
    return opaque(0.0035f, 0.0035f, 0.009f) + lit * (0.40f * (1 - 0.78f * cloud.shadow));
}

// Adds a star, round in the sky, its light running on over the picture's folds.
void addStar(Canvas& canvas, Direction star, float brightness, Rgba tint) {
    constexpr float pixel = 0.00265f;  // radians that a pixel takes, about
    const float core = (0.55f + 0.60f * brightness * brightness) * pixel;
    const float arm = brightness > 0.75f ? 20 * (brightness - 0.6f) * pixel : 0;
    const float halo = brightness > 0.6f ? 5 * brightness * pixel : 0;
    const float reach = std::fmax(4 * core, std::fmax(2.4f * arm, 2.5f * halo));
    const Direction right = normalized(cross({0.1f, 0.99f, 0.05f}, star)), up = cross(star, right);
    const Point middle = placeOf(star);
    const int around = int(reach / pixel * 1.8f) + 2;
    const auto shine = [&](int px, int py) {
        if (px < 0 || py < 0 || px >= size || py >= size) return;
        const Direction d = directionAt(px + 0.5f, py + 0.5f);
        if (dot(d, star) < 0.9f) return;
        const float dx = dot(d, right), dy = dot(d, up), away = std::hypot(dx, dy);
        if (away > reach) return;
        float glow = bell(away, core);
        if (arm > 0) {
            glow += 0.4f * bell(dx, 0.7f * pixel) * std::exp(-std::fabs(dy) * 4 / arm);
            glow += 0.4f * bell(dy, 0.7f * pixel) * std::exp(-std::fabs(dx) * 4 / arm);
        }
        if (halo > 0) glow += 0.07f * std::exp(-away * 2.5f / halo) * smoothstep(2.5f * halo, halo, away);
        canvas.at(px, py) = canvas.at(px, py) + tint * (glow * mix(0.10f, 1, brightness));
    };
    const int x0 = int(middle.x), y0 = int(middle.y);
    // Beyond an edge the picture goes on at the mirrored place of the same edge.
    const auto onFold = [](int& along, int& other) {
        if (along < 0) along = -1 - along, other = size - 1 - other;
        if (along >= size) along = 2 * size - 1 - along, other = size - 1 - other;
    };
    for (int row = -around; row <= around; row++) {
        for (int column = -around; column <= around; column++) {
            int px = x0 + column, py = y0 + row;
            onFold(px, py);
            onFold(py, px);
            shine(px, py);
        }
    }
}

Rgba tintOf(float warmth) {
    return mix(opaque(0.66f, 0.80f, 1), opaque(1, 0.74f, 0.46f), warmth * warmth);
}

Direction scattered(int i, uint32_t seed) {
    const float up = 2 * randomAt(i, 1, seed) - 1, level = std::sqrt(1 - up * up);
    const float turn = 2 * pi * randomAt(i, 0, seed);
    return {level * std::cos(turn), up, level * std::sin(turn)};
}

// Stars evenly over the ball; the faint ones keep to the river.
void addField(Canvas& canvas) {
    for (int i = 0; i < 8000; i++) {
        const Direction star = scattered(i, 17);
        const float brightness = std::pow(randomAt(i, 3, 17), 9.0f);
        const Cloud cloud = cloudAt(star);
        if (brightness < 0.15f && randomAt(i, 5, 17) > 0.22f + 1.3f * cloud.density * (1 - cloud.shadow))
            continue;
        addStar(canvas, star, std::fmin(brightness, 0.8f), tintOf(randomAt(i, 4, 17)));
    }
}

struct Cluster {
    Direction middle;
    float spread;  // of its middle, in radians
    int count;
    float warmth;
};
const Cluster clusters[] = {
    {{0.5f, 0.5f, -0.8f}, 0.020f, 46, 0.1f}, {{-0.9f, 0.25f, 0.3f}, 0.030f, 60, 0.9f},
    {{-0.2f, 0.9f, 0.3f}, 0.016f, 34, 0.4f}, {{0.8f, -0.2f, -0.4f}, 0.035f, 60, 0},
    {{-0.3f, 0.1f, 0.9f}, 0.018f, 30, 0.7f}, {{-0.6f, 0.6f, -0.5f}, 0.022f, 40, 0.2f}};

void addCluster(Canvas& canvas, const Cluster& cluster, int seed) {
    const Direction middle = normalized(cluster.middle);
    const Direction right = normalized(cross({0, 1, 0.1f}, middle)), up = cross(middle, right);
    for (int i = 0; i < cluster.count; i++) {
        // Thins out like 1 / radius, so it has a heart.
        const float radius = cluster.spread * (1 / (1 - 0.86f * randomAt(i, 0, seed)) - 0.9f);
        const float angle = 2 * pi * randomAt(i, 1, seed), brightness = std::pow(randomAt(i, 2, seed), 4.0f);
        const float a = radius * std::cos(angle), b = radius * std::sin(angle);
        addStar(canvas, normalized(middle + right * a + up * b), 0.10f + 0.62f * brightness,
                tintOf(mix(randomAt(i, 3, seed), 1, cluster.warmth)));
    }
}

}  // namespace

void makeStars(const char* path) {
    Canvas canvas(size, size);
    paint(canvas, [](float x, float y, Rgba) { return colourOf(cloudAt(directionAt(x, y))); });
    addField(canvas);
    int seed = 100;
    for (const Cluster& cluster : clusters) addCluster(canvas, cluster, seed++);
    // The few that make the sky one's own.
    addStar(canvas, normalized(Direction{0.3f, 0.7f, 0.5f}), 1.0f, tintOf(0.2f));
    addStar(canvas, normalized(Direction{-0.8f, 0.3f, -0.2f}), 0.92f, tintOf(1));
    addStar(canvas, normalized(Direction{0.2f, 0.2f, -0.9f}), 0.88f, tintOf(0.5f));
    addStar(canvas, normalized(Direction{0.9f, 0.1f, 0.3f}), 0.95f, tintOf(0));
    addStar(canvas, normalized(Direction{-0.4f, 0.15f, 0.8f}), 0.95f, tintOf(0.8f));
    saveRgb(canvas, path, Rows::TopFirst);
}
