// "koe" (tex.png): projected up the eye's vertical axis, it tints a model by height and could cut it to
// stripes by its alpha. Only T counts: one repeat is 500 units of height, the first row is T = 0, and S is
// constant.
#include <vector>

#include "production/kit/picture/canvas.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

constexpr int size = 1024;
constexpr float unitsPerRepeat = 500;

// What is let through at a height, in units from the eye's: embers below, azure above. The glow makes up to
// two hundred of one, in steps of which software rounds each to the nearest and graphics cards drop what is
// over: there what is under 20 of 255 goes out. So of the two that each hue is made of the stronger is 56,
// and the other as low as 8, or what software doubles on a beat turns white. In the middle red and blue are
// held back, or it makes one fuchsia of them.
const std::vector<Stop> tints = {
    {-190, opaque(0.220f, 0.018f, 0.000f)}, {-130, opaque(0.220f, 0.030f, 0.000f)},
    {-70, opaque(0.200f, 0.034f, 0.000f)},  {-25, opaque(0.165f, 0.004f, 0.034f)},
    {25, opaque(0.050f, 0.002f, 0.165f)},   {70, opaque(0.000f, 0.030f, 0.200f)},
    {130, opaque(0.000f, 0.034f, 0.220f)},  {190, opaque(0.008f, 0.026f, 0.220f)},
};

// The corona shines through the figure's glass in faint stripes. Nothing is cut away, as at one half of
// alpha: the glass alone leaves little more than that.
constexpr float clear = 0.935f, smoked = 1, unitsPerStripe = 12.5f;

}  // namespace

void makeStripes(const char* path) {
    Canvas canvas(size, size);
    paint(canvas, [&](float, float y, Rgba) {
        const float height = y * unitsPerRepeat / size;
        Rgba glass = gradient(tints, std::remainder(height, unitsPerRepeat));
        const float aside = std::fabs(std::remainder(height, unitsPerStripe)) * 2 / unitsPerStripe;
        glass.a = mix(clear, smoked, smoothstep(0.15f, 0.85f, aside));
        return glass;
    });
    saveRgba(canvas, path, Rows::TopFirst);
}
