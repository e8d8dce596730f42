// The score's side of a song: what each part plays, note by note.
#pragma once

#include <string_view>
#include <vector>

#include "production/kit/sound/notation.h"
#include "production/kit/sound/song.h"

namespace audio {

// Ends the process with a line where the score holds a name, a sign or a pitch that can't be: the part's, the
// chord's or the scale's name, a pattern that is longer than its bar, a note out of the part's range.
// Otherwise everything that a part plays, in the order of its starts; those are seconds from the song's
// beginning.
std::vector<Note> notesOf(const Song& song, const Part& part);

// The part of that name, nullptr where there is none.
const Part* partOf(const Song& song, std::string_view name);

// Reads all of the song, so that a mistake in it is found before anything sounds.
void proofread(const Song& song);

// The chord and the scale at a bar, fractions included.
Chord chordAt(const Song& song, double bar);
Scale scaleAt(const Song& song, double bar);

}  // namespace audio
