// "koe" (tex.png): projected up the eye's vertical axis, it cuts a model to stripes by its alpha and tints
// what stays. Only T counts: one repeat is 500 units of height, the first row is T = 0, and S is constant.
#include <vector>

#include "production/kit/picture/canvas.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

// One group of the rhythm, that is repeated down the picture: stripe breadths and the gaps after them, in
// rows of 1024.
struct Band {
    float breadth, gap;
};
constexpr Band rhythm[] = {{30, 14}, {12, 12}, {12, 12}, {12, 14}, {64, 12}, {8, 10}, {8, 14}, {20, 14}};
constexpr int size = 1024;
constexpr int groups = 4;

}  // namespace

void makeStripes(const char* path) {
    float total = 0;
    for (const Band& band : rhythm) total += band.breadth + band.gap;
    const float scale = static_cast<float>(size) / groups / total;

    // Signed distance in rows to the nearest stripe's edge (negative inside), and the stripe's half breadth.
    std::vector<float> distance(size), half(size);
    for (int row = 0; row < size; row++) {
        const float y = std::fmod(row + 0.5f, static_cast<float>(size) / groups);
        float start = 0, nearest = 1e6f;
        for (const Band& band : rhythm) {
            const float gap = band.gap * scale, breadth = band.breadth * scale;
            const float middle = start + gap / 2 + breadth / 2;
            const float away = std::fabs(y - middle) - breadth / 2;
            if (away < nearest) nearest = away, half[row] = breadth / 2;
            start += gap + breadth;
        }
        distance[row] = nearest;
    }

    Canvas canvas(size, size);
    paint(canvas, [&](float, float y, Rgba) {
        const int row = static_cast<int>(y);
        const float alpha = unit(0.5f - distance[row]);
        // Towards its edges a stripe turns down, like a lath that is lit from the front. The far figure's
        // glow multiplies what it finds a hundredfold, so green is what makes it a yellow disc or a red one
        // with a hot heart; the near figure, seen within 45 units of the middle, can do with more.
        const float round = smoothstep(0, 0.9f, std::sqrt(unit(-distance[row] / half[row])));
        const float middle = std::fabs(row + 0.5f - (row < size / 2 ? 0 : size)) / size;
        const float green = mix(0.30f, 0.12f, smoothstep(0.05f, 0.13f, middle));
        const Rgba colour = mix(opaque(1, green * 0.25f, 0), opaque(1, green, green * 0.1f), round);
        return Rgba{colour.r, colour.g, colour.b, 1} * alpha;
    });
    saveRgba(canvas, path, Rows::TopFirst);
}
