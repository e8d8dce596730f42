#include "tools/capture/stopping.h"

#include <SDL/SDL.h>
#include <signal.h>

#include "tools/capture/film.h"

namespace {

volatile sig_atomic_t stopped = 0;

void stop(int) {
    stopped = 1;
    Film::interruptFinish();
}

}  // namespace

void stopOnSignals() {
    for (int signalNumber : {SIGINT, SIGTERM, SIGHUP}) {
        if (signal(signalNumber, stop) == SIG_IGN) signal(signalNumber, SIG_IGN);
    }
}

bool wantsToStop() {
    SDL_Event event;
    while (SDL_PollEvent(&event)) {
        if (event.type == SDL_QUIT) stopped = 1;
    }
    return stopped;
}

bool wasStopped() {
    return stopped;
}
