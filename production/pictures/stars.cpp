// "star" (star2.png): the sky round the robot, three times round the dome from its zenith (the first row) to
// its nadir, drawn unlit. Clouds of violet and teal with warm dust, a band of faint stars through them, and
// clusters. Dim, since the glow makes nearly four times as much of a broad light.
#include <vector>

#include "production/kit/picture/canvas.h"
#include "production/kit/picture/noise.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

constexpr int size = 1024, repeats = 3;
constexpr float pi = 3.14159265f;

struct Place {
    float around;  // 0..1 along the picture
    float up;      // radians above the horizon
};

Place placeAt(float x, float y) {
    return {x / size, pi * (0.5f - y / size)};
}

// How much of a cloud lies at a place, and what it is made of.
struct Cloud {
    float density;  // 0..1
    float teal;     // 0: violet
    float dust;     // warm
};

// The clouds are noise in space: going once along the picture goes once round a slim ball, so that the ends
// meet and nothing is pinched at the poles.
Cloud cloudAt(Place place) {
    const float level = std::cos(place.up) / repeats, turn = 2 * pi * place.around;
    const float x = level * std::cos(turn), y = std::sin(place.up), z = level * std::sin(turn);
    const float bendX = fractalNoise(x * 3, y * 3, z * 3, 4, 301),
                bendY = fractalNoise(x * 3, y * 3, z * 3, 4, 311);
    const auto bent = [&](float scale, float bend, int octaves, uint32_t seed) {
        return fractalNoise(x * scale + bend * bendX, y * scale + bend * bendY, z * scale - bend * bendX,
                            octaves, seed);
    };
    // A belt that swings over and under the horizon's haze.
    const float belt = bell(place.up - 0.30f - 0.24f * std::sin(turn + 1), 0.42f);
    const float lanes = smoothstep(0.02f, 0.30f, std::fabs(bent(4.2f, 1.6f, 6, 331)));
    Cloud cloud;
    cloud.density = smoothstep(-0.30f, 0.75f, 1.5f * bent(3.4f, 1.1f, 7, 321) + 0.55f * belt - 0.12f) *
                    mix(1, mix(0.45f, 1, lanes), belt);
    cloud.teal = smoothstep(-0.12f, 0.34f, bent(2.3f, 0.7f, 3, 341));
    cloud.dust = smoothstep(0.02f, 0.42f, bent(3.0f, 1.4f, 5, 351)) * cloud.density;
    return cloud;
}

Rgba colourOf(const Cloud& cloud) {
    const float d = cloud.density;
    const Rgba body = mix(opaque(0.085f, 0.022f, 0.130f), opaque(0.006f, 0.074f, 0.092f), cloud.teal);
    const Rgba heart = mix(opaque(0.13f, 0.055f, 0.11f), opaque(0.03f, 0.11f, 0.09f), cloud.teal);
    return opaque(0.007f, 0.006f, 0.016f) + body * d + heart * (0.7f * d * d * d) +
           opaque(0.15f, 0.062f, 0.020f) * (0.75f * cloud.dust * (1 - 0.6f * cloud.teal));
}

// Adds a star, round on the dome, its light running on over the picture's ends.
void addStar(Canvas& canvas, float x, float y, float brightness, Rgba tint) {
    const float core = 0.72f + 0.70f * brightness * brightness;
    const float arm = brightness > 0.75f ? 26 * (brightness - 0.6f) : 0;
    const float halo = brightness > 0.6f ? 7 * brightness : 0;
    // The picture is finer along the horizon than up and down, and the more so the higher.
    const float stretch = 1.5f / std::fmax(std::cos(placeAt(x, y).up), 0.15f);
    const int down = static_cast<int>(std::fmax(4 * core, std::fmax(2.4f * arm, 2.5f * halo))) + 2;
    const int across = static_cast<int>(down * stretch) + 1;
    for (int row = -down; row <= down; row++) {
        for (int column = -across; column <= across; column++) {
            const int px = static_cast<int>(x) + column, py = static_cast<int>(y) + row;
            if (py < 0 || py >= size) continue;
            const float dx = (px + 0.5f - x) / stretch, dy = py + 0.5f - y, away = std::hypot(dx, dy);
            float glow = bell(away, core);
            if (arm > 0) {
                glow += 0.4f * bell(dx, 0.7f) * std::exp(-std::fabs(dy) * 4 / arm);
                glow += 0.4f * bell(dy, 0.7f) * std::exp(-std::fabs(dx) * 4 / arm);
            }
            if (halo > 0) glow += 0.07f * std::exp(-away * 2.5f / halo) * smoothstep(2.5f * halo, halo, away);
            Rgba& pixel = canvas.at((px % size + size) % size, py);
            pixel = pixel + tint * (glow * mix(0.10f, 1, brightness));
        }
    }
}

