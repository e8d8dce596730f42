// What the robot wears: the two glow bands, and what glows or is painted on it.
#include "production/kit/picture/canvas.h"
#include "production/kit/picture/shapes.h"
#include "production/pictures/pictures.h"
#include "production/shared/atlas.h"

using namespace picture;
using namespace atlas::robot;
using atlas::Cells;

namespace {

// A band lies along the robot's height: the last row is the ground and what is below it (and the ring's lower
// half), the first row is 100 units up, or 25 for the awake robot and the ring, and everything above. So row
// 0 is the tint of the upper body, next to nothing, and holds a few rows to stay pure when the picture is
// minified; below, rungs of light grow to the ground.
void makeBand(const char* path, Rgba tint, Rgba glow, Rgba hot) {
    const int size = 256, rungs = 5;
    Canvas canvas(size, size);
    paint(canvas, [&](float, float y, Rgba) {
        const float t = y / size;
        const float place = t * (rungs + 1), rung = std::floor(place + 0.5f);
        const bool between = rung >= 1 && rung <= rungs;
        const float line =
            between ? bell((place - rung) / (rungs + 1), 0.0038f) * mix(0.25f, 1, rung / rungs) : 0;
        const float wash = 0.007f * t * t * smoothstep(1.0f, 0.94f, t);
        // Where the ring is broadest, but not in the last row, which all that is below the ground shows.
        const float edge = bell(t - 0.990f, 0.004f) * smoothstep(0.9985f, 0.993f, t);
        return tint + glow * (wash + 0.38f * line + 0.30f * edge) +
               hot * (0.34f * line * line * line + 0.16f * edge * edge);
    });
    saveRgb(canvas, path, Rows::TopFirst);
}

constexpr int size = 1024;
constexpr float part = size / 16.0f;
float pixels(double cells) {
    return float(cells) * part;
}

const Rgba gold = opaque(1.0f, 0.80f, 0.42f), amber = opaque(1.0f, 0.42f, 0.06f);

// An arc of a circle that hangs below its middle, `half` radians to each side, with round ends.
float hangingArc(Point p, Point middle, float radius, float half) {
    const Point aside = {std::fabs(p.x - middle.x), p.y - middle.y};
    const Point end = {radius * std::sin(half), radius * std::cos(half)};
    return arcTan(aside.x, aside.y) < half ? std::fabs(length(aside) - radius) : length(aside - end);
}

// The face on a glass of 640 x 512: two round eyes and a smile.
float faceInk(Point p) {
    const float aside = std::fabs(p.x - 320);
    const Point eye = {aside - 138, p.y - 196};
    const float radius = length(eye);
    const Point pupil = {p.x - (p.x < 320 ? 182 : 458), p.y - 196};
    const float disc = coverage(radius - 74) * (1 - coverage(length(pupil + Point{24, 28}) - 20));
    const float ring = outline(radius - 100, 12) * 0.40f;
    const float mouth = hangingArc(p, {320, 168}, 206, 0.74f) - 15;
    return std::fmax(std::fmax(disc, ring), coverage(mouth));
}

// A lens with a bright rim, seven blades and a heart.
Rgba irisAt(Point p, float radius) {
    const float r = length(p) / radius, turn = arcTan(p.y, p.x);
    const float pixel = radius;
    const float blades = 0.5f + 0.5f * std::cos(7 * (turn + 1.4f * r));
    Rgba c = amber * (0.55f * bell(r - 0.80f, 0.05f)) + gold * (0.9f * coverage((r - 0.30f) * pixel));
    c = c +
        amber * (0.30f * std::pow(blades, 3.0f) * smoothstep(0.34f, 0.40f, r) * smoothstep(0.74f, 0.62f, r));
    return c * smoothstep(1.0f, 0.92f, r);
}

// A screen of 384 x 320 units that shows a heart and its beat.
Rgba pulseAt(Point p) {
    const float lines = 0.84f + 0.16f * std::cos(p.y * pi / 4);
    // A square on its corner, and a half circle on each of its upper sides.
    const Point heart = {std::fabs(p.x - 192), p.y - 88};
    const float halves =
        std::fmin(length(heart - Point{31, -31}) - 44, box(turned(heart, pi / 4), {0, 0}, {44, 44}));
    const Point trace[] = {{20, 236},  {110, 236}, {132, 212}, {152, 236}, {166, 250}, {190, 168},
                           {214, 288}, {230, 236}, {262, 222}, {284, 236}, {364, 236}};
    float away = 1e9f;
    for (size_t i = 1; i < std::size(trace); i++) away = std::fmin(away, segment(p, trace[i - 1], trace[i]));
    const float ink = std::fmax(coverage(halves), coverage(away - 7));
    const Rgba sheen = amber * (0.012f * bell(length(p - Point{192, 160}), 150));
    return mix(amber, gold, smoothstep(40.0f, 200.0f, p.y)) * (0.85f * ink * lines) + sheen;
}

// The glass of the face, lit from within.
Rgba glassAt(Point p) {
    const float lines = 0.84f + 0.16f * std::cos(p.y * (pi / 4));
    const float sheen = 0.008f * bell(length(p - Point{320, 250}), 190);
    return gold * (0.80f * faceInk(p) * lines) + amber * sheen;
}

bool onGlass(Point p) {
    return p.x < pixels(face.width) && p.y < pixels(face.height);
}

// A lacquer in the lights that fall on the robot, by how much of each it gets.
struct Coat {
    Rgba albedo, sheen;  // what the key makes of it where it falls straight on it
};
const Coat coats[lacquers] = {{opaque(0.80f, 0.74f, 0.64f), opaque(0.05f, 0.05f, 0.04f)},   // ivory
                              {opaque(0.95f, 0.25f, 0.05f), opaque(0.05f, 0.03f, 0.01f)},   // orange
                              {opaque(0.045f, 0.16f, 0.19f), opaque(0.05f, 0.06f, 0.06f)},  // petrol
                              {opaque(0.80f, 0.48f, 0.14f), opaque(0.22f, 0.17f, 0.09f)}};  // brass
Rgba lacquerAt(Point place) {
    const int column = int((place.x / part - 10) / 2), row = int(place.y / part - 6);
    const int which = std::clamp(row * 3 + column, 0, lacquers - 1);
    const Cells cells = lacquer(which).within(margin);
    const float key = unit((place.x / part - float(cells.left)) / float(cells.width)),
                up = unit((float(cells.bottom()) - place.y / part) / float(cells.height)),
                side = unit((up - float(neither)) / (1 - float(neither))),
                below = unit(1 - up / float(neither));
    const Rgba light = opaque(0.86f, 0.75f, 0.59f) * std::pow(key, 3.1f) +
                       opaque(0.33f, 0.39f, 0.46f) * std::pow(side, 2.8f) +
                       opaque(0.006f, 0.08f, 0.05f) * std::pow(below, 2.0f) + opaque(0.002f, 0.002f, 0.004f);
    return coats[which].albedo * light + coats[which].sheen * std::pow(key, 6.0f);
}

Rgba swatchAt(float x) {
    if (x < pixels(warmLamp.left)) return opaque(0.52f, 0.13f, 0.015f);
    return x < pixels(coldTube.left) ? opaque(0.95f, 0.62f, 0.24f) : opaque(0.09f, 0.26f, 0.31f);
}

// All of it, by place in pixels.
Rgba wornAt(Point place) {
    const auto [x, y] = place;
    if (onGlass(place)) return glassAt(place);
    if (x < pixels(face.width))
        return pulseAt((place - Point{0, pixels(pulse.top)}) * (384 / pixels(pulse.width)));
    if (y < pixels(iris.bottom()))
        return irisAt(place - Point{pixels(iris.middleX()), pixels(iris.middleY())}, 2.8f * part);
    return y < pixels(face.bottom()) ? lacquerAt(place) : swatchAt(x);
}

}  // namespace

void makeRedBand(const char* path) {
    makeBand(path, opaque(0.006f, 0.0005f, 0.001f), opaque(0.90f, 0.05f, 0.010f), opaque(1, 0.55f, 0.20f));
}

void makeGreenBand(const char* path) {
    makeBand(path, opaque(0, 0.011f, 0.005f), opaque(0.03f, 0.85f, 0.32f), opaque(0.50f, 1, 0.65f));
}

// Added to dark metal.
void makeRobotFace(const char* path) {
    Canvas canvas(size, size, opaque(0, 0, 0));
    paint(canvas, [&](float x, float y, Rgba) { return wornAt({x, y}); });
    Canvas halo = blurred(canvas, 14, Edge::Clamp);
    for (int y = 0; y < size; y++)
        for (int x = 0; x < size; x++)
            if (x < pixels(face.width)) canvas.at(x, y) = canvas.at(x, y) + halo.at(x, y) * 0.14f;
    saveRgb(canvas, path, Rows::TopFirst);
}
