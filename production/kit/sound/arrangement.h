// The score's side of a song: what each part plays, note by note.
#pragma once

#include <string_view>
#include <vector>

#include "production/kit/sound/notation.h"
#include "production/kit/sound/song.h"

namespace audio {

// Everything that a part plays, in the order of its starts; those are seconds from the song's beginning.
// Sections and cues that can't be read are left out.
std::vector<Note> notesOf(const Song& song, const Part& part);

// What can't be read: a line for each section, cue and doubling part that holds a name, a sign or a pitch
// that can't be, such as the chord's, a pattern that is longer than its bars, a note out of the part's range.
Problems problemsOf(const Song& song);

// The part of that name, nullptr where there is none.
const Part* partOf(const Song& song, std::string_view name);

// The chord and the scale at a bar of a section that can be read, fractions included.
Chord chordAt(const Song& song, double bar);
Scale scaleAt(const Song& song, double bar);

}  // namespace audio
