// "overlay": laid over every frame at half strength, the final black too, so that nothing in it may be seen
// by itself. It is a grain of four steps of 255, two on the screen: dark ramps of sky, smoke and
// hall break up in it instead of showing the bands of eight bits. The picture is the 800 x 600 corner at the
// file's first row and column, as a copy of the screen lies in its target.
#include "production/kit/picture/canvas.h"
#include "production/kit/picture/noise.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

constexpr int fileSize = 1024, screenWidth = 800, screenHeight = 600;
constexpr float strongest = 4.0f / 255;

Rgba grainAt(int x, int y) {
    return grey(strongest * randomAt(x, y, 5));
}

}  // namespace

void makeOverlay(const char* path) {
    Canvas canvas(fileSize, fileSize, opaque(0, 0, 0));
    const int top = fileSize - screenHeight;
    paint(canvas, [&](float x, float y, Rgba ground) {
        return x < screenWidth && y >= top ? grainAt(int(x), int(y) - top) : ground;
    });
    saveRgb(canvas, path, Rows::BottomFirst);
}
