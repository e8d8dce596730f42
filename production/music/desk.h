// The composer's desk: a few bars, some of the parts, each part by itself, or what a reader of the score
// would remark, within seconds.
#pragma once

#include <string>
#include <vector>

#include "production/kit/sound/song.h"

// Does what the words say and returns the exit status: 1, after a line, where they or the score can't be
// followed. --check tells every cue that can't be.
int runDesk(const std::vector<std::string>& words);

// Leaves of a song the sections and the cues that can be read by themselves. False, after a line for each of
// the others, if there were any.
bool leaveReadable(audio::Song& song);
