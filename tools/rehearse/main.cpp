// Rehearses the show: plays it in a window under its author's hands.
#include <cmath>
#include <cstdio>

#include "app/app.h"
#include "app/startup.h"
#include "render/quit.h"

#include "tools/rehearse/options.h"
#include "tools/rehearse/rehearsal.h"

int main(int argc, char** argv) {
    const RehearseOptions options = parseRehearseOptions(argc, argv);
    SteppedShow show(Transport::framesPerSecond);
    Rehearsal rehearsal(show);
    SDL_WM_SetCaption("Valojuova: rehearsal", "Valojuova");
    startMusic(options.soundOutput);
    demo->clock.source = &rehearsal.transport;
    rehearsal.transport.replaceStream(app.music.stream);
    rehearsal.transport.setPosition(static_cast<int>(std::lround(options.second * 1000)));
    if (!options.held) rehearsal.transport.goOn();
    rehearsal.stateFile = options.stateFile;
    SDL_EnableKeyRepeat(SDL_DEFAULT_REPEAT_DELAY, SDL_DEFAULT_REPEAT_INTERVAL);
    while (!rehearsal.done) {
        SDL_Event event;
        while (SDL_PollEvent(&event)) rehearsal.handleEvent(event);
        rehearsal.frame();
    }
    quit();
}
