// A rehearsal in the test's own window: a music without sound that stands at the start, and the desk hidden,
// so that what is looked at is the show.
#pragma once

#include <optional>

#include "app/app.h"
#include "tests/show.h"
#include "tools/rehearse/rehearsal.h"

class RehearsalWindow : public Show {
public:
    void SetUp() override {
        Show::SetUp();
        app.messages.lines.clear();
        // Whatever earlier tests have left is not what a start finds.
        rewind();
        show.emplace(Transport::framesPerSecond, SteppedShow::Loaded{});
        begin("", {});
    }
    void TearDown() override {
        rehearsal.reset();
        show.reset();
        demo->clock.source = &music;
        Show::TearDown();
    }

    // Another rehearsal of the show that is loaded.
    void begin(const std::string& sources, const std::vector<std::string>& makeData) {
        rehearsal.reset();
        rehearsal.emplace(*show, sources, makeData);
        rehearsal->deskShown = false;
    }
    void key(SDLKey symbol, SDLMod modifiers = KMOD_NONE) {
        SDL_Event event{};
        event.type = SDL_KEYDOWN;
        event.key.keysym.sym = symbol;
        event.key.keysym.mod = modifiers;
        rehearsal->handleEvent(event);
        event.type = SDL_KEYUP;
        rehearsal->handleEvent(event);
    }
    // Frames until what is held is drawn exactly. The picture in the window, which is what was swapped.
    Screen settle() {
        do {
            rehearsal->frame();
        } while (!rehearsal->exact);
        return readWindow();
    }
    Screen goTo(int ms) {
        rehearsal->transport.setPosition(ms);
        return settle();
    }

    std::optional<SteppedShow> show;
    std::optional<Rehearsal> rehearsal;
};

inline int differing(const Screen& a, const Screen& b) {
    int count = 0;
    for (size_t i = 0; i < a.pixels.size(); i++) count += !(a.pixels[i] == b.pixels[i]);
    return count;
}
