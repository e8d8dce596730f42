#include "app/keys.h"

#include <algorithm>

#include "app/app.h"
#include "render/demo.h"
#include "render/quit.h"

namespace {

constexpr int32_t counterMaximum = 128;

// Page Up goes back, as Left and Down do.
constexpr struct {
    SDLKey key;
    float seconds;
} seekKeys[] = {{SDLK_RIGHT, 1}, {SDLK_LEFT, -1},     {SDLK_UP, 5},
                {SDLK_DOWN, -5}, {SDLK_PAGEDOWN, 30}, {SDLK_PAGEUP, -30}};

void move(int32_t& counter, int by) {
    counter = std::clamp(counter + by, 0, counterMaximum);
}

void tapBeat() {
    const float t = demo->clock.time();
    const float delta = t - app.lastTapTime;
    app.lastTapTime = t;
    app.messages.post("Beat %.2f delta %.2f bpm %.0f", t, delta, 60 / delta);
    demo->clock.registerBeat();
}

}  // namespace

float seekSeconds(SDLKey key) {
    for (const auto& seek : seekKeys) {
        if (key == seek.key) return seek.seconds;
    }
    return 0;
}

void handleKey(SDLKey key) {
    // Kept: from where the music was at this frame. Whoever presses twice within a frame moves it once.
    if (const float seconds = seekSeconds(key)) demo->clock.seek(demo->clock.time() + seconds);
    if (key == SDLK_ESCAPE) quit();
    if (key == SDLK_SPACE) tapBeat();
    if (key == SDLK_p) demo->clock.pause();
    if (key == SDLK_q) move(app.counterQ, -1);
    if (key == SDLK_w) move(app.counterQ, 1);
    if (key == SDLK_a) move(app.counterA, -1);
    if (key == SDLK_s) move(app.counterA, 1);
    if (key == SDLK_F11) app.screenshotRequested = true;
}
