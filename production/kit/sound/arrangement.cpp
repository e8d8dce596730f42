#include "production/kit/sound/arrangement.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace audio {

const Section& Song::sectionAt(double bar) const {
    const Section* found = &sections.front();
    for (const Section& section : sections)
        if (section.from <= bar + 1e-6) found = &section;
    return *found;
}

namespace {

constexpr int stepsPerBar = 16;

Place placeOf(const Section& section, const char* part = "harmony") {
    return {section.name, part, section.from};
}

// A section's chords and scale, read, and the settings that a part's hands go through.
struct Harmony {
    std::vector<Chord> chords;  // two a bar
    Scale scale;

    explicit Harmony(const Section& section)
        : chords(chordsOf(section.chords, placeOf(section))),
          scale(scaleOf(section.scale, placeOf(section))) {
        if (chords.empty()) refuse(placeOf(section), "no chord", section.chords);
    }
    // step: sixteenths from the section's first bar.
    size_t indexAt(int step) const { return size_t(step / (stepsPerBar / 2)) % chords.size(); }
    const Chord& at(int step) const { return chords[indexAt(step)]; }
};

// Turns one cue's text into notes.
class Reader {
public:
    Reader(const Song& song, const Part& part, const Section& section, const Harmony& harmony,
           std::vector<int>& hand)
        : song(song), part(part), section(section), harmony(harmony), hand(hand) {}

    void read(const Cue& cue, std::vector<Note>& notes) {
        const Bars bars = cue.bars.whole() ? Bars{float(section.from), float(section.to)} : cue.bars;
        place = {section.name, part.name, int(std::floor(bars.from))};
        if (bars.from < float(section.from) || bars.to > float(section.to) || bars.from >= bars.to)
            refuse(place, "bars that the section doesn't have", cue.pattern);
        first = int(std::lround((bars.from - float(section.from)) * stepsPerBar));
        end = (bars.to - bars.from) * stepsPerBar;
        steps = int(std::ceil(end - 0.01f));
        text = cue.pattern;
        const Pattern melody = part.notation == Notation::melody ? melodyOf(text, place) : Pattern{};
        const Marks marks = part.notation == Notation::melody ? Marks{} : marksOf(text, allowed(), place);
        const int length = std::max(melody.length, marks.length);
        if (length == 0) refuse(place, "nothing to play", text);
        if (length > steps) refuse(place, "longer than its bars", text);
        for (int start = 0; start < steps; start += length) {
            for (const Step& step : melody.steps)
                add(cue, {step.at + float(start), step.length, step.pitch, step.velocity}, notes);
            for (const Mark& mark : marks.marks)
                addMark(cue, {mark.at + start, mark.length, mark.sign}, notes);
        }
    }

private:
    std::string_view allowed() const {
        switch (part.notation) {
            case Notation::line:
                return "1357";
            case Notation::arpeggio:
                return "0123456789";
            case Notation::bass:
                return "rRoOfFtTsSaA";
            default:
                return strokes;
        }
    }

    Place placeAt(int step) const {
        return {place.section, place.part, section.from + (first + step) / stepsPerBar};
    }

    // A mark where it stands in the cue, as one note or a chord of them.
    void addMark(const Cue& cue, const Mark& mark, std::vector<Note>& notes) {
        if (mark.at >= steps) return;
        const float at = float(mark.at), length = float(mark.length);
        switch (part.notation) {
            case Notation::hits:
                return add(cue, {at, length, 0, velocityOf(mark.sign)}, notes);
            case Notation::line:
                return add(cue, {at, length, float(degree(mark)), 0.75f}, notes);
            case Notation::arpeggio:
                return add(cue, {at, length, float(climbed(mark)), mark.at % 4 ? 0.7f : 0.95f}, notes);
            case Notation::bass:
                return add(cue, {at, length, float(bass(mark)), std::isupper(mark.sign) ? 1.0f : 0.75f},
                           notes);
            case Notation::chords:
                return addChords(cue, mark, notes);
            case Notation::melody:
                return;
        }
    }

    // The degree's pitch next to the one before it; the highest or lowest that fits where none came before.
    int degree(const Mark& mark) {
        const Chord& chord = harmony.at(first + mark.at);
        const size_t index = size_t(mark.sign - '1') / 2;
        const int tone = chord.tones[index < chord.tones.size() ? index : 0] % 12;
        const int before = hand.empty() ? (part.range.low + part.range.high) / 2 : hand.front();
        int pitch = atOrAbove(tone, before - 6);
        while (pitch > part.range.high) pitch -= 12;
        while (pitch < part.range.low) pitch += 12;
        hand.assign(1, pitch);
        return pitch;
    }

    int climbed(const Mark& mark) const {
        const Chord& chord = harmony.at(first + mark.at);
        int pitch = part.range.low - 1;
        for (int left = mark.sign - '0'; left >= 0; left--) do
                pitch++;
            while (!has(chord, pitch));
        return pitch;
    }

    int bass(const Mark& mark) const {
        const Chord& chord = harmony.at(first + mark.at);
        const int root = atOrAbove(chord.bass, part.range.low + 2);  // with room for a step below
        switch (std::tolower(mark.sign)) {
            case 'o':
                return root + 12;
            case 'f':
                return atOrAbove(fifthOf(chord) % 12, root + 1);
            case 't':
                return atOrAbove(chord.tones[1] % 12, root);
            case 's':
                return harmony.scale.stepBelow(root);
            case 'a':
                return harmony.scale.stepAbove(root);
            default:
                return root;
        }
    }

