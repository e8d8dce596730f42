// The table of what a rehearsal has made to mute and solo parts of the soundtrack.
#pragma once

#include "production/music/soundtrack.h"

inline constexpr Product stemProducts[] = {
    {"stems/list", makeStems},
};
