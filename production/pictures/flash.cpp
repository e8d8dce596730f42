// Two flashes that are added to the room: a word ("mix", vornel.png), shown once over the full screen with
// its top row first, and the light on the beat ("white").
#include "production/kit/picture/canvas.h"
#include "production/kit/picture/lettering.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

// The word letter by letter, so that no needle of one reaches into the next.
void setWord(LetteringField& text, float baseline, float capHeight, float pixelAspect) {
    const Lettering style = {
        .height = capHeight, .weight = 0.19f, .contrast = 0.50f, .pixelAspect = pixelAspect};
    constexpr struct {
        const char* letter;
        float gap;  // to the next letter, in columns; less than none where two slants run side by side
    } letters[] = {{"V", -12}, {"A", 24}, {"L", 6}, {"O", 0}};
    float breadth = 0;
    for (const auto& [letter, gap] : letters) breadth += textWidth(letter, style) + gap;
    float left = (float(text.width) - breadth) / 2;
    for (const auto& [letter, gap] : letters) {
        setText(text, style, {letter, left, baseline});
        left += textWidth(letter, style) + gap;
    }
}

// Cut like the title's gold, but white-hot: being added, it covers what lies behind it only where it leaves
// that no room to be seen. The room's glow adds to each place twice what lies round it, so that only what
// differs much from what lies beside it is still told from it: bevels in shade are a deep orange. `down` is 0
// at a letter's top, 1 at its foot.
Rgba flashGold(const LetteringField& text, int x, int y, float pixelAspect, float down) {
    const float lightness =
        unit(0.42f + 0.70f * bevelFacing(text, x, y, pixelAspect) + 0.20f * bell(down - 0.57f, 0.16f));
    static const std::vector<Stop> wedge = {
        {0, opaque(0.42f, 0.11f, 0)}, {0.5f, opaque(0.92f, 0.56f, 0.14f)}, {1, opaque(1, 0.92f, 0.66f)}};
    return mix(gradient(wedge, lightness), opaque(0.80f, 0.66f, 0.40f),
               0.8f * outline(text.at(x, y) + 1.5f, 2.2f));
}

}  // namespace

void makeFlashWord(const char* path) {
    const int size = 1024;
    const float pixelAspect = 4.0f / 3;  // the square picture fills a 4:3 screen
    // Over the ball, which it must not hide, before the dark of the hall's upper half.
    const float capHeight = 270, baseline = 318, streakLine = baseline - 0.43f * capHeight;
    const Point ball = {size * 0.5f, size * 0.5f};
    LetteringField text(size, size, 60);
    setWord(text, baseline, capHeight, pixelAspect);

    Canvas letters(size, size);
    paint(letters, [&](float x, float y, Rgba) { return grey(1) * coverage(text.at(x, y)); });
    const Canvas streams = streamed(letters, ball.x, ball.y, 0.72f);

    Canvas canvas(size, size, opaque(0, 0, 0));
    paint(canvas, [&](float x, float y, Rgba ground) {
        const int px = int(x), py = int(y);
        const float distance = text.at(px, py), fill = coverage(distance), away = y - streakLine;
        const Rgba face =
            fill > 0 ? flashGold(text, px, py, pixelAspect, unit((y - baseline + capHeight) / capHeight))
                     : Rgba{};
        const float reach = bell((x - size * 0.5f) / size, 0.26f);
        const float streak = reach * (0.4f * bell(away, 2) + 0.03f * bell(away, 22)) * (1 - fill);
        const float border =
            smoothstep(0, 0.12f, std::fmin(std::fmin(x, size - x), std::fmin(y, size - y)) / size);
        const Rgba air = opaque(0.34f, 0.17f, 0.06f) * (0.22f * streams.at(px, py).r * (1 - fill));
        return ground + (air + opaque(1, 0.80f, 0.48f) * streak) * border + face * fill;
    });
    saveRgb(canvas, path, Rows::TopFirst);
}

// No wash, so that the room stays to be seen: rays that leave the ball in the middle, which is bright enough
// of itself, and a streak through it; cold on the left and warm on the right, as the stage is. And a warm
// light over the ball, where the last glimpse of all has the face of the colossus.
void makeWhite(const char* path) {
    const int size = 64;
    Canvas canvas(size, size);
    paint(canvas, [&](float x, float y, Rgba) {
        const float u = (2 * x / size - 1) * 4 / 3, v = 2 * y / size - 1;
        const float r = std::hypot(u, v), a = arcTan(v, u);
        const float rays = std::pow(0.5f + 0.5f * std::cos(7 * a + 0.9f), 3.0f) +
                           0.6f * std::pow(0.5f + 0.5f * std::cos(11 * a + 2.2f), 4.0f);
        const float fall = std::exp(-1.0f * r) * smoothstep(0.22f, 0.5f, r);
        const float streak = 0.45f * bell(v, 0.03f) * bell(u, 0.9f) * smoothstep(0.15f, 0.6f, r);
        const Rgba tint = mix(opaque(0.45f, 0.72f, 1), opaque(1, 0.66f, 0.36f), smoothstep(-0.7f, 0.7f, u));
        const float head = bell(std::hypot(u, (v + 0.43f) * 1.2f), 0.20f);
        return tint * (0.6f * rays * fall + streak) + opaque(1, 0.70f, 0.32f) * (0.50f * head);
    });
    saveRgb(canvas, path, Rows::BottomFirst);
}
