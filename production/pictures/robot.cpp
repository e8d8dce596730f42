// What the robot wears: the two glow bands and the face on its screen.
#include "production/kit/picture.h"
#include "production/kit/picture_lettering.h"
#include "production/kit/picture_noise.h"
#include "production/pictures/pictures.h"

namespace {

// A band maps height below the ground to rows: everything above it gets row 0, which is so the robot's tint
// and holds far enough down to stay pure when the picture is minified. Below, the tint swells to a glow and
// dies.
void makeBand(const char* path, Rgba tint, Rgba glow, Rgba hot) {
    const int size = 256;
    Canvas canvas(size, size);
    paint(canvas, [&](float, float y, Rgba) {
        const float t = y / size;
        const float rise = smoothstep(0.07f, 0.16f, t), fall = 1 - smoothstep(0.16f, 0.75f, t);
        const float lines = 0.75f + 0.25f * std::cos(t * 120);
        const float core = bell(t - 0.17f, 0.035f);
        return tint * (1 - 0.7f * rise) + glow * (rise * fall * lines) + hot * (0.5f * core);
    });
    saveRgb(canvas, path, Rows::TopFirst);
}

}  // namespace

void makeRedBand(const char* path) {
    makeBand(path, opaque(0.045f, 0.004f, 0), opaque(0.75f, 0.08f, 0.02f), opaque(0.5f, 0.35f, 0.15f));
}

void makeGreenBand(const char* path) {
    makeBand(path, opaque(0, 0.030f, 0.012f), opaque(0.04f, 0.70f, 0.28f), opaque(0.30f, 0.5f, 0.35f));
}

void makeRobotFace(const char* path) {
    const int size = 512;
    LetteringField text(size, size, 10);
    setText(text, "Valo", {34, 0.2f, 0.2f, 0.4f}, 40, 78);
    setText(text, "108.5", {22, 0.2f, 0.2f, 0.35f}, size - 40, 74, Align::Right);
    Canvas canvas(size, size, opaque(0, 0, 0));
    paint(canvas, [&](float x, float y, Rgba ground) {
        const Point place = {x, y};
        const float eyes =
            std::fmin(box(place, {160, 220}, {62, 38}, 36), box(place, {352, 220}, {62, 38}, 36));
        const float wave =
            y - 372 - 34 * std::sin(x * 0.055f) * bell((x - 256) / 256, 0.45f) * std::cos(x * 0.21f);
        const float mouth = std::fabs(x - 256) < 190 ? outline(wave, 5) : 0;
        const float frame = outline(box(place, {256, 256}, {238, 238}, 28), 4);
        const float lines = static_cast<int>(y) % 6 < 2 ? 0.72f : 1.0f;
        const float ink =
            std::fmax(std::fmax(coverage(eyes), mouth), std::fmax(frame, coverage(text.at(x, y))));
        return ground + opaque(0.62f, 0.80f, 0.74f) * (0.7f * ink * lines) + opaque(0.02f, 0.03f, 0.03f);
    });
    saveRgb(canvas, path, Rows::TopFirst);
}
