#include "production/kit/sound/arrangement.h"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace audio {

const Section& Song::sectionAt(double bar) const {
    const Section* found = &sections.front();
    for (const Section& section : sections)
        if (section.from <= bar + 1e-6) found = &section;
    return *found;
}

namespace {

// A section's chords and scale, read.
struct Harmony {
    std::vector<Chord> chords;  // two a bar
    Scale scale;

    explicit Harmony(const Section& section, Problems* problems = nullptr) {
        const Place place = {section.name, "harmony", section.from, problems};
        chords = chordsOf(section.chords, place);
        scale = scaleOf(section.scale, place);
        if (wordsOf(section.chords).empty()) refuse(place, "no chord", section.chords);
    }
    bool readable() const { return !chords.empty() && !scale.tones.empty(); }
    // step: sixteenths from the section's first bar.
    const Chord& at(int step) const { return chords[size_t(step / half) % chords.size()]; }
    // The next step on which the chord is another one, but `end` at the latest.
    int changeAfter(int step, int end) const {
        int next = step;
        do next = (next / half + 1) * half;
        while (next < end && at(next).name == at(step).name);
        return std::min(next, end);
    }

private:
    static constexpr int half = stepsPerBar / 2;
};

// Turns one cue's text into notes.
struct Reader {
    const Song& song;
    const Part& part;
    const Section& section;
    const Harmony& harmony;  // readable
    const Cue& cue;
    std::vector<int>& hand;  // what the part's hands hold
    // Sixteenths: from the section's start, and how many. Only the last note's end may lie beside the grid.
    int first = 0, steps = 0;
    float end = 0;
    Place place{};
    Problems problems{};
    std::vector<Note> notes{};

    // None where something can't be read; the first line on it goes to `told`.
    std::vector<Note> read(Problems* told) {
        readBars();
        if (problems.empty()) readPattern();
        if (problems.empty()) return notes;
        if (told) told->push_back(problems.front());
        return {};
    }

    void readBars() {
        const Bars bars = cue.bars.whole() ? Bars{float(section.from), float(section.to)} : cue.bars;
        place = {section.name, part.name, int(std::floor(bars.from)), &problems};
        if (bars.from < float(section.from) || bars.to > float(section.to) || bars.from >= bars.to)
            return refuse(place, "bars that the section doesn't have", cue.pattern);
        first = int(std::lround((bars.from - float(section.from)) * stepsPerBar));
        end = (bars.to - bars.from) * stepsPerBar;
        steps = int(std::ceil(end - 0.01f));
    }

    void readPattern() {
        const bool isMelody = part.notation == Notation::melody;
        const Pattern melody = isMelody ? melodyOf(cue.pattern, place) : Pattern{};
        const Marks marks = isMelody ? Marks{} : marksOf(cue.pattern, allowed(), place);
        const int length = std::max(melody.length, marks.length);
        if (length == 0) return refuse(place, "nothing to play", cue.pattern);
        if (length > steps) return refuse(place, "longer than its bars", cue.pattern);
        for (int start = 0; start < steps; start += length) {
            for (const Step& step : melody.steps)
                add({step.at + float(start), step.length, step.pitch, step.velocity});
            for (const Mark& mark : marks.marks) addMark({mark.at + start, mark.length, mark.sign});
        }
    }

    std::string_view allowed() const {
        if (part.notation == Notation::line) return "1357";
        if (part.notation == Notation::arpeggio) return "0123456789";
        return part.notation == Notation::bass ? "rRoOfFtTsSaA" : strokes;
    }

    Place placeAt(int step) const {
        return {place.section, place.part, section.from + (first + step) / stepsPerBar, place.problems};
    }

