// "start": the title, revealed from its top row down by the opening's sweep and added to black; bright rows
// send rays towards the viewer. The picture lies on a square of which the screen shows the middle, stretched
// to 4:3.
#include "production/kit/picture.h"
#include "production/kit/picture_lettering.h"
#include "production/kit/picture_noise.h"
#include "production/pictures/pictures.h"

namespace {

constexpr int size = 1024;
constexpr float pixelAspect = 4.0f / 3;
constexpr float capHeight = 132, baseline = 560;
constexpr float streakLine = baseline - 0.42f * capHeight;

}  // namespace

void makeTitle(const char* path) {
    LetteringField text(size, size, 60);
    setText(text, "Valojuova", {capHeight, 0.15f, 0.68f, 0.17f, pixelAspect}, size * 0.5f, baseline,
            Align::Centre);
    setText(text, "a streak of light", {21, 0.15f, 0.3f, 0.62f, pixelAspect}, size * 0.5f, baseline + 58,
            Align::Centre);

    Canvas canvas(size, size, opaque(0, 0, 0));
    paint(canvas, [&](float x, float y, Rgba ground) {
        const float distance = text.at(x, y), fill = coverage(distance);
        const float along = (x - size * 0.40f) / size, away = y - streakLine;
        const float tail = along < 0 ? bell(along, 0.16f) : bell(along, 0.26f);
        const float line = tail * (bell(away, 1.1f) + 0.22f * bell(away, 9));
        const float flare = std::exp(-std::hypot((x - size * 0.40f) * pixelAspect, away) / 16);
        const Rgba face =
            mix(opaque(1, 0.82f, 0.50f), opaque(0.78f, 0.42f, 0.12f), std::fabs(away) / (0.62f * capHeight));
        const float halo = 0.22f * std::exp(-std::fmax(distance, 0.0f) / 11) * smoothstep(60, 40, distance);
        return ground + face * (0.9f * fill) + opaque(1, 0.60f, 0.22f) * (halo * (1 - fill)) +
               opaque(1, 0.92f, 0.78f) * (line + flare);
    });
    saveRgb(canvas, path, Rows::TopFirst);
}
