// "loading": shown as a square in the middle of the screen while the tables load, and added to itself a
// little larger in a changing tint. Its size is the one that the full-screen quad assumes.
#include "production/kit/picture/canvas.h"
#include "production/kit/picture/lettering.h"
#include "production/pictures/pictures.h"

using namespace picture;

void makeLoading(const char* path) {
    const int size = 512;
    Canvas canvas(size, size, opaque(0, 0, 0));
    LetteringField text(size, size, 24);
    setText(text, {.height = 54, .weight = 0.10f, .contrast = 0.45f, .gap = 0.26f},
            {"Valojuova", size * 0.5f, 292, Align::Centre});
    setText(text, {.height = 13, .weight = 0.17f, .contrast = 0.2f, .gap = 0.75f},
            {"Loading", size * 0.5f, 352, Align::Centre});

    paint(canvas, [&](float x, float y, Rgba ground) {
        const float along = (x - size * 0.36f) / size, away = y - 214;
        const float tail = bell(along, along < 0 ? 0.10f : 0.24f);
        const float side = smoothstep(0, 0.15f, std::fmin(x, size - x) / size);
        const float streak = side * tail * (bell(away, 0.9f) + 0.25f * bell(away, 6));
        const float flare = std::exp(-std::hypot(x - size * 0.36f, away) / 9.0f);
        const float letter = coverage(text.at(x, y));
        const float halo = 0.10f * std::exp(-std::fmax(text.at(x, y), 0.0f) / 7);
        const Rgba light = opaque(1, 0.86f, 0.62f) * streak + opaque(1, 0.93f, 0.82f) * (0.8f * flare);
        return ground + light + opaque(1, 0.72f, 0.40f) * halo + opaque(0.92f, 0.90f, 0.86f) * letter;
    });
    saveRgb(canvas, path, Rows::BottomFirst);
}
