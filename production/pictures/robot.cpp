// What the robot wears: the two glow bands and the face on its screen.
#include "production/kit/picture/canvas.h"
#include "production/kit/picture/shapes.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

// A band lies along the robot's height: the last row is the ground and what is below it (and the ring), the
// first row is 100 units up, or 25 for the awake robot, and everything above. So row 0 is the tint of the
// upper body, and holds a few rows to stay pure when the picture is minified; below, rungs of light grow to a
// glow.
void makeBand(const char* path, Rgba tint, Rgba glow, Rgba hot) {
    const int size = 256, rungs = 9;
    Canvas canvas(size, size);
    paint(canvas, [&](float, float y, Rgba) {
        const float t = y / size;
        const float place = t * (rungs + 1), rung = std::floor(place + 0.5f);
        const bool between = rung >= 1 && rung <= rungs;
        const float line =
            between ? bell((place - rung) / (rungs + 1), 0.0075f) * mix(0.25f, 1, rung / rungs) : 0;
        const float belt = bell(t - 0.62f, 0.045f), ground = smoothstep(0.90f, 0.97f, t);
        const float wash = 0.025f * t * t;
        return tint + glow * (wash + 0.42f * line + 0.05f * belt + 0.03f * ground) +
               hot * (0.34f * line * line * line + 0.02f * belt * belt + 0.01f * ground);
    });
    saveRgb(canvas, path, Rows::TopFirst);
}

}  // namespace

void makeRedBand(const char* path) {
    makeBand(path, opaque(0.032f, 0.003f, 0), opaque(0.90f, 0.05f, 0.010f), opaque(1, 0.55f, 0.20f));
}

void makeGreenBand(const char* path) {
    makeBand(path, opaque(0, 0.026f, 0.019f), opaque(0.03f, 0.85f, 0.32f), opaque(0.50f, 1, 0.65f));
}

// The face: two lenses and the music as a mouth, added to the visor. Neutral, since its robot turns from red
// to green.
void makeRobotFace(const char* path) {
    const int size = 512, bars = 15;
    const float levels[bars] = {0.18f, 0.34f, 0.26f, 0.52f, 0.44f, 0.78f, 0.60f, 1.0f,
                                0.70f, 0.84f, 0.48f, 0.58f, 0.30f, 0.38f, 0.20f};
    Canvas canvas(size, size, opaque(0, 0, 0));
    paint(canvas, [&](float x, float y, Rgba) {
        const Point place = {x, y};
        const Point eye = {x < size / 2 ? 154.0f : 358.0f, 196.0f};
        const float radius = length(place - eye), angle = std::atan2(y - eye.y, x - eye.x);
        const float iris = coverage(radius - 40) * (0.45f + 0.55f * bell(radius, 26));
        const float glint = 1 - coverage(circle(place, eye + Point{-14, -14}, 9));
        const float ring = outline(radius - 66, 11);
        const float ticks = std::fmod(angle * 3.8197186f + 24, 1.0f) < 0.22f ? outline(radius - 86, 12) : 0;

        const int bar = std::clamp(static_cast<int>((x - 91) / 22), 0, bars - 1);
        const float mouth = coverage(box(place, {102.0f + bar * 22, 372}, {7, 6 + 46 * levels[bar]}, 7));
        const float frame = outline(box(place, {256, 256}, {236, 236}, 34), 5);
        const bool corner = std::fabs(x - 256) > 168 && std::fabs(y - 256) > 168;

        const float lines = 0.80f + 0.20f * std::cos(y * 0.78539816f);
        const float ink = 0.85f * iris * glint + 0.60f * ring + 0.28f * ticks + 0.55f * mouth +
                          (corner ? 0.45f : 0.10f) * frame;
        // The tube itself, lit from within.
        const float sheen = 0.07f * bell(length(place - Point{256, 250}), 170);
        return opaque(0.46f, 0.66f, 0.62f) * (ink * lines) + opaque(0.30f, 0.62f, 0.78f) * sheen;
    });
    const Canvas halo = blurred(canvas, 9, Edge::Clamp);
    addLayer(canvas, halo, 0.25f);
    saveRgb(canvas, path, Rows::TopFirst);
}
