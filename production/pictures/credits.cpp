// The four credit cards, each drawn over a quarter of the 4:3 screen with its top row first: what was made,
// how much of it, and what it was made without. White lettering on clear ground, with a soft shadow that
// keeps it readable over the beat's flash.
#include <string>

#include "production/forge.h"
#include "production/kit/picture/canvas.h"
#include "production/kit/picture/lettering.h"
#include "production/pictures/pictures.h"

using namespace picture;

namespace {

constexpr int size = 512;
constexpr float pixelAspect = 4.0f / 3;
constexpr float margin = 46;  // columns kept clear at the card's outer side
constexpr float roleLine = 222, ruleLine = 254, countLine = 316, withoutLine = 372;  // rows

struct Card {
    const char* role;
    std::string count, without;
    Align align;  // the side of the screen that it lies at
};

void makeCard(const char* path, const Card& card) {
    const Align align = card.align;
    const float edge = align == Align::Left ? margin : size - margin;
    LetteringField text(size, size, 16);
    const Lettering large = {.height = 86, .weight = 0.17f, .contrast = 0.6f, .pixelAspect = pixelAspect};
    const Lettering spaced = {
        .height = 40, .weight = 0.17f, .contrast = 0.4f, .gap = 0.24f, .pixelAspect = pixelAspect};
    setText(text, large, {card.role, edge, roleLine, align});
    setText(text, spaced, {card.count, edge, countLine, align});
    setText(text, spaced, {card.without, edge, withoutLine, align});

    Canvas shape(size, size);
    paint(shape, [&](float x, float y, Rgba) {
        const float along = align == Align::Left ? x - margin : size - margin - x;
        const float rule = along < 0 ? 0
                                     : std::exp(-along / 150) *
                                           coverage(std::fabs(y - ruleLine) - 2.2f * std::exp(-along / 170));
        return grey(1) * std::fmax(coverage(text.at(x, y)), rule);
    });
    const Canvas shadow = blurred(shape, 5, Edge::Empty);
    const Canvas pad = blurred(shape, 26, Edge::Empty);

    Canvas canvas(size, size);
    paint(canvas, [&](float x, float y, Rgba) {
        const int px = static_cast<int>(x), py = static_cast<int>(y);
        const float dark = unit(0.75f * shadow.at(px, py).a + 1.0f * pad.at(px, py).a);
        return over(shape.at(px, py), Rgba{0, 0, 0, dark});
    });
    saveRgba(canvas, path, Rows::TopFirst);
}

}  // namespace

void makeCodeCredit(const char* path) {
    makeCard(path, {"Code", "thirteen effects", "one clock", Align::Left});
}
void makeModelsCredit(const char* path) {
    makeCard(path, {"Models", std::to_string(modelProducts.size()) + " files", "no modeller", Align::Right});
}
void makeGraphicsCredit(const char* path) {
    makeCard(path,
             {"Graphics", std::to_string(pictureProducts.size()) + " pictures", "no camera", Align::Right});
}
void makeMusicCredit(const char* path) {
    makeCard(path, {"Music", "102 bars", "no sample", Align::Left});
}
