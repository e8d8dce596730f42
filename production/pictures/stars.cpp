// "star" (star2.png): the sky round the robot, drawn unlit. The whole ball lies folded in the square as the
// model of the sky unfolds it. Below floats a dark world with the sun about to rise, straight overhead hangs
// a giant, half lit, and smaller worlds shine where the sun does not. All of it is dim, since the glow makes
// nearly four times as much of a broad light.
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

// Where the sun stands, just under the horizon: behind the robot for who looks it in the face.
const Direction sunwards = normalized(Direction{0.04f, 0, -1});

// The world's night, from its horizon down, and the air over it. Towards the sun it is lit.
constexpr float horizon = -15 * degree;
float overHorizon(Direction d) {  // degrees
    return (arcSin(d.y) - horizon) / degree;
}
// Hides what shines beyond it. Over six texels, or its edge would be steps.
float groundCovers(Direction d) {
    return smoothstep(0.45f, -0.45f, overHorizon(d));
}
Rgba worldAt(Direction d) {
    const float height = overHorizon(d), level = std::hypot(d.x, d.z);
    const float dawn = 0.5f + 0.5f * dot({d.x, 0, d.z}, sunwards) / std::fmax(level, 1e-4f);
    const float near = dawn * dawn * dawn;
    const Rgba air = mix(opaque(0.02f, 0.16f, 0.30f), opaque(0.10f, 0.42f, 0.52f), near);
    const auto falling = [&](float by) { return std::exp(-std::fabs(height) / by); };  // degrees
    const float below = groundCovers(d);
    const Rgba sky = air * (mix(0.7f, 1, near) * falling(0.9f) + mix(0.12f, 0.42f, near) * falling(5)) +
                     opaque(0.75f, 0.28f, 0.10f) * (0.7f * std::pow(dawn, 40.0f) * falling(5)) +
                     opaque(0.9f, 0.6f, 0.3f) * (0.6f * std::pow(dawn, 300.0f) * falling(2.5f));
    if (below <= 0) return sky;
    const float clouds = fractalNoise(d.x / -d.y * 3, 1.7f, d.z / -d.y * 3, 6, 401);
    // Towns on its dark coasts, strung along roads.
    const auto land = [&](float scale, int octaves, uint32_t seed) {
        return fractalNoise(d.x / -d.y * scale, 0.3f, d.z / -d.y * scale, octaves, seed);
    };
    const float roads =
        std::exp(-std::fabs(land(2.4f, 3, 431)) / 0.035f) + std::exp(-std::fabs(land(3.1f, 3, 441)) / 0.03f);
    const float towns =
        smoothstep(-0.05f, 0.25f, land(1.1f, 4, 451)) * smoothstep(0.12f, 0.5f, land(34, 2, 461));
    const Rgba lights = opaque(1.5f, 0.86f, 0.30f) *
                        (towns * unit(0.12f + roads) * (1 - near) * smoothstep(-0.5f, -3.0f, height));
    const Rgba ground = lights + air * (0.55f * near * falling(5) * smoothstep(-0.1f, 0.5f, clouds) +
                                        mix(0.25f, 0.5f, near) * falling(0.5f));
    return mix(sky, ground, below);
}

// What hides the stars behind it, and how much of a place it covers.
struct Body {
    Rgba light;
    float covers = 0;
};

// Where a place of the sky lies on a ball that is seen in a direction: its normal there, and how far off the
// middle that is, 1 at the edge.
struct Seen {
    Direction normal;
    float out;
};
Seen onBall(Direction middle, float radius, Direction d) {
    if (dot(d, middle) < 0) return {{}, 2};
    const Direction aside = (d - middle * dot(d, middle)) * (1 / std::sin(radius));
    const float out = length(aside);
    return {aside - middle * std::sqrt(std::fmax(0.0f, 1 - out * out)), out};
}

