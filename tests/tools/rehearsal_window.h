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

    // Another rehearsal of the show that is loaded, with its music measured.
    void begin(const std::string& sources, const std::vector<std::string>& makeData) {
        rehearsal.reset();
        watch.emplace();
        watch->add("data");
        if (!sources.empty()) watch->add(sources);
        loading.emplace(true);
        for (const FileName& name : showFiles()) {
            const ShowFile file = loading->file(name);
            if (name.kind == FileKind::shader) loading->shadersInUse[name.path] = file.text;
        }
        rehearsal.emplace(*show, *loading, *watch, sources, makeData);
        rehearsal->deskShown = false;
    }
    void keyEvent(SDLKey symbol, Uint8 type) {
        SDL_Event event{};
        event.type = type;
        event.key.keysym.sym = symbol;
        rehearsal->handleEvent(event);
    }
    void key(SDLKey symbol) {
        keyEvent(symbol, SDL_KEYDOWN);
        keyEvent(symbol, SDL_KEYUP);
    }
    // Frames until what is held is drawn exactly. The picture in the window, which is what was swapped.
    Screen settle() {
        do {
            rehearsal->frame();
        } while (rehearsal->shown != Shown::exact);
        return readWindow();
    }
    Screen goTo(int ms) {
        rehearsal->transport.setPosition(ms);
        return settle();
    }

    std::optional<SteppedShow> show;
    std::optional<Watch> watch;
    std::optional<Loading> loading;
    std::optional<Rehearsal> rehearsal;
};
