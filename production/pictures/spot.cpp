// "spot": where a beam touches a surface, added to the picture. Its border is black, since it repeats.
#include "production/kit/picture/canvas.h"
#include "production/pictures/pictures.h"

using namespace picture;

void makeSpot(const char* path) {
    const int size = 256;
    Canvas canvas(size, size);
    paint(canvas, [&](float x, float y, Rgba) {
        const float u = 2 * x / size - 1, v = 2 * y / size - 1;
        const float radius = std::hypot(u, v), angle = arcTan(v, u);
        const float inside = 1 - smoothstep(0.55f, 0.98f, radius);
        const float core = bell(radius, 0.15f), bloom = 0.85f * std::exp(-radius * 4.2f);
        const float ring = 0.35f * bell(radius - 0.52f, 0.035f) * (0.6f + 0.4f * std::cos(angle * 6));
        const float star = 0.5f * std::exp(-std::fabs(u) * 26 - std::fabs(v) * 3.4f) +
                           0.5f * std::exp(-std::fabs(v) * 26 - std::fabs(u) * 3.4f);
        const Rgba light = opaque(1, 0.92f, 1) * core + opaque(1, 0.42f, 0.85f) * (bloom + star) +
                           opaque(0.75f, 0.30f, 1) * ring;
        return light * inside;
    });
    saveRgb(canvas, path, Rows::TopFirst);
}
