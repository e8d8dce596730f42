#include "production/kit/sound/harmony.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>

namespace audio {

namespace {

struct Kind {
    std::string_view name;
    std::vector<int> tones;
};

const Kind qualities[] = {
    {"", {0, 4, 7}},        {"m", {0, 3, 7}},         {"5", {0, 7}},           {"dim", {0, 3, 6}},
    {"sus2", {0, 2, 7}},    {"sus4", {0, 5, 7}},      {"7", {0, 4, 7, 10}},    {"m7", {0, 3, 7, 10}},
    {"6", {0, 4, 7, 9}},    {"maj7", {0, 4, 7, 11}},  {"add9", {0, 4, 7, 14}}, {"madd9", {0, 3, 7, 14}},
    {"m9", {0, 3, 10, 14}}, {"maj9", {0, 4, 11, 14}}, {"7b9", {0, 4, 10, 13}}, {"m6", {0, 3, 7, 9}},
};

const Kind modes[] = {
    {"minor", {0, 2, 3, 5, 7, 8, 10}},    {"dorian", {0, 2, 3, 5, 7, 9, 10}},
    {"phrygian", {0, 1, 3, 5, 7, 8, 10}}, {"major", {0, 2, 4, 5, 7, 9, 11}},
    {"harmonic", {0, 2, 3, 5, 7, 8, 11}},
};

template <size_t count>
const Kind* find(const Kind (&kinds)[count], std::string_view name) {
    const auto found =
        std::find_if(std::begin(kinds), std::end(kinds), [&](const Kind& kind) { return kind.name == name; });
    return found == std::end(kinds) ? nullptr : found;
}

std::optional<Chord> chordOf(std::string_view name) {
    std::string_view rest = name;
    const int root = takePitchClass(rest);
    if (root < 0) return std::nullopt;
    const size_t slash = rest.find('/');
    int bass = root;
    if (slash != std::string_view::npos) {
        std::string_view below = rest.substr(slash + 1);
        bass = takePitchClass(below);
        if (bass < 0 || !below.empty()) return std::nullopt;
    }
    const Kind* quality = find(qualities, rest.substr(0, slash));
    if (!quality) return std::nullopt;
    Chord chord{bass, quality->tones, name};
    for (int& tone : chord.tones) tone += root;
    return chord;
}

// What a setting costs before it moves: even gaps and a middle place sound best.
float cost(const std::vector<int>& voicing, const Chord& chord, Span range) {
    float sum = 0, middle = 0;
    for (size_t i = 0; i < voicing.size(); i++) {
        middle += float(voicing[i]) / float(voicing.size());
        const int gap = i ? voicing[i] - voicing[i - 1] : 5;
        if (gap > 9) sum += float(gap - 9);
        if (gap < 3) sum += 3;
    }
    // A third in the depth growls; the root there, or the fifth, carries.
    const int lowest = voicing.front() % 12;
    if (lowest != chord.tones[0] % 12 && lowest != (chord.tones[0] + 7) % 12) sum += 4;
    return sum + 0.4f * std::fabs(middle - float(range.low + range.high) / 2);
}

struct Search {
    const Chord& chord;
    Span range;
    size_t voices;
    const std::vector<int>& previous;
    std::vector<int> current, best;
    float bestCost = 1e9f;

    void consider() {
        size_t there = 0;
        for (const int tone : chord.tones)
            there += std::any_of(current.begin(), current.end(),
                                 [&](int pitch) { return pitch % 12 == tone % 12; });
        const size_t wanted = std::min(voices, chord.tones.size());
        float sum = cost(current, chord, range) + 12.0f * float(wanted - std::min(wanted, there));
        if (previous.size() == current.size())
            for (size_t i = 0; i < current.size(); i++) sum += float(std::abs(current[i] - previous[i]));
        if (sum >= bestCost) return;
        bestCost = sum;
        best = current;
    }
    void go(int from) {
        if (current.size() == voices) return consider();
        for (int pitch = from; pitch <= range.high; pitch++) {
            if (!has(chord, pitch)) continue;
            current.push_back(pitch);
            // The deeper, the wider: fifths below E3, seconds only from C4 on.
            go(pitch + (pitch < 52 ? 5 : pitch < 60 ? 3 : 2));
            current.pop_back();
        }
    }
};

}  // namespace

bool Scale::has(int pitch) const {
    return std::find(tones.begin(), tones.end(), pitch % 12) != tones.end();
}

int Scale::stepFrom(int pitch, int way) const {
    do pitch += way;
    while (!has(pitch));
    return pitch;
}

std::vector<Chord> chordsOf(std::string_view names, const Place& place) {
    std::vector<Chord> chords;
    Place here = place;
    for (const std::string_view bar : wordsOf(names)) {
        const size_t comma = bar.find(',');
        const std::string_view second = comma == std::string_view::npos ? bar : bar.substr(comma + 1);
        for (const std::string_view name : {bar.substr(0, comma), second}) {
            const auto chord = chordOf(name);
            if (!chord) {
                refuse(here, "no chord", name);
                return {};
            }
            chords.push_back(*chord);
        }
        here.bar++;
    }
    return chords;
}

Scale scaleOf(std::string_view name, const Place& place) {
    std::string_view rest = name;
    const int root = takePitchClass(rest);
    const Kind* mode = root < 0 || rest.empty() ? nullptr : find(modes, rest.substr(1));
    if (!mode) {
        refuse(place, "no scale", name);
        return {};
    }
    Scale scale{mode->tones};
    for (int& tone : scale.tones) tone = (tone + root) % 12;
    return scale;
}

bool has(const Chord& chord, int pitch) {
    return std::any_of(chord.tones.begin(), chord.tones.end(),
                       [&](int tone) { return (tone - pitch) % 12 == 0; });
}

int fifthOf(const Chord& chord) {
    for (const int tone : chord.tones)
        if (tone - chord.tones[0] >= 6 && tone - chord.tones[0] <= 8) return tone;
    return chord.tones[0] + 7;
}

int atOrAbove(int pitchClass, int lowest) {
    return lowest + ((pitchClass - lowest) % 12 + 12) % 12;
}

std::vector<int> voicingOf(const Chord& chord, Span range, int voices, const std::vector<int>& previous) {
    Search search{chord, range, size_t(voices), previous, {}, {}};
    search.go(range.low);
    return search.best;
}

}  // namespace audio
