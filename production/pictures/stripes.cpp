// "koe" (tex.png): projected up the eye's vertical axis, it tints a model by height. Only T counts: one
// repeat is 500 units of height, the first row is T = 0, and S is constant.
#include <vector>

#include "production/kit/picture/canvas.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

constexpr int size = 1024;
constexpr float unitsPerRepeat = 500;

// What is let through at a height, in units from the eye's. Blue passes whole: the glow fills what it finds
// of that, and a field of it is deep and no glare. Of red and green so little that only what the jellyfish's
// paint or its edges throw back brightest is more than the glow drops, and lights the blue as a pink or pale
// core, pinker above and colder below.
const std::vector<Stop> tints = {
    {-120, opaque(0.17f, 0.055f, 1)},
    {120, opaque(0.19f, 0.03f, 1)},
};

}  // namespace

void makeStripes(const char* path) {
    Canvas canvas(size, size);
    paint(canvas, [&](float, float y, Rgba) {
        return gradient(tints, std::remainder(y * unitsPerRepeat / size, unitsPerRepeat));
    });
    saveRgba(canvas, path, Rows::TopFirst);
}
