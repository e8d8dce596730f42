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
        const float wash = 0.007f * t * t * smoothstep(1.0f, 0.94f, t) +
                           0.17f * smoothstep(1.0f, 0.84f, t) * smoothstep(0.80f, 0.84f, t);
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

// A square on its corner, and a half circle on each of its upper sides.
float outsideHeart(Point p, float size) {
    const Point half = Point{std::fabs(p.x), p.y} * (1 / size);
    return size * std::fmin(length(half - Point{31, -31}) - 44, box(turned(half, pi / 4), {0, 0}, {44, 44}));
}

// The faces on a glass of 640 x 512, by where a place lies from the middle of the eye next to it.
float openEye(Point eye, Point gaze) {
    const float radius = length(eye);
    const float disc = coverage(radius - 74) * (1 - coverage(length(eye - gaze) - 20));
    return std::fmax(disc, outline(radius - 100, 12) * 0.40f);
}
float smile(Point p) {
    return coverage(hangingArc(p, {320, 168}, 206, 0.74f) - 15);
}

float faceInk(int which, Point p) {
    const float side = p.x < 320 ? -1 : 1;
    const Point eye = {p.x - 320 - 138 * side, p.y - 196};
    switch (which) {
        case 0:
            return std::fmax(openEye(eye - Point{0, 36}, {24, -28}), smile(p - Point{0, 26}));
        case 1: {  // winks and laughs
            const float lid = coverage(hangingArc({eye.x, -eye.y}, {0, -44}, 78, 1.0f) - 17);
            const Point mouth = {p.x - 320, p.y - 318};
            const float tongue = coverage(length(mouth - Point{0, 112}) - 66);
            const float laugh = coverage(std::fmax(length(mouth) - 112, -mouth.y)) * mix(1, 0.35f, tongue);
            return std::fmax(side > 0 ? lid : openEye(eye, {24, -28}), laugh);
        }
        case 2: {  // is amazed
            const float brow = coverage(hangingArc({eye.x, -eye.y}, {0, 16}, 116, 0.5f) - 11);
            const float mouth = coverage(std::fabs(length(Point{p.x - 320, (p.y - 384) * 0.9f}) - 50) - 17);
            return std::fmax(std::fmax(openEye(eye, {0, -20}), brow), mouth);
        }
        default:
            return std::fmax(coverage(outsideHeart(eye + Point{0, 6}, 1.06f)), smile(p));
    }
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

const Rgba moods[] = {gold, opaque(1.0f, 0.62f, 0.24f), opaque(0.36f, 0.88f, 1.0f),
                      opaque(1.0f, 0.34f, 0.42f)};

// The glass of a face, lit from within.
Rgba glassAt(int which, Point p) {
    const float lines = 0.84f + 0.16f * std::cos(p.y * (pi / 4));
    const float sheen = 0.008f * bell(length(p - Point{320, 250}), 190);
    // Larger than it was drawn.
    const Point drawn = (p - Point{320, 256}) * 0.85f + Point{320, 252};
    return moods[which] * (0.64f * faceInk(which, drawn) * lines + sheen);
}

// A lacquer in the lights that fall on the robot, by how much of each it gets.
struct Coat {
    Rgba albedo, sheen;  // what the key makes of it where it falls straight on it
};
const Coat coats[lacquers] = {{opaque(0.50f, 0.41f, 0.29f), opaque(0.06f, 0.06f, 0.05f)},   // ivory
                              {opaque(0.78f, 0.16f, 0.02f), opaque(0.08f, 0.05f, 0.02f)},   // orange
                              {opaque(0.02f, 0.30f, 0.36f), opaque(0.06f, 0.08f, 0.08f)},   // petrol
                              {opaque(0.62f, 0.32f, 0.08f), opaque(0.10f, 0.08f, 0.04f)}};  // brass
Rgba lacquerAt(Point place) {
    const int which =
        std::clamp(int((place.x / part - float(lacquer(0).left)) / float(lacquer(0).width)), 0, lacquers - 1);
    const Cells cells = lacquer(which).within(margin);
    const float key = unit((place.x / part - float(cells.left)) / float(cells.width)),
                up = unit((float(cells.bottom()) - place.y / part) / float(cells.height)),
                side = unit((up - float(neither)) / (1 - float(neither))),
                below = unit(1 - up / float(neither));
    const Rgba light = opaque(0.80f, 0.70f, 0.56f) * std::pow(key, 1.9f) +
                       opaque(0.16f, 0.34f, 0.52f) * std::pow(side, 2.2f) +
                       opaque(0.07f, 0.05f, 0.14f) * std::pow(below, 2.0f) + opaque(0.055f, 0.05f, 0.06f);
    return coats[which].albedo * light + coats[which].sheen * std::pow(key, 6.0f);
}

Rgba swatchAt(float x) {
    return x < pixels(coldTube.left) ? opaque(0.95f, 0.62f, 0.24f) : opaque(0.05f, 0.17f, 0.22f);
}

// All of it, by place in pixels.
Rgba wornAt(Point place) {
    const auto [x, y] = place;
    if (y < pixels(facesHeight)) {
        const int which = (x < pixels(face(1).left) ? 0 : 1) + (y < pixels(face(2).top) ? 0 : 2);
        const Cells& glass = face(which);
        return glassAt(which,
                       (place - Point{pixels(glass.left), pixels(glass.top)}) * (640 / pixels(glass.width)));
    }
    if (x < pixels(iris.right()))
        return irisAt(place - Point{pixels(iris.middleX()), pixels(iris.middleY())}, 1.5f * part);
    return y < pixels(warmLamp.top) ? lacquerAt(place) : swatchAt(x);
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
            if (y < pixels(facesHeight)) canvas.at(x, y) = canvas.at(x, y) + halo.at(x, y) * 0.07f;
    saveRgb(canvas, path, Rows::TopFirst);
}
