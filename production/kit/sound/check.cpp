#include "production/kit/sound/check.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <set>

#include "production/kit/sound/arrangement.h"

namespace audio {

namespace {

struct Played {
    const Part* part;
    std::vector<Note> notes;
};

int barOf(const Note& note) {
    return int(std::floor(note.beat / 4 + 1e-6));
}

std::string where(const Song& song, int bar, const std::string& who) {
    return std::string(song.sectionAt(bar).name) + ", bar " + std::to_string(bar) + ", " + who + ": ";
}

void remarkStrangers(const Song& song, const Played& played, std::set<std::string>& remarks) {
    for (const Note& note : played.notes) {
        const double bar = note.beat / 4;
        const Chord chord = chordAt(song, bar);
        if (has(chord, int(note.pitch)) || int(note.pitch) % 12 == chord.bass ||
            scaleAt(song, bar).has(int(note.pitch)))
            continue;
        remarks.insert(where(song, barOf(note), played.part->name) + nameOf(int(note.pitch)) +
                       " is neither in " + std::string(chord.name) + " nor in " + song.sectionAt(bar).scale);
    }
}

// Semitones that sound together for a sixteenth or longer.
void remarkClashes(const Song& song, const Played& one, const Played& other, std::set<std::string>& remarks) {
    const float sixteenth = float(song.grid.sixteenth()) * 0.99f;
    for (const Note& a : one.notes) {
        for (const Note& b : other.notes) {
            if (b.start > a.start + a.length) break;
            if (&a == &b || b.start + b.length <= a.start) continue;
            const int apart = std::abs(int(a.pitch) - int(b.pitch));
            const double together =
                std::min(a.start + a.length, b.start + b.length) - std::max(a.start, b.start);
            if (apart != 1 || together < sixteenth || (one.part == other.part && a.pitch > b.pitch)) continue;
            const std::string names = one.part == other.part
                                          ? std::string(one.part->name)
                                          : std::string(one.part->name) + " and " + other.part->name;
            remarks.insert(where(song, barOf(a.start > b.start ? a : b), names) + nameOf(int(a.pitch)) +
                           " against " + nameOf(int(b.pitch)));
        }
    }
}

void remarkLongBreath(const Song& song, const Played& played, std::set<std::string>& remarks) {
    const double eighth = 2 * song.grid.sixteenth(), bar = 8 * eighth;
    double begun = -1, end = -1;
    for (const Note& note : played.notes) {
        if (note.start > end + eighth * 0.99) begun = note.start;
        end = std::max(end, note.start + note.length);
        if (end - begun > 8 * bar + 0.01) {
            remarks.insert(where(song, int(std::floor(song.grid.barAt(begun) + 1e-6)), played.part->name) +
                           "more than eight bars without a rest");
            begun = end;
        }
    }
}

void remarkRepeats(const Song& song, const std::vector<Played>& all, std::set<std::string>& remarks) {
    std::map<int, std::string> contents;
    for (const Played& played : all) {
        for (const Note& note : played.notes) {
            char text[80];
            snprintf(text, sizeof text, "%s %.2f %.0f %.2f;", played.part->name, note.beat - 4 * barOf(note),
                     note.pitch, note.velocity);
            contents[barOf(note)] += text;
        }
    }
    std::map<std::string, int> first;
    for (const auto& [bar, text] : contents) {
        const auto [earlier, fresh] = first.emplace(text, bar);
        if (!fresh)
            remarks.insert(where(song, bar, "all") + "the same as bar " + std::to_string(earlier->second));
    }
}

// Bars in which no note sounds, as where all the section's cues end before it does.
void remarkBareBars(const Song& song, const std::vector<Played>& all, std::set<std::string>& remarks) {
    std::set<int> sounding;
    for (const Played& played : all)
        for (const Note& note : played.notes)
            for (int bar = barOf(note); bar < song.grid.barAt(note.start + note.length) - 1e-3; bar++)
                sounding.insert(bar);
    for (const Section& section : song.sections)
        for (int bar = section.from; bar < section.to; bar++)
            if (!sounding.count(bar)) remarks.insert(where(song, bar, "all") + "nothing sounds");
}

}  // namespace

std::vector<std::string> remarksOn(const Song& song) {
    std::vector<Played> all;
    for (const Part& part : song.parts) all.push_back({&part, notesOf(song, part)});
    std::set<std::string> remarks;
    for (const Played& played : all) {
        if (played.part->notation == Notation::hits || played.part->role == Role::noise) continue;
        remarkStrangers(song, played, remarks);
        remarkClashes(song, played, played, remarks);
        if (played.part->role == Role::lead) remarkLongBreath(song, played, remarks);
        if (played.part->role != Role::chords) continue;
        for (const Played& other : all)
            if (other.part->role == Role::lead) remarkClashes(song, played, other, remarks);
    }
    remarkRepeats(song, all, remarks);
    remarkBareBars(song, all, remarks);
    return {remarks.begin(), remarks.end()};
}

}  // namespace audio
