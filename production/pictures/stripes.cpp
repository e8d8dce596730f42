// "koe" (tex.png): projected up the eye's vertical axis, it tints a model by height and cuts what of
// it is glass to stripes by its alpha. Only T counts: one repeat is 500 units of height, the first row is T =
// 0, and S is constant.
#include <vector>

#include "production/kit/picture/canvas.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

constexpr int size = 1024;
constexpr float unitsPerRepeat = 500;

// What is let through at a height, in units from the eye's: embers below, azure above. The glow makes up to
// two hundred of one and fills what it reaches with the stronger of each hue's two, which is over 20 of 255,
// since graphics cards drop what is less. The other is low, so that what the butterflies show of themselves
// shines through and shades it. In the middle both are held back, or the glow makes one fuchsia of them.
const std::vector<Stop> tints = {
    {-60, opaque(0.220f, 0.038f, 0.000f)},
    {-12, opaque(0.140f, 0.000f, 0.003f)},
    {12, opaque(0.003f, 0.000f, 0.180f)},
    {60, opaque(0.000f, 0.046f, 0.300f)},
};

// Slots of the glass, which is cut away at one half of alpha and has little more: the halo shines through
// them whole. They are few and end at once: where alpha crosses the half slowly, each driver cuts elsewhere.
constexpr float slot = 0.8f, unitsPerSlot = 62.5f, slotHeight = 5.6f;

}  // namespace

void makeStripes(const char* path) {
    Canvas canvas(size, size);
    paint(canvas, [&](float, float y, Rgba) {
        const float height = y * unitsPerRepeat / size;
        Rgba glass = gradient(tints, std::remainder(height, unitsPerRepeat));
        glass.a = std::fabs(std::remainder(height, unitsPerSlot)) < slotHeight / 2 ? slot : 1;
        return glass;
    });
    saveRgba(canvas, path, Rows::TopFirst);
}
