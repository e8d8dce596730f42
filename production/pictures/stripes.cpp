// "koe" (tex.png): projected up the eye's vertical axis, it cuts a model to stripes by its alpha and tints
// what stays. Only T counts: one repeat is 500 units of height, the first row is T = 0, and S is constant.
#include "production/kit/picture/canvas.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

constexpr int size = 1024;
constexpr float unitsPerRepeat = 500;

// In units up and down from the eye's own height, and again about each repeat. The middle is left open: there
// the near view looks down the tunnel. The far figure mostly is 60 to 100 units off; through the first broad
// gap in its front the core is seen before the one in its back, as the pupil of an eye.
struct Stripe {
    float from, to;
};
constexpr Stripe stripes[] = {{12, 27},   {36, 52},   {71, 100},  {125, 141}, {149, 161},
                              {168, 178}, {185, 194}, {201, 209}, {216, 223}, {230, 236}};

// The far figure's glow makes nearly two hundred of one: so little is let through that its halo is
// half-tones. The less of a colour there is, the nearer to its source it dies away: blue first, red last.
const Rgba tint = opaque(0.11f, 0.050f, 0.0145f);

// The halo shines through the figure a little at a stripe's edges, as light creeps round a rim.
constexpr float thin = 0.6f, thick = 0.97f;  // of alpha, clear of one half, where all is cut away
constexpr float rim = 4;                     // units of height

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
