// The score's side of a song: what each part plays, note by note.
#pragma once

#include <vector>

#include "production/kit/sound/notation.h"
#include "production/kit/sound/song.h"

namespace audio {

// The part of that name; ends the process with a line where there is none.
const Part& partOf(const Song& song, const char* name);

// Everything that a part plays, in the order of its starts; those are seconds from the song's beginning.
std::vector<Note> notesOf(const Song& song, const Part& part);

}  // namespace audio
