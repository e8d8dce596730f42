// The sphere maps. Each is a small studio that is looked up by direction, so that its lamps bend over a hull
// as real ones would; a map shows what the viewer's surroundings throw back, with the sky in its last rows.
#include <vector>

#include "production/kit/picture/canvas.h"
#include "production/kit/picture/noise.h"
#include "production/kit/picture/shapes.h"
#include "production/pictures/pictures.h"
#include "production/shared/comet.h"
#include "production/shared/glow.h"

using namespace picture;

namespace {

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

// `count` lamps, each a step (degrees of azimuth) from the last.
void addBank(std::vector<Softbox>& lamps, Softbox lamp, float step, int count) {
    for (int i = 0; i < count; i++, lamp.azimuth += step) lamps.push_back(lamp);
}

// Paints lamps before a ground(direction) as OpenGL's sphere map looks them up: with the unit normal n that a
// place of the disc stands for, the direction is the viewer's, mirrored at n. `rimEnds`: where what lies on
// the rim has faded, in radii.
template <class Ground>
void makeSphereMap(const char* path, const std::vector<Softbox>& lamps, Ground ground, float rimEnds = 1.16f,
                   float alpha = 1) {
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
        seen = seen * smoothstep(rimEnds, 1 + 0.25f * (rimEnds - 1), radius);
        seen.a = alpha;
        return seen;
    });
    (alpha < 1 ? saveRgba : saveRgb)(canvas, path, Rows::BottomFirst);
}

// A comet, its tail running on to the right: what hangs before the hall's wall is shaded so that it shows it.
Rgba cometLight(Direction towards) {
    const float along = arcTan(towards.x, towards.z) / degree - float(comet::azimuth);
    const float above = arcSin(std::clamp(towards.y, -1.0f, 1.0f)) / degree - float(comet::elevation);
    const float away = std::hypot(along * float(comet::azimuthShrinks), above);
    Rgba seen = light(1, 1, 1) * bell(away, float(comet::headBreadth)) +
                light(0.10f, 0.16f, 0.30f) * bell(away, 3.0f);
    if (along > 0 && along < float(comet::tail)) {
        const float k = along / float(comet::tail);
        const Rgba tint = mix(light(1, 1, 1), light(0.30f, 0.46f, 1), smoothstep(0.02f, 0.4f, k));
        seen = seen + tint * ((1 - k) * (1 - k) *
                              bell(above, float(comet::tailBreadth) + float(comet::tailGrowth) * k));
    }
    return seen;
}

// Low, and the broad ones most: the corridor's glow on a beat makes seven times as much of what fills a
// panel, where a tube draws a line.
const std::vector<Softbox> studioLamps = {
    // Over the viewer: a broad one between two tubes.
    {0, 54, {1.2f, 0.20f}, 3, 0.16f, light(0.012f, 0.015f, 0.018f)},
    {0, 36, {0.9f, 0.010f}, 2, 0.010f, light(0.20f, 0.31f, 0.45f)},
    {0, 68, {1.5f, 0.024f}, 2, 0.016f, light(0.18f, 0.21f, 0.24f)},
    // A cold one and its tube on his left, a warm one and its tube on his right.
    {-64, 10, {0.20f, 0.6f}, 5, 0.10f, light(0.017f, 0.031f, 0.048f)},
    {-52, 10, {0.010f, 0.6f}, 5, 0.010f, light(0.18f, 0.32f, 0.56f)},
    {70, 0, {0.16f, 0.7f}, -8, 0.09f, light(0.036f, 0.018f, 0.006f)},
    {58, 0, {0.010f, 0.7f}, -8, 0.010f, light(0.59f, 0.35f, 0.13f)},
    // Fills below him and on both sides.
    {10, -36, {0.7f, 0.05f}, -4, 0.05f, light(0.03f, 0.015f, 0.006f)},
    {-34, 26, {0.24f, 0.20f}, 12, 0.14f, light(0.014f, 0.024f, 0.034f)},
    {36, 6, {0.18f, 0.26f}, -6, 0.12f, light(0.025f, 0.014f, 0.006f)},
};
const Rgba horizon = light(0.015f, 0.022f, 0.035f);

