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
// two hundred of one and fills what it reaches with the stronger of each hue's two; so that what the
// butterflies show of themselves shines through the other is low, and shades that. In the middle both are
// held back, or it makes one fuchsia of them.
const std::vector<Stop> tints = {
    {-60, opaque(0.260f, 0.045f, 0.000f)},
    {-12, opaque(0.156f, 0.000f, 0.003f)},
    {12, opaque(0.003f, 0.000f, 0.156f)},
    {60, opaque(0.000f, 0.045f, 0.260f)},
};

// The halo shines through the glass in faint stripes. Nothing is cut away, as at one half of alpha: the glass
// alone leaves little more than that.
constexpr float clear = 0.97f, smoked = 1, unitsPerStripe = 12.5f;

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
