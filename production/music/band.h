// Who plays: every part's instrument and its place in the mix.
#pragma once

#include <vector>

#include "production/kit/audio_song.h"

extern const std::vector<Part> band;
