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
constexpr float rhythm[] = {66, 18, 12};
constexpr float gap = 29 / 3.0f;

// The far figure's glow makes nearly two hundred of one, so whatever is bright ends as a flat patch with a
// hard edge, and what holds all three colours ends as white. No red is let through, and so little green that
// it dies away well inside of the blue: the halo runs from cyan by the figure to blue.
const Rgba deep = opaque(0, 0.022f, 0.42f), surface = opaque(0, 0.055f, 0.58f);

// The halo shines through the figure as through jelly, the most at a stripe's edges. Kept clear of one half,
// where all is cut away.
constexpr float thinnest = 0.58f, thickest = 0.76f, edge = 7;  // of alpha; units of height

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
        const float aboveEye = height < unitsPerRepeat / 2 ? height : height - unitsPerRepeat;
        const Rgba tint = mix(deep, surface, smoothstep(-70, 70, aboveEye));
        // Without a soft edge: what lets more than half of the halo through would be a bright line.
        const float distance = distanceToStripe(height);
        Rgba color = tint * (distance < 0 ? 1.0f : 0.0f);
        color.a *= mix(thinnest, thickest, smoothstep(0, edge, -distance));
        return color;
    });
    saveRgba(canvas, path, Rows::TopFirst);
}