// Its middle is the zenith, so that who looks up at the robot has it behind the head. Beside its edge shines
// its air.
Body giantAt(Direction d) {
    const auto [normal, out] = onBall({0, 1, 0}, 38 * degree, d);
    if (out > 1.6f) return {};
    const Direction sun = normalized(sunwards + Direction{0.3f, -0.27f, 0});
    const float bend = fractalNoise(normal.x * 2.2f, normal.y * 2.2f, normal.z * 2.2f, 5, 411);
    const float latitude = dot(normal, normalized(Direction{0.86f, -0.35f, -0.36f})) + 0.05f * bend;
    const float bands = 0.5f + 0.3f * std::sin(17 * latitude + 1.2f * bend) + 0.2f * std::sin(41 * latitude);
    const Rgba ground = mix(opaque(0.11f, 0.026f, 0.13f), opaque(0.27f, 0.15f, 0.18f), unit(bands));
    const float covers = smoothstep(1.004f, 0.996f, out), day = dot(normal, sun);
    const float edge = std::fabs(out - 1);
    return {ground * (smoothstep(-0.16f, 0.75f, day) * covers) +
                opaque(0.31f, 0.21f, 0.25f) * (std::exp(-edge / 0.012f) * smoothstep(-0.6f, 0.8f, day)) +
                opaque(0.075f, 0.036f, 0.09f) *
                    ((1 - covers) * std::exp(-edge / 0.07f) * smoothstep(-0.1f, 0.9f, day)),
            covers};
}

// A small world, lit from its left.
Body ballAt(Direction middle, float radius, Rgba tint, Direction d) {
    const auto [normal, out] = onBall(middle, radius, d);
    if (out > 1.02f) return {};
    const float rough = fractalNoise(normal.x * 3, normal.y * 3, normal.z * 3, 6, 421);
    const Direction sun = normalized(Direction{-middle.z, -0.35f, middle.x} - middle * 0.45f);
    const float covers = smoothstep(1.02f, 0.98f, out);
    const float day = smoothstep(0.0f, 0.7f, dot(normal, sun) + 0.12f * rough);
    return {tint * (mix(0.35f, 1, unit(0.5f + 0.9f * rough)) * day * covers), covers};
}

Direction bearing(float turn, float height) {  // degrees, from +z towards +x, and up
    const float level = std::cos(height * degree);
    return {std::sin(turn * degree) * level, std::sin(height * degree), std::cos(turn * degree) * level};
}

// One with rings, which pass before it below its middle.
Body ringedAt(Direction middle, float radius, Direction d) {
    if (dot(d, middle) < 0.5f) return {};
    const Body ball = ballAt(middle, radius, opaque(0.26f, 0.15f, 0.07f), d);
    const Direction right = normalized(cross({0.3f, 1, -0.23f}, middle)), up = cross(middle, right);
    const Point place = Point{dot(d, right), dot(d, up)} * (1 / std::sin(radius));
    const float across = std::hypot(place.x, place.y / 0.26f);
    if (place.y > 0 && ball.covers > 0.5f) return ball;
    const float bands = smoothstep(1.30f, 1.36f, across) * smoothstep(2.25f, 2.15f, across) *
                        (1 - 0.85f * bell(across - 1.82f, 0.035f)) * (0.75f + 0.25f * std::sin(15 * across));
    const float lit = mix(0.35f, 1, smoothstep(1.2f, -1.6f, place.x));
    return {ball.light * (1 - 0.8f * bands) + opaque(0.24f, 0.17f, 0.12f) * (bands * lit),
            std::fmax(ball.covers, 0.8f * bands)};
}

Body bodyAt(Direction d) {
    if (const Body body = ringedAt(bearing(10, 13), 14 * degree, d); body.covers > 0) return body;
    if (const Body body = ballAt(bearing(-68, 15), 11 * degree, opaque(0.20f, 0.09f, 0.13f), d);
        body.covers > 0)
        return body;
    return giantAt(d);
}

// A band of lit gas, torn by dark lanes, that rises highest where neither sun nor worlds stand.
Rgba gasAt(Direction d) {
    const auto noise = [&](float scale, uint32_t seed) {
        return fractalNoise(d.x * scale, d.y * scale, d.z * scale, 6, seed);
    };
    const float broad = noise(1.6f, 471), fine = noise(4.5f, 481);
    const float away = dot(d, normalized(Direction{-0.42f, 0.9f, 0.1f})) + 0.16f * broad;
    const float lanes = smoothstep(0.02f, 0.16f, std::fabs(fine + 0.5f * away));
    const float gas = bell(away, 0.20f) * unit(0.45f + 1.3f * fine) * mix(0.25f, 1, lanes);
    const Rgba tint =
        mix(opaque(0.05f, 0.10f, 0.34f), opaque(0.36f, 0.05f, 0.12f), smoothstep(-0.3f, 0.3f, broad + fine));
    return tint * (0.32f * gas) + opaque(0.10f, 0.06f, 0.05f) * (bell(away, 0.07f) * gas);
}

