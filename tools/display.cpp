#include "tools/display.h"

#include <X11/Xlib.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

void needDisplay() {
    // Whoever names another driver of SDL's, or has Wayland, is believed. Newer SDLs name X themselves for
    // who links it.
    const char* driver = getenv("SDL_VIDEODRIVER");
    const bool onX = driver ? strcmp(driver, "x11") == 0 : !getenv("WAYLAND_DISPLAY");
    // Left open: a server may start anew when its last client goes.
    if (!onX || XOpenDisplay(nullptr)) return;
    const char* name = getenv("DISPLAY");
    fprintf(
        stderr, "%s: no window can be opened: %s\n", program_invocation_short_name,
        name ? "the display that DISPLAY names does not answer" : "there is no display (DISPLAY is not set)");
    exit(1);
}
