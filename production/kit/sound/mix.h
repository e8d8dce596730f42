// The sound's side of a song: every part's notes through its channel, and the rooms that they share.
#pragma once

#include "production/kit/sound/signal.h"
#include "production/kit/sound/song.h"

namespace audio {

// Every channel and what its sends return, not yet mastered.
Stereo perform(const Song& song);

}  // namespace audio