// For the ball's mirrors: round lamps scattered all round, most of them cold.
void addSparks(std::vector<Softbox>& lamps) {
    constexpr int sparks = 30, seed = 9;
    constexpr float lowest = -36;  // degrees; below flies the comet
    const Rgba cold = light(0.50f, 0.66f, 0.80f), warm = light(0.85f, 0.56f, 0.26f);
    for (int i = 0; i < sparks; i++) {
        const auto random = [&](int what) { return randomAt(i, what, seed); };
        const float azimuth = mix(-100, 100, random(0)), elevation = mix(-60, 62, random(1));
        if (elevation < lowest) continue;
        const float radius = mix(0.015f, 0.035f, random(2));
        const Rgba tint = mix(cold, warm, smoothstep(0.6f, 0.9f, random(3)));
        lamps.push_back({azimuth, elevation, {radius, radius}, 0, 0.012f, tint * mix(0.4f, 1.0f, random(4))});
    }
}

// Behind the viewer: next to nothing, so that what faces him is dark.
Rgba nightAhead(Direction towards) {
    const Rgba floor = light(0.0004f, 0.0008f, 0.0012f), sky = light(0.0006f, 0.001f, 0.0016f);
    const Rgba warmFill = light(0.0014f, 0.001f, 0.0004f), coldFill = light(0.001f, 0.0014f, 0.002f);
    return mix(floor, sky, smoothstep(-0.1f, 0.1f, towards.y)) * smoothstep(-0.3f, 0.8f, towards.z) +
           mix(warmFill, coldFill, smoothstep(-0.25f, 0.25f, towards.y)) *
               smoothstep(0.45f, 0.95f, towards.z);
}

// Two fine rings lie in the glow above a thing.
Rgba ringsAbove(Direction towards) {
    const float rings = bell(towards.y - 0.26f, 0.010f) + 0.5f * bell(towards.y - 0.42f, 0.008f);
    return mix(light(0.3f, 0.5f, 0.7f), light(0.7f, 0.45f, 0.2f), smoothstep(-0.3f, 0.3f, towards.x)) *
           (0.8f * rings);
}

// Lights by how far in one looks (0..1): from a deep edge over the full tone to a hot heart.
struct Light {
    Rgba edge, full, hot;
};
Rgba at(const Light& light, float in) {
    return mix(mix(light.edge * smoothstep(0, 0.25f, in), light.full, smoothstep(0.15f, 0.50f, in)),
               light.hot, smoothstep(0.62f, 0.95f, in));
}
const Light warm = {light(0.10f, 0.010f, 0.016f), light(0.42f, 0.145f, 0.012f), light(0.58f, 0.36f, 0.13f)},
            cold = {light(0.020f, 0.016f, 0.10f), light(0.026f, 0.14f, 0.38f), light(0.20f, 0.44f, 0.58f)};

// The glow stands in panes, no two of a tone, each hot along one edge and dark towards the other, black gaps
// between them: a form gets light, half tone and dark of it. 0..1.
float panesAt(Direction towards) {
    constexpr int panes = 26;
    constexpr float gap = 0.10f;
    const float turn = (arcTan(towards.y, towards.x) / (2 * pi) + 0.5f) * panes;
    const int pane = int(std::floor(turn));
    const float along = turn - float(pane), tone = mix(0.50f, 0.95f, randomAt(pane % panes, 1, 12));
    const float inside = smoothstep(0.0f, gap, along) * smoothstep(1.0f, 1 - gap, along);
    const float line = bell(along - 0.16f, 0.05f);
    return inside * (tone * mix(1.0f, 0.45f, along) + 0.6f * line);
}

Rgba glowBeyond(Direction towards) {
    const glow::Glow<float> strength = glow::in(towards);
    const float panes = panesAt(towards), beyond = strength.beyond;
    // A fine dark joint runs all round.
    const float joint = 1 - 0.85f * bell(towards.z + 0.80f, 0.012f);
    const auto pool = [&](const Light& light, float share) { return at(light, panes * beyond) * share; };
    return (pool(cold, strength.cold) + pool(warm, strength.warm) +
            (light(0.10f, 0.16f, 0.22f) * strength.above * panes + ringsAbove(towards) +
             pool(warm, strength.below)) *
                strength.between * beyond) *
           joint;
}