Rgba colourOf(Direction d) {
    const Body body = bodyAt(d);
    return (opaque(0.0035f, 0.0035f, 0.009f) + gasAt(d) * (1 - groundCovers(d)) + worldAt(d)) *
               (1 - body.covers) +
           body.light;
}

bool clearAt(Direction d) {
    return arcSin(d.y) > horizon + 1.5f * degree && bodyAt(d).covers < 0.5f;
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

// Stars evenly over the ball, the faint ones thinned.
void addField(Canvas& canvas) {
    for (int i = 0; i < 8000; i++) {
        const Direction star = scattered(i, 17);
        const float brightness = std::pow(randomAt(i, 3, 17), 9.0f);
        if (!clearAt(star) || (brightness < 0.15f && randomAt(i, 5, 17) > 0.4f)) continue;
        addStar(canvas, star, std::fmin(brightness, 0.8f), tintOf(randomAt(i, 4, 17)));
    }
}

struct Cluster {
    Direction middle;
    float spread;  // of its middle, in radians
    int count;
    float warmth;
    int seed;
};
const Cluster clusters[] = {{{0.5f, 0.5f, -0.8f}, 0.020f, 46, 0.1f, 100},
                            {{-0.9f, 0.25f, 0.3f}, 0.030f, 60, 0.9f, 101},
                            {{0.8f, -0.2f, -0.4f}, 0.035f, 60, 0, 103},
                            {{-0.3f, 0.1f, 0.9f}, 0.018f, 30, 0.7f, 104},
                            {{-0.6f, 0.6f, -0.5f}, 0.022f, 40, 0.2f, 105}};

void addCluster(Canvas& canvas, const Cluster& cluster) {
    const int seed = cluster.seed;
    const Direction middle = normalized(cluster.middle);
    const Direction right = normalized(cross({0, 1, 0.1f}, middle)), up = cross(middle, right);
    for (int i = 0; i < cluster.count; i++) {
        // Thins out like 1 / radius, so it has a heart.
        const float radius = cluster.spread * (1 / (1 - 0.86f * randomAt(i, 0, seed)) - 0.9f);
        const float angle = 2 * pi * randomAt(i, 1, seed), brightness = std::pow(randomAt(i, 2, seed), 4.0f);
        const float a = radius * std::cos(angle), b = radius * std::sin(angle);
        const Direction star = normalized(middle + right * a + up * b);
        if (clearAt(star))
            addStar(canvas, star, 0.10f + 0.62f * brightness,
                    tintOf(mix(randomAt(i, 3, seed), 1, cluster.warmth)));
    }
}

}  // namespace

void makeStars(const char* path) {
    Canvas canvas(size, size);
    paint(canvas, [](float x, float y, Rgba) { return colourOf(directionAt(x, y)); });
    addField(canvas);
    for (const Cluster& cluster : clusters) addCluster(canvas, cluster);
    // The few that make the sky one's own.
    addStar(canvas, normalized(Direction{0.3f, 0.7f, 0.5f}), 1.0f, tintOf(0.2f));
    addStar(canvas, normalized(Direction{-0.8f, 0.3f, -0.2f}), 0.92f, tintOf(1));
    addStar(canvas, normalized(Direction{0.2f, 0.2f, -0.9f}), 0.88f, tintOf(0.5f));
    addStar(canvas, normalized(Direction{0.9f, 0.1f, 0.3f}), 0.95f, tintOf(0));
    addStar(canvas, normalized(Direction{-0.4f, 0.15f, 0.8f}), 0.95f, tintOf(0.8f));
    // None in the frame, where the greetings write theirs.
    for (Rgba& pixel : canvas.pixels) pixel.a = 0;
    saveRgba(canvas, path, Rows::TopFirst);
}
