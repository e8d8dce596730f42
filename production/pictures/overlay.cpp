// "overlay": laid over every frame at half strength. The picture is the 800 x 600 corner at the file's first
// row and column, as a copy of the screen lies in its target. What is bright here washes the frame out, so it
// is almost black: scan lines, a little grain, edges that lift, and a hairline frame.
#include "production/kit/picture/canvas.h"
#include "production/kit/picture/noise.h"
#include "production/kit/picture/shapes.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

constexpr int fileSize = 1024, screenWidth = 800, screenHeight = 600;
constexpr float inset = 14;   // pixels from the screen's edge to the frame
constexpr float corner = 26;  // length of a corner's bright angle

Rgba overlayAt(float x, float y) {
    const Point place = {x, y}, middle = {screenWidth * 0.5f, screenHeight * 0.5f};
    const Point half = {middle.x - inset, middle.y - inset};
    const float dx = (x - middle.x) / middle.x, dy = (y - middle.y) / middle.y;
    const float edge = smoothstep(0.55f, 1.5f, std::sqrt(dx * dx + dy * dy));
    const float scan = static_cast<int>(y) % 3 == 0 ? 0.030f : 0.0f;
    const float grain = 0.012f * randomAt(static_cast<int>(x), static_cast<int>(y), 5);
    const float frame = outline(box(place, middle, half, 3), 1);
    const float toCorner = std::fmax(half.x - std::fabs(x - middle.x), half.y - std::fabs(y - middle.y));
    const float angle = 1 - smoothstep(corner - 1, corner + 1, toCorner);
    return grey(scan + grain + 0.05f * edge + frame * mix(0.05f, 0.20f, angle));
}

}  // namespace

void makeOverlay(const char* path) {
    Canvas canvas(fileSize, fileSize, opaque(0, 0, 0));
    const int top = fileSize - screenHeight;
    paint(canvas, [&](float x, float y, Rgba ground) {
        return x < screenWidth && y >= top ? overlayAt(x, y - top) : ground;
    });
    saveRgb(canvas, path, Rows::BottomFirst);
}
