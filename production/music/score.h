// What is played: the harmony and the arrangement, section by section. Bar 0 lies at 17.138 s, the title
// before it has nine bars.
#pragma once

#include <vector>

#include "production/kit/sound/song.h"
#include "script/show_times.h"

// Where a moment of the show lies on the bars' grid.
constexpr float barAt(showtime::Moment moment) {
    return float((moment.seconds() - showtime::beatZero.seconds()) * showtime::beatsPerMinute / 60 /
                 showtime::beatsPerBar);
}

constexpr int lastBar = 93;  // where the music ends

std::vector<audio::Section> score();
