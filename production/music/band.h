// Who plays: every part's instrument, what it may play, and its place in the mix; and what all parts share
// there.
#pragma once

#include <vector>

#include "production/kit/sound/song.h"

std::vector<audio::Part> band();
audio::Mixer mixer();