Rgba tintOf(float warmth) {
    return mix(opaque(0.66f, 0.80f, 1), opaque(1, 0.76f, 0.50f), warmth * warmth);
}

// Stars evenly over the ball; the faint ones keep to the clouds.
void addField(Canvas& canvas) {
    for (int i = 0; i < 1900; i++) {
        const float up = std::asin(2 * randomAt(i, 1, 17) - 1);
        const float x = randomAt(i, 0, 17) * size, y = size * (0.5f - up / pi);
        const float brightness = std::pow(randomAt(i, 3, 17), 8.0f);
        const float cloud = cloudAt(placeAt(x, y)).density;
        if (brightness < 0.15f && randomAt(i, 5, 17) > 0.12f + 1.2f * cloud) continue;
        addStar(canvas, x, y, std::fmin(brightness, 0.8f), tintOf(randomAt(i, 4, 17)));
    }
}

struct Cluster {
    float x, y;    // parts of the picture
    float spread;  // of its middle, in pixels
    int count;
    float warmth;
};
constexpr Cluster clusters[] = {{0.14f, 0.33f, 11, 46, 0.1f}, {0.41f, 0.44f, 17, 60, 0.9f},
                                {0.63f, 0.27f, 8, 30, 0.4f},  {0.86f, 0.39f, 22, 60, 0},
                                {0.30f, 0.58f, 9, 26, 0.7f},  {0.73f, 0.55f, 13, 34, 0.2f}};

void addCluster(Canvas& canvas, const Cluster& cluster, int seed) {
    const float middleX = cluster.x * size, middleY = cluster.y * size;
    for (int i = 0; i < cluster.count; i++) {
        // Thins out like 1 / radius, so it has a heart.
        const float radius = cluster.spread * (1 / (1 - 0.86f * randomAt(i, 0, seed)) - 0.9f);
        const float angle = 2 * pi * randomAt(i, 1, seed), brightness = std::pow(randomAt(i, 2, seed), 4.0f);
        const float stretch = 1.5f / std::cos(placeAt(middleX, middleY).up);
        addStar(canvas, middleX + radius * stretch * std::cos(angle), middleY + radius * std::sin(angle),
                0.10f + 0.62f * brightness, tintOf(mix(randomAt(i, 3, seed), 1, cluster.warmth)));
    }
}

}  // namespace

void makeStars(const char* path) {
    Canvas canvas(size, size);
    paint(canvas, [](float x, float y, Rgba) { return colourOf(cloudAt(placeAt(x, y))); });
    addField(canvas);
    int seed = 100;
    for (const Cluster& cluster : clusters) addCluster(canvas, cluster, seed++);
    // The few that make the sky one's own.
    addStar(canvas, 0.235f * size, 0.235f * size, 1.0f, tintOf(0.2f));
    addStar(canvas, 0.52f * size, 0.365f * size, 0.92f, tintOf(1));
    addStar(canvas, 0.78f * size, 0.21f * size, 0.88f, tintOf(0.5f));
    addStar(canvas, 0.97f * size, 0.50f * size, 0.95f, tintOf(0));
    saveRgb(canvas, path, Rows::TopFirst);
}
