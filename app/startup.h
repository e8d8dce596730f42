// Start-up: window, renderer and resources, sound; in this order, so that second 0 of the music is the first
// frame of the show.
#pragma once

#include <functional>

#include "app/options.h"
#include "app/sound_music.h"
#include "render/demo.h"
#include "script/resources.h"

// How the stages of the loading load what they have to; the show's own way unless the caller asks for
// another.
struct Stages {
    std::function<void()> loadingPicture = loadLoadingPicture;
    std::function<void()> meshes = loadMeshes;
    std::function<void()> textures = loadTextures;
    std::function<void()> shaders = loadShaders;
};

// GL's state, the loading screen and all resources. Ends the program if one is missing.
void initialiseDemo(const Stages& stages = {});

// The uniform that keeps its value for the whole show: the middle of "boom".
void centreBoom();

// Plays the music on the output asked for, or what the machine has instead, and makes it the clock's source.
// Says which output it is; a music that can't be played leaves the clock at 0.
void startMusic(int soundOutput, const char* path = SoundMusic::path);

// All of it.
void startUp(const Options& options);
