// What a careful reader would remark in a score. None of it is a mistake for sure: the author judges.
#pragma once

#include <string>
#include <vector>

#include "production/kit/sound/song.h"

namespace audio {

// A line each, with section, bar and part: pitches outside both the chord and the scale, semitones that sound
// together within a part or between chords and lead, a lead that goes on for more than eight bars without a
// rest of an eighth, bars in which everything repeats an earlier bar, and bars in which nothing sounds.
std::vector<std::string> remarksOn(const Song& song);

}  // namespace audio
