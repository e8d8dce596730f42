#include "render/quit.h"

#include <SDL/SDL.h>

#include <cstdio>
#include <cstdlib>

void quit() {
    SDL_Quit();
    exit(0);
}

void fatalError(const char* message) {
    fprintf(stderr, "error: %s\n", message);
    quit();
}
