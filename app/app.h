// The shell's own state, beside `demo`: the window, the music, what the keys have set.
#pragma once

#include <SDL/SDL.h>

#include <cstdint>

#include "app/messages.h"
#include "app/sound_music.h"
#include "image/image.h"

struct App {
    SDL_Surface* screen = nullptr;  // SDL's
    SoundMusic music;
    float previousFrameTime = 0;  // music time of the frame before, seconds
    bool screenshotRequested = false;
    bool screenshotReady = false;  // `screenshot` has been created
    Image screenshot = {};         // of the screen; made by the first shot, used by all
    int32_t screenshotNumber = 0;  // of the next file
    char screenshotName[32] = "";
    // Two counters for tuning by hand, 0..128; no scene reads them.
    int32_t counterQ = 0;
    int32_t counterA = 0;
    float lastTapTime = 0;  // music time of the last beat tapped, seconds
    MessageList messages;
};

extern App app;
