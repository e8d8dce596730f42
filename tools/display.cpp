#include "tools/display.h"

#include <X11/Xlib.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

void needDisplay() {
    // Whoever names SDL's driver, or has Wayland, is believed.
    if (getenv("SDL_VIDEODRIVER") || getenv("WAYLAND_DISPLAY")) return;
    // Left open: a server may start anew when its last client goes.
    if (XOpenDisplay(nullptr)) return;
    const char* name = getenv("DISPLAY");
    fprintf(
        stderr, "%s: no window can be opened: %s\n", program_invocation_short_name,
        name ? "the display that DISPLAY names does not answer" : "there is no display (DISPLAY is not set)");
    exit(1);
}
