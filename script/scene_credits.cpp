// The credit cards over the room, and two pictures of the same family that the programme
// leaves out.
#include "render/demo.h"
#include "script/scene_kit.h"
#include "script/scenes.h"
#include "script/show_times.h"
#include "script/timeline.h"

namespace {

constexpr struct Card {
    float begin;  // seconds
    const char* texture;
    float x, y;  // its middle; two units away from the eye a card covers a quarter of the screen
} cards[] = {
    {showtime::codeCard, "code", -1, -1},
    {showtime::modelsCard, "models", 1, 0},
    {showtime::gfxCard, "gfx", 1, 1},
    {showtime::musicCard, "music", -1, 1},
};

}  // namespace

void sceneCredits() {
    if (!(frame.time > showtime::codeCard)) return;
    const Card* current = cards;
    for (const Card& card : cards) {
        if (frame.time >= card.begin) current = &card;
    }

    useBoom(20 * frame.pulse, 0.1f);
    glColor3f(1, 1, 1);
    drawPicture(current->texture, {.x = current->x, .y = current->y, .z = -2});
    demo->useShader();
}

void sceneFade() {
    demo->drawScreenQuad("fade", 1);
}

void sceneGreets() {
    demo->drawScreenQuad("greets", 1);
}
