// The sound's side of a song: every part's notes through its channel, and the rooms that they share.
#pragma once

#include <string_view>
#include <vector>

#include "production/kit/sound/signal.h"
#include "production/kit/sound/song.h"

namespace audio {

// Frames of the song, the last one not included.
struct Window {
    size_t from, to;
};

// What goes into the two clips of a mix.
struct Unclipped {
    Stereo drums, music;
};

// What the parts of these names (all of them where there is none) and their sends sound like between two
// frames, at the sections' levels, not yet mastered. The dips for the kick are there whether it is heard or
// not. What began more than a few seconds before the window may be missing from its rooms. By what `whole`
// has of all parts some are clipped as they are in the whole, so that those of all parts add up to it; `kept`
// gets that of these.
Stereo perform(const Song& song, const Window& window, const std::vector<std::string_view>& heard = {},
               const Unclipped* whole = nullptr, Unclipped* kept = nullptr);

// What a master gave each frame.
struct MasterGains {
    std::vector<float> compressor, limiter;
};
// Masters the whole, or a stretch of it.
MasterGains passMaster(const Master& master, Stereo& whole);
// And a part of it as it is within the whole, which got those gains.
void passMaster(const Master& master, const MasterGains& gains, Stereo& part);

}  // namespace audio
