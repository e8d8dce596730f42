// Two flashes that are added to the room: a word ("mix", vornel.png), shown once over the full screen with
// its top row first, and the light on the beat ("white").
#include "production/kit/picture.h"
#include "production/kit/picture_lettering.h"
#include "production/pictures/pictures.h"

void makeFlashWord(const char* path) {
    const int size = 1024;
    const float pixelAspect = 4.0f / 3;  // the square picture fills a 4:3 screen
    LetteringField text(size, size, 60);
    setText(text, "Valo", {372, 0.17f, 0.66f, 0.16f, pixelAspect}, size * 0.5f, 698, Align::Centre);

    Canvas letters(size, size, opaque(0, 0, 0));
    paint(letters, [&](float x, float y, Rgba ground) { return ground + grey(coverage(text.at(x, y))); });
    const Canvas streams = streamed(letters, size * 0.5f, 560, 0.55f);
    const Canvas halo = blurred(letters, 26, Edge::Empty);

    Canvas canvas(size, size, opaque(0, 0, 0));
    paint(canvas, [&](float x, float y, Rgba ground) {
        const int px = static_cast<int>(x), py = static_cast<int>(y);
        const float distance = text.at(px, py);
        const float rim = outline(distance + 2.5f, 5), fill = coverage(distance);
        const float slope = unit((y - 326) / 372);
        const Rgba face = mix(opaque(0.62f, 0.70f, 0.68f), opaque(0.20f, 0.42f, 0.42f), slope);
        const float edge =
            smoothstep(0, 0.16f, std::fmin(std::fmin(x, size - x), std::fmin(y, size - y)) / size);
        const Rgba air = opaque(0.30f, 0.62f, 0.60f) * (0.55f * streams.at(px, py).r) +
                         opaque(0.85f, 0.55f, 0.22f) * (0.20f * halo.at(px, py).r);
        return ground + air * (edge * (1 - 0.8f * fill)) + face * (0.55f * fill) +
               opaque(0.9f, 0.95f, 0.9f) * (0.6f * rim);
    });
    saveRgb(canvas, path, Rows::TopFirst);
}

// Not an even white: brightest along a horizontal streak, so that the room stays to be seen at the edges.
void makeWhite(const char* path) {
    const int size = 64;
    Canvas canvas(size, size);
    paint(canvas, [&](float x, float y, Rgba) {
        const float u = 2 * x / size - 1, v = 2 * y / size - 1;
        const float streak = bell(v, 0.16f) * bell(u, 0.75f), wash = bell(std::hypot(u, v), 0.62f);
        return opaque(0.95f, 1, 0.97f) * (0.16f + 0.34f * wash) + opaque(1, 0.96f, 0.86f) * (0.5f * streak);
    });
    saveRgb(canvas, path, Rows::BottomFirst);
}
