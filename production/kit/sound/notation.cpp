#include "production/kit/sound/notation.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace audio {

namespace {

[[noreturn]] void refuse(const char* what, std::string_view text) {
    fprintf(stderr, "%s can't be read: \"%s\"\n", what, std::string(text).c_str());
    exit(1);
}

constexpr int stepsPerBar = 16, stepsPerBeat = 4;

// Reads "Eb", "F#", "G" off the front of the text as a pitch class; -1 where there is none.
int takePitchClass(std::string_view& text) {
    constexpr std::string_view letters = "C D EF G A B";
    if (text.empty()) return -1;
    const size_t place = letters.find(text[0]);
    if (place == std::string_view::npos || text[0] == ' ') return -1;
    int pitchClass = int(place);
    text.remove_prefix(1);
    if (!text.empty() && (text[0] == 'b' || text[0] == '#')) {
        pitchClass += text[0] == '#' ? 1 : -1;
        text.remove_prefix(1);
    }
    return (pitchClass + 12) % 12;
}

struct Quality {
    std::string_view name;
    std::vector<int> tones;
};

const Quality qualities[] = {
    {"", {0, 4, 7}},        {"m", {0, 3, 7}},         {"5", {0, 7}},           {"dim", {0, 3, 6}},
    {"sus2", {0, 2, 7}},    {"sus4", {0, 5, 7}},      {"7", {0, 4, 7, 10}},    {"m7", {0, 3, 7, 10}},
    {"6", {0, 4, 7, 9}},    {"maj7", {0, 4, 7, 11}},  {"add9", {0, 4, 7, 14}}, {"madd9", {0, 3, 7, 14}},
    {"m9", {0, 3, 10, 14}}, {"maj9", {0, 4, 11, 14}}, {"7b9", {0, 4, 10, 13}},
};

// The words of a text split by blanks.
std::vector<std::string_view> wordsOf(std::string_view text) {
    std::vector<std::string_view> words;
    size_t at = 0;
    while ((at = text.find_first_not_of(' ', at)) != std::string_view::npos) {
        const size_t end = std::min(text.find(' ', at), text.size());
        words.push_back(text.substr(at, end - at));
        at = end;
    }
    return words;
}

float pitchOf(std::string_view name, std::string_view whole) {
    std::string_view rest = name;
    const int pitchClass = takePitchClass(rest);
    if (pitchClass < 0 || rest.size() != 1 || !std::isdigit(rest[0])) refuse("A pitch", whole);
    // Cb4 is the B below it and B#4 the C above it: the octave's number goes with the letter.
    const int shift = name[0] == 'C' && name[1] == 'b' ? -12 : name[0] == 'B' && name[1] == '#' ? 12 : 0;
    return float(pitchClass + 12 * (rest[0] - '0' + 1) + shift);
}

int atOrAbove(int pitchClass, int lowest) {
    return lowest + ((pitchClass - lowest) % 12 + 12) % 12;
}

// Walks marks, calling sound(mark, bar) for each one that is no rest or hold and giving the step it returns
// its place and length.
template <class Sound>
Pattern walkMarks(std::string_view text, Sound sound) {
    Pattern pattern;
    size_t newest = 0;  // the first of the steps that the last mark made
    for (const char mark : text) {
        if (mark == ' ') continue;
        const float at = float(pattern.length++);
        if (mark == '.') {
            newest = pattern.steps.size();
        } else if (mark == '-') {
            for (size_t i = newest; i < pattern.steps.size(); i++) pattern.steps[i].length += 1;
        } else {
            newest = pattern.steps.size();
            sound(mark, int(at) / stepsPerBar, pattern.steps);
            for (size_t i = newest; i < pattern.steps.size(); i++) {
                pattern.steps[i].at = at;
                pattern.steps[i].length = 1;
            }
        }
    }
    return pattern;
}

float velocityOf(char mark, std::string_view text) {
    switch (mark) {
        case 'X':
            return 1.0f;
        case 'x':
            return 0.75f;
        case 'o':
            return 0.45f;
    }
    refuse("A pattern of hits", text);
}

}  // namespace

