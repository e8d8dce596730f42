// The two plated textures, which repeat without a seam: "shiptex", the skin of everything that moves, and
// "cubetex", the walls of tunnel and room.
#include "production/kit/picture.h"
#include "production/kit/picture_lettering.h"
#include "production/kit/picture_noise.h"
#include "production/kit/picture_shapes.h"
#include "production/pictures/pictures.h"

namespace {

constexpr int size = 1024;

struct Panel {
    int left, top, right, bottom;
};

void split(const Panel& panel, int least, uint32_t seed, std::vector<Panel>& panels) {
    const int width = panel.right - panel.left, height = panel.bottom - panel.top;
    const bool across = width > height || (width == height && randomAt(panel.left, panel.top, seed) < 0.5f);
    const int length = across ? width : height;
    const bool rest = length < 256 && randomAt(panel.left, panel.top, seed + 1) < 0.22f;
    if (length < 2 * least || rest) {
        panels.push_back(panel);
        return;
    }
    const int cells = length / 32;
    const int at =
        std::clamp(
            static_cast<int>(mix(0.3f, 0.7f, randomAt(panel.left, panel.top, seed + 2)) * cells + 0.5f), 1,
            cells - 1) *
        32;
    Panel first = panel, second = panel;
    if (across)
        first.right = second.left = panel.left + at;
    else
        first.bottom = second.top = panel.top + at;
    split(first, least, seed + 3, panels);
    split(second, least, seed + 4, panels);
}

void drawPanel(Canvas& canvas, const Panel& panel, int index, uint32_t seed, Rgba dark, Rgba bright) {
    const Point middle = {(panel.left + panel.right) * 0.5f, (panel.top + panel.bottom) * 0.5f};
    const Point half = {(panel.right - panel.left) * 0.5f - 1.5f, (panel.bottom - panel.top) * 0.5f - 1.5f};
    const float tone = randomAt(index, 0, seed);
    for (int y = panel.top; y < panel.bottom; y++) {
        for (int x = panel.left; x < panel.right; x++) {
            const Point place = {x + 0.5f, y + 0.5f};
            const float distance = box(place, middle, half, 4);
            const float inside = coverage(distance);
            const float edge = bell(distance + 2.5f, 1.4f);
            const float facing = (place.y - middle.y) / half.y + 0.4f * (place.x - middle.x) / half.x;
            const float grain = fractalNoise(x * 16.0f / size, y * 16.0f / size, 16, 5, seed + 9);
            const Rgba face = mix(dark, bright, unit(0.35f + 0.5f * tone + 0.25f * grain));
            Rgba colour = mix(face * 0.18f, face, inside) * (1 - 0.35f * edge * (facing > 0 ? 1 : -0.8f));
            colour.a = 1;
            canvas.at(x, y) = colour;
        }
    }
}

void makePlates(const char* path, int least, uint32_t seed, Rgba dark, Rgba bright) {
    std::vector<Panel> panels;
    split({0, 0, size, size}, least, seed, panels);
    Canvas canvas(size, size);
    for (size_t i = 0; i < panels.size(); i++)
        drawPanel(canvas, panels[i], static_cast<int>(i), seed, dark, bright);
    saveRgb(canvas, path, Rows::TopFirst);
}

}  // namespace

void makeHull(const char* path) {
    makePlates(path, 64, 900, opaque(0.30f, 0.33f, 0.37f), opaque(0.66f, 0.70f, 0.74f));
}
void makeWalls(const char* path) {
    makePlates(path, 128, 1900, opaque(0.24f, 0.28f, 0.33f), opaque(0.58f, 0.64f, 0.70f));
}
