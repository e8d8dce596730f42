// "koe" (tex.png): projected up the eye's vertical axis, it cuts a model to stripes by its alpha and tints
// what stays. Only T counts: one repeat is 500 units of height, the first row is T = 0, and S is constant.
#include "production/kit/picture/canvas.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

constexpr int size = 1024;
constexpr float unitsPerRepeat = 500;

// In units up and down from the eye's own height, and again about each repeat. The middle is left open: there
// the near view looks down the tunnel. Where the far figure mostly is, its middle 85 off, one cut runs
// through its forehead and one through its smile, and none through its eyes.
struct Stripe {
    float from, to;
};
constexpr Stripe stripes[] = {{6, 50}, {56, 112}, {119, 147}, {154, 182}, {189, 217}, {224, 246}};

// The far figure's glow makes nearly two hundred of one: of green and blue so little is let through that its
// halo is half-tones, and the less of a colour there is, the nearer to its source it dies away. Red fills its
// halo in any case, so it may show the figure's own form.
const Rgba tint = opaque(0.46f, 0.068f, 0.0155f);

// The halo shines through the figure at a stripe's edges, so that they step less.
constexpr float thin = 0.52f, thick = 0.97f;  // of alpha, clear of one half, where all is cut away
constexpr float rim = 1.5f;                   // units of height

// Of a height in units, to the nearest stripe's edge, negative inside.
float distanceToStripe(float height) {
    const float away = std::fabs(std::remainder(height, unitsPerRepeat));
    float nearest = unitsPerRepeat;
    for (const auto& [from, to] : stripes)
        nearest = std::fmin(nearest, std::fabs(away - (from + to) / 2) - (to - from) / 2);
    return nearest;
}

}  // namespace

void makeStripes(const char* path) {
    Canvas canvas(size, size);
    paint(canvas, [&](float, float y, Rgba) {
        const float inside = -distanceToStripe(y * unitsPerRepeat / size);
        return inside > 0 ? tint * mix(thin, thick, smoothstep(0, rim, inside)) : Rgba{};
    });
    saveRgba(canvas, path, Rows::TopFirst);
}