// Over the viewer.
Rgba overhead(Direction towards) {
    const glow::Overhead<float> lamps = glow::overhead(towards);
    const float away = 90 - arcSin(std::clamp(towards.y, -1.0f, 1.0f)) / degree;
    const float in = smoothstep(25.0f, 8.0f, away);
    return at(cold, in) * lamps.cold + at(warm, in) * lamps.warm;
}

}  // namespace

// On hulls, boxes and all that stands in the hall, added to the lit texture and then to itself by the glow:
// dark but for thin tubes, which draw lines on a flat panel where a broad lamp would fill it, and for what
// lies beyond the thing. That lights its edges, cold left and warm right; what faces straight up or down
// throws back the glow beyond it, cold from below the viewer's eyes and warm from above.
void makeStudio(const char* path) {
    std::vector<Softbox> lamps = studioLamps;
    addSparks(lamps);
    makeSphereMap(path, lamps, [](Direction towards) {
        return nightAhead(towards) + glowBeyond(towards) + overhead(towards) + cometLight(towards) +
               horizon * (bell(towards.y, 0.03f) * smoothstep(-0.5f, 0.0f, towards.z));
    });
}

namespace {

// Which way a surface looks that throws `towards` back at the viewer.
Direction facing(Direction towards) {
    const Direction half = towards + Direction{0, 0, 1};
    const float size = std::sqrt(dot(half, half));
    return size > 1e-4f ? half * (1 / size) : Direction{1, 0, 0};
}

// Of the robot's maps: past the disc only as far as filtering asks for, since the rim is their brightest
// part. They leave no alpha in the frame, where the greetings write theirs.
constexpr float shortRim = 1.05f;

// The robot's maps are multiplied by what its scene's one lamp, which goes along with the viewer, makes of
// its material; divided by that they lay their own lights wherever they like.
float litByTheScene(Direction normal) {
    const Direction lamp = {0.54f, -0.40f, 0.74f};
    const Direction half = {0.29f, -0.21f, 0.93f};
    return 0.14f + 0.63f * std::fmax(dot(normal, lamp), 0.0f) +
           std::pow(std::fmax(dot(normal, half), 0.0f), 20.0f);
}

// While it fades the hall's lamp shines on it too, from above on the viewer's right: what that would make
// much brighter is held down to `enough`, or the glow makes it white. What can't be laid keeps its hue.
Rgba heldDown(Rgba light, Direction normal, float enough) {
    const Direction lamp = {0.55f, 0.71f, 0.44f}, between = {0.32f, 0.42f, 0.85f};
    const float lit = litByTheScene(normal), more = 0.63f * std::fmax(dot(normal, lamp), 0.0f) +
                                                    std::pow(std::fmax(dot(normal, between), 0.0f), 20.0f);
    const float asked = std::fmax(light.r, std::fmax(light.g, light.b)), brightest = std::fmin(asked, 1.0f);
    const float allowed = std::fmax(enough, 1.1f * brightest * lit),
                fading = brightest * std::fmin(lit + more, 1.0f);
    return light *
           (brightest / std::fmax(asked, 1e-4f) * std::fmin(1.0f, allowed / std::fmax(fading, 1e-4f)));
}

// Which way a surface looks, in degrees: azimuth 0 is towards the viewer, 90 to his right.
struct Bearing {
    float azimuth, elevation;
};

Bearing bearingOf(Direction normal) {
    return {arcTan(normal.x, normal.z) / degree, arcSin(std::clamp(normal.y, -1.0f, 1.0f)) / degree};
}

// A lamp with hard edges, on what looks between two corners.
float pane(Bearing at, Bearing from, Bearing to) {
    const auto between = [](float low, float x, float high) {
        return smoothstep(low - 1, low + 1, x) * smoothstep(high + 1, high - 1, x);
    };
    return between(from.azimuth, at.azimuth, to.azimuth) *
           between(from.elevation, at.elevation, to.elevation);
}

// One cold rim, brightest on the key's side and broadest on the other, which that lamp hardly reaches; thin,
// or the glow would lay it over the night as a veil. None on what looks straight up, or down, which is where
// that is found when the viewer looks up at it: so are shaded screens and lamps, to be black but for their
// own light.
Rgba coldRim(Direction normal) {
    const float side = smoothstep(-0.2f, 0.5f, dot(normal, Direction{0.93f, -0.26f, 0.0f}));
    const float ends = mix(0.34f, 0.30f, side);
    const float share =
        smoothstep(ends, ends - 0.15f, normal.z) * smoothstep(0.85f, 0.50f, std::fabs(normal.y));
    return mix(opaque(0.24f, 0.34f, 0.39f), opaque(0.36f, 0.66f, 0.96f), side) * share;
}
const Rgba keyLight = opaque(0.74f, 0.82f, 0.90f);

}  // namespace

