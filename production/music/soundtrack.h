// The soundtrack: 126 beats a minute, bar 0 at 17.138 s, nine bars of title before it, last hit on beat 368.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "production/kit/sound/mix.h"
#include "production/product.h"

audio::Song soundtrack();

// Whether all of a song can be read; a line on standard error for each thing that can't.
bool proofread(const audio::Song& song);

struct Finished {
    audio::Stereo sound;
    audio::MasterGains gains;
};
// A stretch of the soundtrack through its cuts, its blur and the master bus, as it is in the whole.
Finished finish(const audio::Song& song, const audio::Window& window);

// Parts that are heard as one.
struct Stem {
    std::string name;
    std::vector<std::string_view> parts;
};
// One for each role that there is.
std::vector<Stem> stemsOf(const audio::Song& song);

// What the stems are within finish(): all that follows the level, which is clips, compressor and limiter,
// gives them the gain that it gives the whole, so that stems that have every part once add up to it. They are
// handed on one after the other, as each is as large as the whole, until one is not taken: then this is
// false.
bool finishStems(const audio::Song& song, const audio::Window& window, const std::vector<Stem>& stems,
                 const std::function<bool(const Stem&, const audio::Stereo&)>& take);

// Writes the whole as an Ogg Vorbis file.
void makeSoundtrack(const char* path);

// Writes the stems below the path's folder, NAME.ogg each, and then to the path their names, a line each.
void makeStems(const char* path);

inline constexpr Product musicProducts[] = {
    {"KVX - Ondrevane2.ogg", makeSoundtrack},
};
