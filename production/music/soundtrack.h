// The soundtrack: 126 beats a minute, bar 0 at 17.138 s, nine bars of title before it, last hit on beat 368.
#pragma once

#include <vector>

#include "production/kit/sound/mix.h"
#include "production/product.h"

audio::Song soundtrack();

// Whether all of a song can be read; a line on standard error for each thing that can't.
bool proofread(const audio::Song& song);

struct Finished {
    audio::Stereo sound;
    std::vector<float> gain;  // that the limiter gave each frame
};
// A stretch of the soundtrack through its cuts, its blur and the master bus, as it is in the whole.
Finished finish(const audio::Song& song, const audio::Window& window);

// Writes the whole as an Ogg Vorbis file.
void makeSoundtrack(const char* path);

inline constexpr Product musicProducts[] = {
    {"KVX - Ondrevane2.ogg", makeSoundtrack},
};