// On the robot's body, which has no other picture: the lit colour times this. Dark steel: a soft light of
// the key's side lets it stand before the night, no more of it than the glow lays over it as a veil; its form
// is drawn by lamps with hard edges.
void makeRobotChrome(const char* path) {
    makeSphereMap(
        path, {},
        [&](Direction towards) {
            const Direction normal = facing(towards);
            const Bearing at = bearingOf(normal);
            // The key, a tall window of two panes on the side that the scene's lamp shines from: it ends at
            // once towards the viewer and fades away from him, and is low on what looks down.
            const float window = pane(at, {34, -62}, {47, 64}) + pane(at, {49.5f, -62}, {52, 64});
            const float key = window * mix(1.0f, 0.30f, smoothstep(34.0f, 46.0f, at.azimuth)) *
                              mix(0.24f, 1.0f, smoothstep(-12.0f, 2.0f, at.elevation));
            // An orange strip on the other side, a cold one from above, and the soft light.
            const Rgba strips = opaque(0.30f, 0.13f, 0.035f) * pane(at, {-45, -60}, {-34, 40}) +
                                opaque(0.16f, 0.20f, 0.25f) * pane(at, {-70, 46}, {70, 54});
            const float turn = smoothstep(-0.1f, 1.0f, dot(normal, Direction{0.72f, 0.10f, 0.69f}));
            const Rgba seen = opaque(0.016f, 0.012f, 0.012f) + opaque(0.17f, 0.105f, 0.05f) * (turn * turn) +
                              keyLight * key + strips + coldRim(normal);
            return heldDown(seen * (1 / litByTheScene(normal)), normal, 0.20f);
        },
        shortRim, 0);
}

// On its lacquer, its rubber, its glass and the ring, which have pictures or tints of their own: two panes of
// the key, hard and small, and the rim.
void makeArmChrome(const char* path) {
    makeSphereMap(
        path, {},
        [&](Direction towards) {
            const Direction normal = facing(towards);
            const Bearing at = bearingOf(normal);
            const float window = pane(at, {38, -30}, {44, 52}) + 0.7f * pane(at, {46, -30}, {48, 52});
            const Rgba seen = opaque(0.002f, 0.003f, 0.006f) + keyLight * (0.40f * window) +
                              opaque(0.10f, 0.12f, 0.14f) * pane(at, {-40, 50}, {30, 56}) +
                              coldRim(normal) * 0.4f;
            return heldDown(seen * (1 / litByTheScene(normal)), normal, 0.14f);
        },
        shortRim, 0);
}

// The hall's own: tall lamps all round and a ring of light overhead. The room binds it and leaves it switched
// off, so it is seen only where somebody turns its unit on.
void makeHallReflections(const char* path) {
    std::vector<Softbox> lamps;
    addBank(lamps, {-160, 8, {0.022f, 0.42f}, 0, 0.015f, light(0.10f, 0.46f, 0.42f)}, 32, 11);
    addBank(lamps, {-170, 58, {0.07f, 0.02f}, 0, 0.02f, light(0.42f, 0.56f, 0.54f)}, 24, 15);
    const std::vector<Stop> walls = {{-1, light(0.004f, 0.012f, 0.014f)},
                                     {-0.2f, light(0.010f, 0.045f, 0.046f)},
                                     {0.2f, light(0.014f, 0.070f, 0.068f)},
                                     {1, light(0.010f, 0.030f, 0.034f)}};
    makeSphereMap(path, lamps, [&](Direction towards) { return gradient(walls, towards.y); });
}
