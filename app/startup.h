// Start-up: window, renderer and resources, sound; in this order, so that second 0 of the music is the first
// frame of the show.
#pragma once

#include "app/options.h"
#include "app/sound_music.h"
#include "script/resources.h"

// GL's state, the loading screen and all resources.
void initialiseDemo(Loader& loader);
// As the show does: ends the program if a resource is missing.
void initialiseDemo();

// The uniform that keeps its value for the whole show: the middle of "boom".
void centreBoom();

// Plays the music on the output asked for, or what the machine has instead, and makes it the clock's source.
// Says which output it is; a music that can't be played leaves the clock at 0.
void startMusic(int soundOutput, const char* path = SoundMusic::path);

// All of it.
void startUp(const Options& options);
