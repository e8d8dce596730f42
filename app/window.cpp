#include "app/window.h"

#include <SDL/SDL_syswm.h>
#include <X11/Xlib.h>
#include <signal.h>

#include <cstdio>
#include <cstdlib>

#include "render/quit.h"
#include "render/screen.h"

namespace {

volatile sig_atomic_t hangUpSeen = 0;

// The frame's alpha is part of many scenes' blending, so a visual with alpha comes first; the show is
// playable without, and on 16 bits of depth.
SDL_Surface* setVideoMode(Uint32 flags, int samples) {
    static const struct {
        int alphaBits;
        int depthBits;
    } wishes[] = {{8, 24}, {0, 24}, {0, 16}};

    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    if (samples > 0) {
        SDL_GL_SetAttribute(SDL_GL_MULTISAMPLEBUFFERS, 1);
        SDL_GL_SetAttribute(SDL_GL_MULTISAMPLESAMPLES, samples);
    }
    for (const auto& wish : wishes) {
        SDL_GL_SetAttribute(SDL_GL_ALPHA_SIZE, wish.alphaBits);
        SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, wish.depthBits);
        if (SDL_Surface* screen = SDL_SetVideoMode(screenWidth, screenHeight, 32, flags)) return screen;
    }
    if (samples == 0) return nullptr;
    // SDL 1.2 as a layer over SDL 2 asks for them again until its video starts anew.
    SDL_QuitSubSystem(SDL_INIT_VIDEO);
    if (SDL_InitSubSystem(SDL_INIT_VIDEO) < 0) return nullptr;
    SDL_GL_SetAttribute(SDL_GL_MULTISAMPLEBUFFERS, 0);
    SDL_GL_SetAttribute(SDL_GL_MULTISAMPLESAMPLES, 0);
    return setVideoMode(flags, 0);
}

void tellOfMissingAlpha() {
    static bool told = false;
    int bits = 0;
    SDL_GL_GetAttribute(SDL_GL_ALPHA_SIZE, &bits);
    if (bits == 0 && !told)
        fprintf(stderr, "This display keeps no alpha: scenes will lack parts of their picture.\n");
    told = true;
}

XIOErrorHandler handleLostDisplay = nullptr;  // Xlib's: it tells of the loss and ends the process
bool displayLost = false;

void watchForLostDisplay() {
    if (handleLostDisplay) return;
    handleLostDisplay = XSetIOErrorHandler([](Display* display) {
        displayLost = true;
        return handleLostDisplay(display);
    });
}

// Window managers are who redirects the requests of other programs' windows.
bool hasWindowManager(Display* display, Window root) {
    XWindowAttributes attributes;
    return XGetWindowAttributes(display, root, &attributes) &&
           attributes.all_event_masks & SubstructureRedirectMask;
}

// SDL 1.2 as a layer over SDL 2 scales the picture to the desktop and asks the window manager to make the
// window as large. Where there is none nobody does, and the window would show a corner of the picture.
void enlargeUnmanagedWindow(int width, int height) {
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (SDL_GetWMInfo(&info) != 1 || info.subsystem != SDL_SYSWM_X11) return;
    const auto& x11 = info.info.x11;
    // SDL 1.2 itself has a window around this one that covers the screen.
    if (x11.window != x11.fswindow || hasWindowManager(x11.display, DefaultRootWindow(x11.display))) return;
    XMoveResizeWindow(x11.display, x11.window, 0, 0, width, height);
    XSync(x11.display, False);
}

}  // namespace

SDL_Surface* openWindow(bool fullscreen, int samples, bool awaitsScreen) {
    // Kept: messages are printed as they stand, so whoever reads them sees "%s" in the place of SDL's reason.
    if (SDL_Init(SDL_INIT_VIDEO) < 0) fatalError("Video initialization failed: %s\n");
    // Readers of models and pictures end the process without asking.
    // Closing a window of a display that is gone, SDL 2 waits for it without end.
    atexit([] {
        if (!displayLost) SDL_Quit();
    });
    watchForLostDisplay();
    const SDL_VideoInfo desktop = *SDL_GetVideoInfo();
    Uint32 flags = SDL_HWSURFACE | SDL_OPENGL | SDL_ASYNCBLIT;
    if (fullscreen) {
        flags |= SDL_FULLSCREEN;
        SDL_ShowCursor(0);
    }
    SDL_WM_SetCaption("Valojuova", "Valojuova");
    // Unasked, SDL 1.2 leaves it to the driver, and as a layer over SDL 2 has pictures torn.
    if (awaitsScreen) SDL_GL_SetAttribute(SDL_GL_SWAP_CONTROL, 1);
    SDL_Surface* const screen = setVideoMode(flags, samples);
    if (!screen) fatalError("Video mode set failed: %s\n");
    tellOfMissingAlpha();
    if (fullscreen) enlargeUnmanagedWindow(desktop.current_w, desktop.current_h);
    return screen;
}

void watchForHangUp() {
    struct sigaction action {};
    sigaction(SIGHUP, nullptr, &action);
    if (action.sa_handler != SIG_DFL) return;
    action.sa_handler = [](int) { hangUpSeen = 1; };
    sigaction(SIGHUP, &action, nullptr);
}

bool hungUp() {
    return hangUpSeen;
}
