#include "app/loop.h"

#include <SDL/SDL.h>

#include <chrono>
#include <thread>

#include "app/frame.h"
#include "app/keys.h"
#include "app/window.h"

namespace {

// No screen shows more, and where no swap waits for one, they would only heat the machine.
constexpr std::chrono::milliseconds shortestFrame{4};

struct LoopState {
    bool done = false;
    bool active = true;  // not read: the show goes on in an inactive window
};

void handleEvent(const SDL_Event& event, LoopState* state) {
    if (event.type == SDL_KEYDOWN) handleKey(event.key.keysym.sym);
    if (event.type == SDL_ACTIVEEVENT) state->active = event.active.gain != 0;
    if (event.type == SDL_QUIT) state->done = true;
}

}  // namespace

void runLoop() {
    LoopState state;
    while (!state.done) {
        const auto end = std::chrono::steady_clock::now() + shortestFrame;
        SDL_Event event;
        while (SDL_PollEvent(&event)) handleEvent(event, &state);
        if (hungUp()) state.done = true;
        renderFrame();
        std::this_thread::sleep_until(end);
    }
}
