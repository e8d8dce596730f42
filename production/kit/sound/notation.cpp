#include "production/kit/sound/notation.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace audio {

namespace {

constexpr int longest = 4096 * stepsPerBar;  // that a melody may be: floats tell its sixteenths apart

Place inBar(Place place, int step) {
    place.bar += step / stepsPerBar;
    return place;
}

std::optional<float> pitchOf(std::string_view name) {
    std::string_view rest = name;
    const int pitchClass = takePitchClass(rest);
    if (pitchClass < 0 || rest.size() != 1 || rest[0] < '0' || rest[0] > '9') return std::nullopt;
    // Cb4 is the B below it and B#4 the C above it: the octave's number goes with the letter.
    const int shift = name[0] == 'C' && name[1] == 'b' ? -12 : name[0] == 'B' && name[1] == '#' ? 12 : 0;
    return float(pitchClass + 12 * (rest[0] - '0' + 1) + shift);
}

// "Bb4+D5:4'" at the pattern's end, which it lengthens. What is wrong with it, or nothing.
const char* addWord(std::string_view word, Pattern& pattern) {
    const size_t colon = word.find(':');
    if (colon == std::string_view::npos) return "a note without a length";
    int length = 0;
    const char* const end = word.data() + word.size();
    const auto [behind, error] = std::from_chars(word.data() + colon + 1, end, length);
    if (error == std::errc::invalid_argument || (error == std::errc() && length <= 0))
        return "a note without a length";
    if (error != std::errc() || length > longest - pattern.length) return "too long";
    const std::string_view accent(behind, size_t(end - behind));
    if (accent != "" && accent != "'" && accent != ",") return "an unknown sign";
    const float velocity = accent == "'" ? 1.0f : accent == "," ? 0.5f : 0.75f;
    const std::string_view stack = word.substr(0, colon);
    if (stack != "-") {
        for (const std::string_view name : split(stack, '+')) {
            const auto pitch = pitchOf(name);
            if (!pitch) return "no pitch";
            pattern.steps.push_back({float(pattern.length), float(length), *pitch, velocity});
        }
    }
    pattern.length += length;
    return nullptr;
}

// Refuses a text, of which nothing is read then.
template <class Read>
Read refused(const Place& place, const char* what, std::string_view text) {
    refuse(place, what, text);
    return {};
}

}  // namespace

void refuse(const Place& place, const std::string& what, std::string_view text) {
    if (place.problems)
        place.problems->push_back(place.section + ", bar " + std::to_string(place.bar) + ", " + place.part +
                                  ": " + what + ": \"" + std::string(text) + "\"");
}

Pattern melodyOf(std::string_view text, const Place& place) {
    Pattern pattern;
    const std::vector<std::string_view> bars = split(text, '|');
    for (size_t bar = 0; bar < bars.size(); bar++) {
        const Place here = inBar(place, int(bar) * stepsPerBar);
        for (const std::string_view word : wordsOf(bars[bar]))
            if (const char* wrong = addWord(word, pattern)) return refused<Pattern>(here, wrong, word);
        const int over = pattern.length - int(bar + 1) * stepsPerBar;
        // A single bar without a border may go on: a long note needs none.
        if (over > 0 && bars.size() > 1) return refused<Pattern>(here, "too long for its bar", bars[bar]);
        if (over < 0 && bar + 1 < bars.size())
            return refused<Pattern>(here, "doesn't fill its bar", bars[bar]);
    }
    return pattern;
}

std::string barsOf(std::string_view melody, int from, int to) {
    const std::vector<std::string_view> bars = split(melody, '|');
    std::string text;
    for (int bar = from; bar < to && bar < int(bars.size()); bar++) {
        if (bar > from) text += '|';
        text += bars[bar];
    }
    return text;
}

Marks marksOf(std::string_view text, std::string_view allowed, const Place& place) {
    Marks read;
    const std::vector<std::string_view> bars = wordsOf(text);
    bool sounding = false;
    for (size_t bar = 0; bar < bars.size(); bar++) {
        const Place here = inBar(place, read.length);
        if (bars[bar].size() > stepsPerBar) return refused<Marks>(here, "too long for its bar", bars[bar]);
        if (bars[bar].size() < stepsPerBar && bar + 1 < bars.size())
            return refused<Marks>(here, "doesn't fill its bar", bars[bar]);
        for (const char sign : bars[bar]) {
            const int at = read.length++;
            if (sign == '-' && sounding) {
                read.marks.back().length++;
            } else if (sign == '.' || sign == '-') {
                sounding = false;
            } else {
                if (allowed.find(sign) == std::string_view::npos)
                    return refused<Marks>(here, "an unknown sign", bars[bar]);
                read.marks.push_back({at, 1, sign});
                sounding = true;
            }
        }
    }
    return read;
}

float velocityOf(char stroke) {
    return stroke == 'X' ? 1.0f : stroke == 'x' ? 0.75f : stroke == 'o' ? 0.45f : 0.25f;
}

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

std::vector<std::string_view> split(std::string_view text, char border) {
    std::vector<std::string_view> pieces;
    for (size_t at = 0; at <= text.size();) {
        const size_t end = std::min(text.find(border, at), text.size());
        pieces.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return pieces;
}

std::vector<std::string_view> wordsOf(std::string_view text) {
    std::vector<std::string_view> words = split(text, ' ');
    std::erase(words, "");
    return words;
}

std::string nameOf(int pitch) {
    constexpr const char* names[] = {"C", "Db", "D", "Eb", "E", "F", "F#", "G", "Ab", "A", "Bb", "B"};
    const int pitchClass = (pitch % 12 + 12) % 12;
    return names[pitchClass] + std::to_string((pitch - pitchClass) / 12 - 1);
}

}  // namespace audio
