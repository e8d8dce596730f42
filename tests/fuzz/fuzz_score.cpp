// The score's notation: a song of two parts as text, which is a line of whole numbers, the scale, the chords,
// what the first part plays, and whom the second doubles.
#include <algorithm>
#include <sstream>

#include "production/kit/sound/arrangement.h"
#include "production/kit/sound/check.h"
#include "tests/fuzz/target.h"

namespace {

using namespace audio;

const Place nowhere = {"section", "part", 0};

void tryMelody(std::string_view text) {
    const Pattern melody = melodyOf(text, nowhere);
    float before = 0;
    for (const Step& step : melody.steps) {
        demand(step.at >= before && step.length > 0 && step.at + step.length <= float(melody.length));
        demand(step.pitch >= 11 && step.pitch <= 132 && step.velocity > 0 && step.velocity <= 1);
        before = step.at;
    }
    demand(barsOf(text, 0, int(text.size()) + 1) == text);
}

void tryMarks(std::string_view text) {
    const Marks read = marksOf(text, "Xxo:0123456789rRoOfFtTsSaA", nowhere);
    int before = 0;
    for (const Mark& mark : read.marks) {
        demand(mark.at >= before && mark.length > 0 && mark.at + mark.length <= read.length);
        before = mark.at + mark.length;
    }
}

void trySong(const Song& song) {
    const Section& section = song.sections.front();
    const double begin = song.grid.secondsAt(section.from), end = song.grid.secondsAt(section.to);
    for (const std::string& line : problemsOf(song)) readAll(line.data(), line.size());
    for (const Part& part : song.parts) {
        double before = begin;
        for (const Note& note : notesOf(song, part)) {
            demand(note.start >= before && note.length > 0);
            demand(note.start + note.length <= end + song.grid.sixteenth());  // what swings ends later
            demand(note.pitch >= float(part.range.low) && note.pitch <= float(part.range.high));
            demand(note.velocity > 0 && note.velocity <= 1);
            before = note.start;
        }
    }
    for (const std::string& remark : remarksOn(song)) readAll(remark.data(), remark.size());
}

}  // namespace

void tryInput(std::string_view input) {
    std::istringstream lines{std::string(input)};
    std::string numbers, scale, chords, pattern, leaders;
    for (std::string* line : {&numbers, &scale, &chords, &pattern, &leaders}) std::getline(lines, *line);
    std::istringstream words(numbers);
    const auto number = [&words](int least, int most) {
        int value = 0;
        words >> value;
        return std::clamp(value, least, most);
    };
    const auto notation = Notation(number(0, 5));
    const auto role = Role(number(0, 4));
    const int low = number(-24, 108), high = low + number(0, 36), voices = number(0, 5);
    const int transpose = number(-48, 48), from = number(-9, 99), bars = number(1, 24);
    const Bars part = {float(number(-160, 2000)) / 16, float(number(-160, 2000)) / 16};
    const float swing = float(number(0, 99)) / 100;

    if (notation == Notation::melody)
        tryMelody(pattern);
    else
        tryMarks(pattern);
    Song song{};
    song.grid.beatsPerMinute = 126;
    song.parts = {{"one", role, notation, {low, high}, {}, {}, voices},
                  {"two", Role::chords, Notation::bass, {low, high}, {}, {}, 0, leaders}};
    song.sections = {{"section",
                      from,
                      from + bars,
                      scale.c_str(),
                      chords.c_str(),
                      0,
                      {},
                      {{"one", pattern, part, 0, 0.5f, transpose}},
                      swing}};
    trySong(song);
}