Chord chordOf(std::string_view name) {
    std::string_view rest = name;
    const int root = takePitchClass(rest);
    if (root < 0) refuse("A chord", name);
    const size_t slash = rest.find('/');
    int bass = root;
    if (slash != std::string_view::npos) {
        std::string_view below = rest.substr(slash + 1);
        bass = takePitchClass(below);
        if (bass < 0 || !below.empty()) refuse("A chord", name);
    }
    const std::string_view kind = rest.substr(0, slash);
    const auto quality = std::find_if(std::begin(qualities), std::end(qualities),
                                      [&](const Quality& each) { return each.name == kind; });
    if (quality == std::end(qualities)) refuse("A chord", name);
    Chord chord{bass, quality->tones};
    for (int& tone : chord.tones) tone += root;
    return chord;
}

std::vector<Chord> chordsOf(std::string_view names) {
    std::vector<Chord> chords;
    for (const std::string_view name : wordsOf(names)) chords.push_back(chordOf(name));
    return chords;
}

Pattern melodyOf(std::string_view text) {
    Pattern pattern;
    for (const std::string_view word : wordsOf(text)) {
        if (word == "|") {
            if (pattern.length % stepsPerBar) refuse("A melody's bar line", text);
            continue;
        }
        const size_t colon = word.find(':');
        if (colon == std::string_view::npos) refuse("A melody", word);
        const int length = atoi(std::string(word.substr(colon + 1)).c_str());
        if (length <= 0) refuse("A melody", word);
        const float velocity = word.back() == '\'' ? 1.0f : word.back() == ',' ? 0.5f : 0.75f;
        std::string_view stack = word.substr(0, colon);
        while (stack != "-" && !stack.empty()) {
            const size_t plus = std::min(stack.find('+'), stack.size());
            const float pitch = pitchOf(stack.substr(0, plus), word);
            pattern.steps.push_back({float(pattern.length), float(length), pitch, velocity});
            stack.remove_prefix(std::min(plus + 1, stack.size()));
        }
        pattern.length += length;
    }
    return pattern;
}

Pattern hitsOf(std::string_view text) {
    return walkMarks(text, [&](char mark, int, std::vector<Step>& steps) {
        steps.push_back({0, 0, 0, velocityOf(mark, text)});
    });
}

Pattern arpeggioOf(std::string_view text, const std::vector<Chord>& chords, int lowest) {
    Pattern pattern = walkMarks(text, [&](char mark, int bar, std::vector<Step>& steps) {
        if (!std::isdigit(mark)) refuse("An arpeggio", text);
        const Chord& chord = chords[bar % chords.size()];
        const int count = int(chord.tones.size()), tone = mark - '0';
        const int root = atOrAbove(chord.tones[0] % 12, lowest);
        const int pitch = root + chord.tones[tone % count] - chord.tones[0] + 12 * (tone / count);
        steps.push_back({0, 0, float(pitch), 0.7f});
    });
    for (Step& step : pattern.steps)
        if (int(step.at) % stepsPerBeat == 0) step.velocity = 0.95f;
    return pattern;
}

Pattern bassOf(std::string_view text, const std::vector<Chord>& chords, int lowest) {
    return walkMarks(text, [&](char mark, int bar, std::vector<Step>& steps) {
        const int bass = atOrAbove(chords[bar % chords.size()].bass, lowest);
        int interval = 0;
        switch (std::tolower(mark)) {
            case 'r':
                interval = 0;
                break;
            case 'o':
                interval = 12;
                break;
            case 'f':
                interval = 7;
                break;
            case 's':
                interval = -2;
                break;
            case 'h':
                interval = 1;
                break;
            default:
                refuse("A bass line", text);
        }
        steps.push_back({0, 0, float(bass + interval), std::isupper(mark) ? 1.0f : 0.75f});
    });
}

Pattern stabsOf(std::string_view text, const std::vector<Chord>& chords, int centre) {
    return walkMarks(text, [&](char mark, int bar, std::vector<Step>& steps) {
        for (const int tone : chords[bar % chords.size()].tones)
            steps.push_back({0, 0, float(atOrAbove(tone % 12, centre - 6)), velocityOf(mark, text)});
    });
}

}  // namespace audio