    // A chord that is held over a change moves with it.
    void addChords(const Cue& cue, const Mark& mark, std::vector<Note>& notes) {
        constexpr int half = stepsPerBar / 2;
        const int end = std::min(mark.at + mark.length, steps);
        for (int at = mark.at; at < end;) {
            int to = at;
            do to = std::min(end, ((first + to) / half + 1) * half - first);
            while (to < end && harmony.at(first + to).name == harmony.at(first + at).name);
            const Chord& chord = harmony.at(first + at);
            hand = part.voices > 0 ? voicingOf(chord, part.range, part.voices, hand) : std::vector<int>{};
            if (hand.empty()) refuse(placeAt(at), "no voicing lies in its range", chord.name);
            for (const int pitch : hand)
                add(cue, {float(at), float(to - at), float(pitch), velocityOf(mark.sign)}, notes);
            at = to;
        }
    }

    void add(const Cue& cue, const Step& step, std::vector<Note>& notes) {
        if (step.at >= float(steps)) return;
        const float pitch = step.pitch + float(cue.transpose);
        if (pitch < float(part.range.low) || pitch > float(part.range.high)) {
            const std::string name = part.notation == Notation::hits ? "tuning" : nameOf(int(pitch));
            refuse(placeAt(int(step.at)), name + " is out of its range", text);
        }
        const double bar = section.from + double(swung(step.at)) / stepsPerBar;
        const float length = swung(std::min(step.at + step.length, end)) - swung(step.at),
                    way = step.at / end;
        notes.push_back({song.secondsAt(bar), float(length * 15 / song.beatsPerMinute), pitch,
                         step.velocity * gainOf(cue.level.at(way)), cue.bright.at(way), bar * 4,
                         step.velocity});
    }

    // Where a step of the cue lies in its section, in sixteenths.
    float swung(float at) const {
        const float step = float(first) + at;
        return step + (std::lround(step) % 2 == 1 ? section.swing : 0);
    }

    const Song& song;
    const Part& part;
    const Section& section;
    const Harmony& harmony;
    std::vector<int>& hand;  // what the part's hands hold
    Place place;
    std::string_view text;
    // Sixteenths: from the section's start, and how many. Only the last note's end may lie beside the grid.
    int first = 0, steps = 0;
    float end = 0;
};

void sortByStart(std::vector<Note>& notes) {
    std::stable_sort(notes.begin(), notes.end(),
                     [](const Note& a, const Note& b) { return a.start < b.start; });
}

// What a part doubles, one note at a time, each in the octave that the part has and as it is struck: a leader
// that is turned up for its voice leaves the floor where it is.
void addFollowed(const Song& song, const Part& part, std::vector<Note>& notes) {
    std::string names = part.follows;
    std::replace(names.begin(), names.end(), ',', ' ');
    for (const std::string_view name : wordsOf(names)) {
        const Part* leader = partOf(song, name);
        if (!leader) refuse({"band", part.name, 0}, "no part has this name", name);
        if (!leader->follows.empty())
            refuse({"band", part.name, 0}, "a part that doubles others itself", name);
        for (Note note : notesOf(song, *leader)) {
            const int pitch = atOrAbove(int(note.pitch) % 12, part.range.low + 2), bar = int(note.beat / 4);
            if (pitch > part.range.high)
                refuse({song.sectionAt(bar).name, part.name, bar}, nameOf(pitch) + " is out of its range",
                       name);
            note.pitch = float(pitch);
            note.velocity = note.stroke;
            notes.push_back(note);
        }
    }
    sortByStart(notes);
    std::vector<Note> single;
    for (const Note& note : notes) {
        if (!single.empty()) {
            const float room = float(note.start - single.back().start);
            if (room < 0.001f) continue;
            single.back().length = std::min(single.back().length, room);
        }
        single.push_back(note);
    }
    notes = std::move(single);
}

}  // namespace

const Part* partOf(const Song& song, std::string_view name) {
    for (const Part& part : song.parts)
        if (part.name == name) return &part;
    return nullptr;
}

std::vector<Note> notesOf(const Song& song, const Part& part) {
    std::vector<Note> notes;
    std::vector<int> hand;
    for (const Section& section : song.sections) {
        const Harmony harmony(section);
        Reader reader(song, part, section, harmony, hand);
        for (const Cue& cue : section.cues)
            if (std::string_view(cue.part) == part.name) reader.read(cue, notes);
    }
    if (!part.follows.empty()) addFollowed(song, part, notes);
    sortByStart(notes);
    return notes;
}

void proofread(const Song& song) {
    for (const Section& section : song.sections) {
        for (const Cue& cue : section.cues) {
            const int bar = cue.bars.whole() ? section.from : int(std::floor(cue.bars.from));
            if (!partOf(song, cue.part))
                refuse({section.name, cue.part, bar}, "no part has this name", cue.part);
        }
    }
    for (const Part& part : song.parts) notesOf(song, part);
}

Chord chordAt(const Song& song, double bar) {
    const Section& section = song.sectionAt(bar);
    return Harmony(section).at(std::max(0, int((bar - section.from) * stepsPerBar + 0.001)));
}

Scale scaleAt(const Song& song, double bar) {
    return Harmony(song.sectionAt(bar)).scale;
}

}  // namespace audio