    // A mark where it stands in the cue, as one note or a chord of them.
    void addMark(const Mark& mark) {
        if (mark.at >= steps) return;
        const auto addPitch = [&](int pitch, float velocity) {
            add({float(mark.at), float(mark.length), float(pitch), velocity});
        };
        const Notation read = part.notation;
        if (read == Notation::hits) addPitch(0, velocityOf(mark.sign));
        if (read == Notation::line) addPitch(degree(mark), 0.75f);
        if (read == Notation::arpeggio) addPitch(climbed(mark), mark.at % 4 ? 0.7f : 0.95f);
        if (read == Notation::bass) addPitch(bass(mark), std::isupper(mark.sign) ? 1.0f : 0.75f);
        if (read == Notation::chords) addChords(mark);
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

    // The chord's tone of that number, counted up from the part's lowest pitch.
    int climbed(const Mark& mark) const {
        const Chord& chord = harmony.at(first + mark.at);
        const auto toneFrom = [&](int pitch) {
            while (!has(chord, pitch)) pitch++;
            return pitch;
        };
        int pitch = toneFrom(part.range.low);
        for (int left = mark.sign - '0'; left > 0; left--) pitch = toneFrom(pitch + 1);
        return pitch;
    }

    int bass(const Mark& mark) const {
        const Chord& chord = harmony.at(first + mark.at);
        const int root = atOrAbove(chord.bass, part.range.low + 2);  // with room for a step below
        const int sign = std::tolower(mark.sign);
        if (sign == 'o') return root + 12;
        if (sign == 'f') return atOrAbove(fifthOf(chord) % 12, root + 1);
        if (sign == 't') return atOrAbove(chord.tones[1] % 12, root);
        if (sign == 's') return harmony.scale.stepFrom(root, -1);
        return sign == 'a' ? harmony.scale.stepFrom(root, 1) : root;
    }

    // A chord that is held over a change moves with it.
    void addChords(const Mark& mark) {
        const int last = std::min(mark.at + mark.length, steps);
        for (int at = mark.at, to; at < last; at = to) {
            to = harmony.changeAfter(first + at, first + last) - first;
            const Chord& chord = harmony.at(first + at);
            hand = part.voices > 0 ? voicingOf(chord, part.range, part.voices, hand) : std::vector<int>{};
            if (hand.empty()) refuse(placeAt(at), "no voicing lies in its range", chord.name);
            for (const int pitch : hand)
                add({float(at), float(to - at), float(pitch), velocityOf(mark.sign)});
        }
    }

    void add(const Step& step) {
        if (step.at >= float(steps)) return;
        const float pitch = step.pitch + float(cue.transpose);
        if (pitch < float(part.range.low) || pitch > float(part.range.high)) {
            const std::string name = part.notation == Notation::hits ? "tuning" : nameOf(int(pitch));
            return refuse(placeAt(int(step.at)), name + " is out of its range", cue.pattern);
        }
        const double bar = section.from + double(swung(step.at)) / stepsPerBar;
        const float length = swung(std::min(step.at + step.length, end)) - swung(step.at),
                    way = step.at / end;
        notes.push_back({song.grid.secondsAt(bar), float(length * 15 / song.grid.beatsPerMinute), pitch,
                         step.velocity * gainOf(cue.level.at(way)), cue.bright.at(way), bar * 4,
                         step.velocity});
    }

    // Where a step of the cue lies in its section, in sixteenths.
    float swung(float at) const {
        const float step = float(first) + at;
        return step + (std::lround(step) % 2 == 1 ? section.swing : 0);
    }
};

// The notes of the parts that a part doubles, each in the octave that it has and as it is struck: a leader
// that is turned up for its voice leaves the floor where it is.
std::vector<Note> followed(const Song& song, const Part& part, Problems* problems) {
    std::vector<Note> notes;
    for (const std::string_view name : wordsOf(part.follows)) {
        const Part* leader = partOf(song, name);
        const Place place = {"band", part.name, 0, problems};
        if (!leader || !leader->follows.empty()) {
            refuse(place, leader ? "a part that doubles others itself" : "no part has this name", name);
            continue;
        }
        for (Note note : notesOf(song, *leader)) {
            const int pitch = atOrAbove(int(note.pitch) % 12, part.range.low + 2), bar = int(note.beat / 4);
            if (pitch > part.range.high) {
                refuse({song.sectionAt(bar).name, part.name, bar, problems},
                       nameOf(pitch) + " is out of its range", name);
                break;
            }
            note.pitch = float(pitch);
            note.velocity = note.stroke;
            notes.push_back(note);
        }
    }
    return notes;
}

// One note at a time: of those that begin together the first, and each until the next begins.
std::vector<Note> single(const std::vector<Note>& notes) {
    std::vector<Note> left;
    for (const Note& note : notes) {
        if (!left.empty()) {
            const float room = float(note.start - left.back().start);
            if (room < 0.001f) continue;
            left.back().length = std::min(left.back().length, room);
        }
        left.push_back(note);
    }
    return left;
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
        if (!harmony.readable()) continue;
        for (const Cue& cue : section.cues) {
            if (std::string_view(cue.part) != part.name) continue;
            const std::vector<Note> read = Reader{song, part, section, harmony, cue, hand}.read(nullptr);
            notes.insert(notes.end(), read.begin(), read.end());
        }
    }
    const std::vector<Note> doubled = followed(song, part, nullptr);
    notes.insert(notes.end(), doubled.begin(), doubled.end());
    std::stable_sort(notes.begin(), notes.end(),
                     [](const Note& a, const Note& b) { return a.start < b.start; });
    return part.follows.empty() ? notes : single(notes);
}

Problems problemsOf(const Song& song) {
    Problems problems;
    for (const Section& section : song.sections) {
        const Harmony harmony(section, &problems);
        for (const Cue& cue : section.cues) {
            const Part* part = partOf(song, cue.part);
            const int bar = cue.bars.whole() ? section.from : int(std::floor(cue.bars.from));
            std::vector<int> hand;
            if (!part)
                refuse({section.name, cue.part, bar, &problems}, "no part has this name", cue.part);
            else if (harmony.readable())
                Reader{song, *part, section, harmony, cue, hand}.read(&problems);
        }
    }
    for (const Part& part : song.parts) followed(song, part, &problems);
    return problems;
}

Chord chordAt(const Song& song, double bar) {
    const Section& section = song.sectionAt(bar);
    return Harmony(section).at(std::max(0, int((bar - section.from) * stepsPerBar + 0.001)));
}

Scale scaleAt(const Song& song, double bar) {
    return Harmony(song.sectionAt(bar)).scale;
}

}  // namespace audio
