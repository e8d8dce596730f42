// What a composer hears before the whole is made: a few bars, some of the parts, each part by itself, or what
// a reader of the score would remark, within seconds.
#pragma once

#include <string>
#include <vector>

// Does what the words say and returns the exit status: 1, after a line, where they or the score can't be
// followed. --check tells every cue that can't be.
int audition(const std::vector<std::string>& words);
