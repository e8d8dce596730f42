// What is played: the harmony and the arrangement, section by section. Bar 0 lies at 17.138 s, the title
// before it has nine bars.
#pragma once

#include <vector>

#include "production/kit/sound/song.h"
#include "script/show_times.h"

inline constexpr audio::Grid grid = {showtime::beatsPerMinute, showtime::beatZero.seconds()};

// The bar at a moment of the show.
constexpr float barAt(showtime::Moment moment) {
    return float(grid.barAt(moment.seconds()));
}

constexpr int lastBar = 93;  // where the music ends

std::vector<audio::Section> score();
