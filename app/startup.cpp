#include "app/startup.h"

#include <SDL/SDL.h>

#include <cstdio>

#include "app/app.h"
#include "render/demo.h"
#include "render/quit.h"
#include "render/screen.h"
#include "script/resources.h"
#include "script/show_times.h"

namespace {

constexpr int mixingRate = 44100;  // Hz
constexpr int mixingChannels = 16;

// The frame's alpha is part of many scenes' blending, so a visual with alpha comes first; the show is
// playable without, and on 16 bits of depth.
SDL_Surface* setVideoMode(Uint32 flags) {
    static const struct {
        int alphaBits;
        int depthBits;
    } wishes[] = {{8, 24}, {0, 24}, {0, 16}};

    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    for (const auto& wish : wishes) {
        SDL_GL_SetAttribute(SDL_GL_ALPHA_SIZE, wish.alphaBits);
        SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, wish.depthBits);
        if (SDL_Surface* screen = SDL_SetVideoMode(screenWidth, screenHeight, 32, flags)) return screen;
    }
    return nullptr;
}

void printSoundOutput(int output) {
    switch (output) {
        case sound::Oss:
            printf("Using OSS.\n");
            break;
        case sound::Esd:
            printf("Using ESD.\n");
            break;
        case sound::Alsa:
            printf("Using ALSA.\n");
            break;
        case sound::None:
            printf("Using No sound.\n");
            break;
        default:
            break;
    }
}

}  // namespace

void openWindow(bool fullscreen) {
    // Kept: messages are printed as they stand, so whoever reads them sees "%s" in the place of SDL's reason.
    if (SDL_Init(SDL_INIT_VIDEO) < 0) fatalError("Video initialization failed: %s\n");
    Uint32 flags = SDL_HWSURFACE | SDL_OPENGL | SDL_ASYNCBLIT;
    if (fullscreen) {
        flags |= SDL_FULLSCREEN;
        SDL_ShowCursor(0);
    }
    SDL_WM_SetCaption("Valojuova", "Valojuova");
    app.screen = setVideoMode(flags);
    if (!app.screen) fatalError("Video mode set failed: %s\n");
}

void initialiseDemo() {
    startDemo();
    demo->drawLoadingScreen();
    loadMeshes();
    demo->drawLoadingScreen();
    loadTextures();
    demo->drawLoadingScreen();
    createEffects();
    demo->drawLoadingScreen();
    loadShaders();
    demo->drawLoadingScreen();

    demo->clock.setBpm(showtime::beatsPerMinute);
    glClearColor(0, 0, 0, 0.5f);
    glClearDepth(1);
    centreBoom();
}

void centreBoom() {
    demo->useShader("boom");
    demo->setUniform2f("boom", "center", 0.5f, 0.5f);
    demo->useShader();
}

void startMusic(int soundOutput) {
    sound::setOutput(soundOutput);
    printSoundOutput(sound::output());
    sound::start(mixingRate, mixingChannels);
    app.music.stream = sound::openStream(SoundMusic::path);
    sound::play(SoundMusic::channel, app.music.stream);
    demo->clock.source = &app.music;
}

void startUp(const Options& options) {
    openWindow(options.fullscreen);
    initialiseDemo();
    startMusic(options.soundOutput);
}
