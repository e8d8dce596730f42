// Two flashes that are added to the room: a word ("mix", vornel.png), shown once over the full screen with
// its top row first, and the light on the beat ("white").
#include "production/kit/picture/canvas.h"
#include "production/kit/picture/lettering.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

// The word letter by letter, so that no needle of one reaches into the next.
void setWord(LetteringField& text, float baseline, float capHeight) {
    const Lettering style = {.height = capHeight, .weight = 0.22f, .contrast = 0.12f};
    constexpr struct {
        const char* letter;
        float gap;  // to the next letter, in columns
    } letters[] = {{"V", 14}, {"A", 24}, {"L", 10}, {"O", 0}};
    float breadth = 0;
    for (const auto& [letter, gap] : letters) breadth += textWidth(letter, style) + gap;
    float left = (float(text.width) - breadth) / 2;
    for (const auto& [letter, gap] : letters) {
        setText(text, style, {letter, left, baseline});
        left += textWidth(letter, style) + gap;
    }
}

// Where the word lies: the camera stands upright and looks level, so that a place of the floor, in heights of
// the eye, is seen as far below the middle as it is near.
constexpr float nearest = 1.06f, farthest = 2.40f, halfBreadth = 1.04f;

}  // namespace

// A word of light that is thrown on the floor before the ball, where it covers no guest of the hall. The glow
// adds to each place twice what lies round it: broad fields would clip, so its sides lie deep in colour and
// only edges are bright. Its alpha is what the streams from the ball leave dark: the word and a gap round it.
void makeFlashWord(const char* path) {
    const int columns = 1024, rows = 340;
    const float capHeight = 270, baseline = 305, gap = 22;
    LetteringField text(columns, rows, 40);
    setWord(text, baseline, capHeight);
    Canvas word(columns, rows);
    paint(word, [&](float x, float y, Rgba) {
        const float distance = text.at(x, y);
        Rgba seen;
        const bool within = x > 1 && y > 1 && x < columns - 1 && y < rows - 1;
        if (within && distance < 1) {
            // Cut like a wedge: sides to the ball are gold, the others red, paler by the ball; a line runs
            // all round.
            const float lit = unit(0.5f + 0.8f * bevelFacing(text, int(x), int(y), 1));
            const Rgba side = mix(opaque(0.095f, 0.004f, 0.050f), opaque(0.46f, 0.22f, 0.040f), lit);
            const float inside = smoothstep(-6.0f, -10.0f, distance);
            seen = side * (inside * mix(1.25f, 0.85f, y / rows)) +
                   opaque(0.90f, 0.74f, 0.46f) * outline(distance + 2.5f, 4);
            seen = seen * coverage(distance);
        }
        seen.a = smoothstep(gap, 0.6f * gap, distance);
        return seen;
    });

    const int size = 1024;
    Canvas floor(size, size);
    paint(floor, [&](float x, float y, Rgba) {
        Rgba sum;
        for (const float down : {-0.375f, -0.125f, 0.125f, 0.375f}) {
            const float below = 2 * (y + down) / size - 1;
            if (below < 0.39f) continue;
            const float aside = (2 * x / size - 1) / below, away = 1 / below;
            const float row = baseline - capHeight * (away - nearest) / (farthest - nearest);
            if (std::fabs(aside) > halfBreadth || row < 1 || row > rows - 1) continue;
            sum = sum + sampled(word, columns * (0.5f + 0.5f * aside / halfBreadth), row) * 0.25f;
        }
        return sum;
    });
    const Canvas streams = streamed(floor, size * 0.5f, size * 0.5f, 0.6f);  // from the ball

    Canvas canvas(size, size, opaque(0, 0, 0));
    paint(canvas, [&](float x, float y, Rgba ground) {
        const int px = int(x), py = int(y);
        // The ball bursts into a star where they come from.
        const Point ball = {(2 * x / size - 1) * 4 / 3, 2 * y / size - 1};
        const float far = length(ball), turn = arcTan(ball.y, ball.x);
        const float rays = std::pow(0.5f + 0.5f * std::cos(12 * turn), 60.0f) +
                           0.6f * std::pow(0.5f + 0.5f * std::cos(28 * turn + 1), 40.0f);
        const float star =
            rays * std::exp(-2.6f * far) * smoothstep(0.15f, 0.26f, far) * smoothstep(1.3f, 0.6f, far);
        const Rgba lettered = floor.at(px, py);
        return ground + lettered +
               streams.at(px, py) * (0.8f * (1 - lettered.a) * smoothstep(size, 0.9f * size, y)) +
               mix(opaque(0.55f, 0.75f, 1), opaque(1, 0.72f, 0.40f), smoothstep(-0.3f, 0.3f, ball.x)) *
                   (0.75f * star);
    });
    saveRgb(canvas, path, Rows::TopFirst);
}

// No wash, so that the room stays to be seen: a halo round the ball in the middle, which is bright enough of
// itself, and a fine streak through it; cold on the left and warm on the right, as the stage is. The last
// beats fall on the robot's screen, which fills no more than the halo does.
void makeWhite(const char* path) {
    const int size = 64;
    Canvas canvas(size, size);
    paint(canvas, [&](float x, float y, Rgba) {
        const float u = (2 * x / size - 1) * 4 / 3, v = 2 * y / size - 1;
        const float r = std::hypot(u, v);
        const float halo = std::exp(-3.0f * r) * smoothstep(0.10f, 0.34f, r) * smoothstep(0.9f, 0.5f, r);
        const float streak = bell(v, 0.035f) * bell(u, 0.40f) * smoothstep(0.16f, 0.34f, r);
        const Rgba tint = mix(opaque(0.45f, 0.72f, 1), opaque(1, 0.66f, 0.36f), smoothstep(-0.6f, 0.6f, u));
        return tint * (halo + 0.35f * streak);
    });
    saveRgb(canvas, path, Rows::BottomFirst);
}
