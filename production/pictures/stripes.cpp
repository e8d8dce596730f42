// "koe" (tex.png): projected up the eye's vertical axis, it cuts a model to stripes by its alpha and tints
// what stays. Only T counts: one repeat is 500 units of height, the first row is T = 0, and S is constant.
#include "production/kit/picture/canvas.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

constexpr int size = 1024;
constexpr float unitsPerRepeat = 500;

// In units of height, with the same gap after each, and again up the picture. The first lies about the eye's
// own height: seen from near, a gap there would be a bar across the middle of the screen.
constexpr float rhythm[] = {67, 18, 14};
constexpr float gap = 26 / 3.0f;

// The far figure's glow makes nearly two hundred of one: so little is let through that its halo is
// half-tones. The less of a colour there is, the nearer to its source it dies away: red first, blue last.
const Rgba tint = opaque(0.034f, 0.068f, 0.135f);

// The halo shines through the figure as through jelly, the most at a stripe's edges, and within it in fine
// lines, which bend with the surface and so show its form. Kept clear of one half, where all is cut away.
constexpr float thinnest = 0.51f, thickest = 0.71f;  // of alpha
constexpr float edge = 7, linePitch = 6;             // units of height

// Of a height in units, to the nearest stripe's edge, negative inside.
float distanceToStripe(float height) {
    float period = 0;
    for (float breadth : rhythm) period += breadth + gap;
    height += rhythm[0] / 2;
    height -= period * std::floor(height / period);
    float start = 0, nearest = period;
    for (float breadth : rhythm) {
        const float middle = start + breadth / 2;
        for (float place : {height, height - period})
            nearest = std::fmin(nearest, std::fabs(place - middle) - breadth / 2);
        start += breadth + gap;
    }
    return nearest;
}

}  // namespace

void makeStripes(const char* path) {
    Canvas canvas(size, size);
    paint(canvas, [&](float, float y, Rgba) {
        const float height = y * unitsPerRepeat / size;
        // Without a soft edge: what lets more than half of the halo through would be a bright line.
        const float distance = distanceToStripe(height);
        Rgba color = tint * (distance < 0 ? 1.0f : 0.0f);
        const float line = 0.5f - 0.5f * std::cos(distance / linePitch * 6.2831853f);
        color.a *= mix(thinnest, thickest, line * smoothstep(0, edge, -distance));
        return color;
    });
    saveRgba(canvas, path, Rows::TopFirst);
}
