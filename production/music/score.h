// What is played: the harmony and the arrangement, bar by bar. Bar 0 lies at 17.138 s, the title before it
// has nine bars.
#pragma once

#include <vector>

#include "production/kit/sound/song.h"

extern const std::vector<audio::Harmony> harmony;
extern const std::vector<audio::Cue> arrangement;

// The whole mix's level, straight lines from bar to bar. Two points on one bar make a step.
struct Fader {
    float bar, level;  // dB
};
extern const std::vector<Fader> faders;
