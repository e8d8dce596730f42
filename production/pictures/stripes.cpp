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
// hard edge, and what holds all three colours ends as white. No red is let through: the halo is blue and
// green at most, and the figure may be as bright in them as it likes.
const Rgba deep = opaque(0, 0.07f, 0.95f), surface = opaque(0, 0.45f, 0.90f);

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
        // Without a soft edge: what is half transparent lets the halo through, as a bright line.
        return tint * (distanceToStripe(height) < 0 ? 1.0f : 0.0f);
    });
    saveRgba(canvas, path, Rows::TopFirst);
}
