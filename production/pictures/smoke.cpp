// "noise1": what the smoke shaders are made of. Red carries the smoke itself; green and blue are independent
// fields of the same kind, finer and veined. It repeats without a seam, in the size that the full-screen quad
// assumes, and is stored bottom row first.
#include "production/kit/picture/canvas.h"
#include "production/kit/picture/noise.h"
#include "production/pictures/pictures.h"

using namespace picture;

void makeSmoke(const char* path) {
    const int size = 256, cells = 4;
    Canvas canvas(size, size);
    paint(canvas, [&](float x, float y, Rgba) {
        const float u = x * cells / size, v = y * cells / size;
        // Noise that is bent by noise curls like smoke.
        const float bendX = fractalNoise(u, v, cells, 3, 11), bendY = fractalNoise(u, v, cells, 3, 23);
        const float smoke = fractalNoise(u + 0.9f * bendX, v + 0.9f * bendY, cells, 6, 37);
        const float fine = fractalNoise(2 * u + bendY, 2 * v + bendX, 2 * cells, 5, 53);
        const float veins = ridgedNoise(u + 0.4f * bendX, v + 0.4f * bendY, cells, 5, 71);
        return opaque(smoothstep(-0.48f, 0.52f, smoke), smoothstep(-0.5f, 0.5f, fine),
                      smoothstep(0.1f, 0.95f, veins));
    });
    saveRgb(canvas, path, Rows::BottomFirst);
}
