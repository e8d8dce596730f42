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
// two hundred of one and rounds on its way, so that it fills all within 40 pixels where a colour comes to
// more than 2 of 255 on the average; on a beat that is all of the figure, in red or blue. Green stays about
// there and comes and goes with the height, and so shades what is filled. In the middle red and blue are held
// back, or a beat makes one fuchsia of them.
const std::vector<Stop> tints = {
    {-190, opaque(0.180f, 0.055f, 0.000f)}, {-160, opaque(0.170f, 0.012f, 0.004f)},
    {-130, opaque(0.160f, 0.058f, 0.000f)}, {-100, opaque(0.140f, 0.012f, 0.010f)},
    {-70, opaque(0.120f, 0.080f, 0.000f)},  {-40, opaque(0.100f, 0.008f, 0.014f)},
    {-18, opaque(0.060f, 0.010f, 0.026f)},  {18, opaque(0.026f, 0.012f, 0.060f)},
    {40, opaque(0.022f, 0.006f, 0.110f)},   {70, opaque(0.004f, 0.036f, 0.140f)},
    {100, opaque(0.024f, 0.008f, 0.160f)},  {130, opaque(0.000f, 0.040f, 0.180f)},
    {160, opaque(0.028f, 0.008f, 0.190f)},  {190, opaque(0.000f, 0.044f, 0.200f)},
};

// The halo shines through the figure: its strings are tinted glass rather than soot. Nothing of it is cut
// away, as at one half of alpha: it is drawn in lines so fine that a cut reads as a fault in them.
constexpr float cover = 0.72f;

}  // namespace

void makeStripes(const char* path) {
    Canvas canvas(size, size);
    paint(canvas, [&](float, float y, Rgba) {
        return gradient(tints, std::remainder(y * unitsPerRepeat / size, unitsPerRepeat)) * cover;
    });
    saveRgba(canvas, path, Rows::TopFirst);
}
