// Who plays: every part's instrument, what it may play, and its place in the mix.
#pragma once

#include <vector>

#include "production/kit/sound/song.h"

std::vector<audio::Part> band();
