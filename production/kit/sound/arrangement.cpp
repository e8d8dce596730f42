#include "production/kit/sound/arrangement.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace audio {

namespace {

constexpr float stepsPerBar = 16;

// The chords from a bar on, as many as there are until the last row begins to repeat.
std::vector<Chord> chordsFrom(const Song& song, int bar, int count) {
    std::vector<Chord> chords;
    for (int i = bar; i < bar + count; i++) {
        const Harmony* row = &song.harmony.front();
        for (const Harmony& each : song.harmony)
            if (each.from <= i) row = &each;
        const std::vector<Chord> all = chordsOf(row->chords);
        const int size = int(all.size());
        chords.push_back(all[((i - row->from) % size + size) % size]);
    }
    return chords;
}

Pattern patternOf(const Part& part, std::string_view text, const std::vector<Chord>& chords) {
    switch (part.notation) {
        case Notation::melody:
            return melodyOf(text);
        case Notation::hits:
            return hitsOf(text);
        case Notation::arpeggio:
            return arpeggioOf(text, chords, part.pitch);
        case Notation::bass:
            return bassOf(text, chords, part.pitch);
        case Notation::stabs:
            return stabsOf(text, chords, part.pitch);
    }
    return {};
}

// Patterns over chords change with each bar, so they are written out over all of the cue's bars, with rests
// in front where the cue begins within one.
std::string writtenOut(std::string_view pattern, float from, float to) {
    std::string once;
    for (const char mark : pattern)
        if (mark != ' ') once += mark;
    const float firstBar = std::floor(from);
    std::string marks(size_t(std::lround((from - firstBar) * stepsPerBar)), '.');
    while (!once.empty() && float(marks.size()) < (to - firstBar) * stepsPerBar) marks += once;
    return marks;
}

void addNotes(const Song& song, const Part& part, const Cue& cue, std::vector<Note>& notes) {
    const bool overChords = part.notation != Notation::melody && part.notation != Notation::hits;
    const float origin = overChords ? std::floor(cue.from) : cue.from;
    const std::string text = overChords ? writtenOut(cue.pattern, cue.from, cue.to) : cue.pattern;
    const int bars = int(std::ceil(cue.to)) - int(std::floor(cue.from));
    const Pattern pattern = patternOf(part, text, chordsFrom(song, int(std::floor(cue.from)), bars));
    const double stepSeconds = 15 / song.beatsPerMinute;
    const float steps = (cue.to - origin) * stepsPerBar;
    const float shift = float(cue.transpose + (part.notation == Notation::melody ? part.pitch : 0));
    for (float start = 0; pattern.length && start < steps; start += float(pattern.length)) {
        for (const Step& step : pattern.steps) {
            const float at = start + step.at;
            if (at >= steps - 0.001f) break;
            const float length = std::min(step.length, steps - at);
            const float way = at / steps;
            notes.push_back({song.secondsAt(origin) + at * stepSeconds, float(length * stepSeconds),
                             step.pitch + shift, step.velocity * gainOf(cue.level.at(way)),
                             cue.bright.at(way)});
        }
    }
}

}  // namespace

const Part& partOf(const Song& song, const char* name) {
    for (const Part& part : song.parts)
        if (!strcmp(part.name, name)) return part;
    fprintf(stderr, "No part is called \"%s\"\n", name);
    exit(1);
}

std::vector<Note> notesOf(const Song& song, const Part& part) {
    std::vector<Note> notes;
    for (const Cue& cue : song.cues)
        if (!strcmp(cue.part, part.name)) addNotes(song, part, cue, notes);
    std::stable_sort(notes.begin(), notes.end(),
                     [](const Note& a, const Note& b) { return a.start < b.start; });
    return notes;
}

}  // namespace audio
