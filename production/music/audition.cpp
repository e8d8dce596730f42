#include "production/music/audition.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <string_view>

#include "production/kit/sound/arrangement.h"
#include "production/kit/sound/check.h"
#include "production/kit/sound/wav.h"
#include "production/music/soundtrack.h"

using namespace audio;

namespace {

constexpr char usage[] =
    "usage: forge --hear FILE.wav [--bars FROM-TO] [--parts NAME,...]   (bar TO is where it ends)\n"
    "       forge --stems FOLDER   (drums, noise, bass, chords and lead, which add up to the soundtrack)\n"
    "       forge --parts FOLDER   (every part by itself, which do so too)\n"
    "       forge --check\n";

constexpr char unwritten[] = "%s can't be written\n";

struct Wish {
    std::string file;
    double from = 0, to = 0;  // bars
    std::vector<std::string_view> parts;
};

bool readBars(const std::string& words, Wish& wish) {
    int read = 0;
    return sscanf(words.c_str(), "%lf-%lf%n", &wish.from, &wish.to, &read) == 2 &&
           read == int(words.size()) && wish.from < wish.to;
}

int complain(const char* format, const std::string& what) {
    fprintf(stderr, format, what.c_str());
    return 1;
}

int complainOfPart(std::string_view name, const Song& song) {
    fprintf(stderr, "No part has the name \"%s\"; there are", std::string(name).c_str());
    for (const Part& part : song.parts) fprintf(stderr, " %s", part.name);
    fputc('\n', stderr);
    return 1;
}

Window windowOf(const Song& song, double from, double to) {
    const size_t all = frameAt(song.seconds);
    return {std::min(frameAt(song.grid.secondsAt(from)), all),
            std::min(frameAt(song.grid.secondsAt(to)), all)};
}

bool playsIn(const Song& song, const Part& part, double from, double to) {
    const std::vector<Note> notes = notesOf(song, part);
    return std::any_of(notes.begin(), notes.end(), [&](const Note& note) {
        return note.start < song.grid.secondsAt(to) - 0.01 &&
               note.start + note.length > song.grid.secondsAt(from) + 0.01;
    });
}

// Names those of the wish's parts that rest all the time, and who plays.
void tellRests(const Song& song, const Wish& wish) {
    std::string resting, playing;
    for (const Part& part : song.parts) {
        const bool plays = playsIn(song, part, wish.from, wish.to);
        const bool wished = std::find(wish.parts.begin(), wish.parts.end(), part.name) != wish.parts.end();
        if (plays) playing += std::string(" ") + part.name;
        if (wished && !plays) resting += std::string(" ") + part.name;
    }
    if (resting.empty()) return;
    fprintf(stderr, "Bars %g to %g: resting:%s; playing:%s\n", wish.from, wish.to, resting.c_str(),
            playing.c_str());
}

int hear(const Song& song, const std::vector<std::string>& words) {
    Wish wish{words[1], double(song.sections.front().from), double(song.sections.back().to), {}};
    for (size_t i = 2; i < words.size(); i += 2) {
        if (i + 1 == words.size()) return complain("%s needs a word behind it\n", words[i]);
        if (words[i] == "--bars") {
            if (!readBars(words[i + 1], wish)) return complain("No bars: \"%s\"\n", words[i + 1]);
        } else if (words[i] == "--parts") {
            wish.parts = split(words[i + 1], ',');
        } else {
            return complain("forge doesn't know \"%s\"\n", words[i]);
        }
    }
    const Window window = windowOf(song, wish.from, wish.to);
    if (window.from >= window.to) return complain("%s would be empty: no such bars\n", wish.file);
    for (const std::string_view part : wish.parts)
        if (!partOf(song, part)) return complainOfPart(part, song);
    tellRests(song, wish);
    const Stereo heard = wish.parts.empty() ? finish(song, window).sound : perform(song, window, wish.parts);
    return writeWav(wish.file, heard) ? 0 : complain(unwritten, wish.file);
}

// Every part as a stem of its own.
std::vector<Stem> partsOf(const Song& song) {
    std::vector<Stem> parts;
    for (const Part& part : song.parts) parts.push_back({part.name, {part.name}});
    return parts;
}

int writeStems(const Song& song, const std::vector<Stem>& stems, const std::filesystem::path& folder) {
    std::error_code failure;
    std::filesystem::create_directories(folder, failure);
    if (failure) return complain("%s can't be made\n", folder.string());
    const bool written =
        finishStems(song, {0, frameAt(song.seconds)}, stems, [&](const Stem& stem, const Stereo& sound) {
            const std::string file = folder / (stem.name + ".wav");
            if (!writeWav(file, sound)) {
                complain(unwritten, file);
                return false;
            }
            printf("%s\n", stem.name.c_str());
            fflush(stdout);
            return true;
        });
    return written ? 0 : 1;
}

// How far the limiter goes in each section.
void printLimiter(const Song& song) {
    const std::vector<float> gain = finish(song, {0, frameAt(song.seconds)}).gains.limiter;
    for (const Section& section : song.sections) {
        const Window window = windowOf(song, section.from, section.to);
        float deepest = 1;
        size_t deep = 0;
        for (size_t i = window.from; i < window.to; i++) {
            deepest = std::min(deepest, gain[i]);
            deep += gain[i] < gainOf(-3);
        }
        printf("%-10s limiter down to %5.1f dB, over 3 dB for %4.1f %%\n", section.name,
               20 * std::log10(deepest), 100.0 * double(deep) / double(window.to - window.from));
    }
}

int check(const Song& song) {
    const bool whole = proofread(song);
    for (const std::string& remark : remarksOn(song)) printf("%s\n", remark.c_str());
    if (!whole) return 1;
    printLimiter(song);
    return 0;
}

}  // namespace

int audition(const std::vector<std::string>& words) {
    const std::string wish = words.empty() ? "" : words[0];
    const bool toFolder = wish == "--stems" || wish == "--parts";
    const bool known = wish == "--hear" ? words.size() > 1 : words.size() == (toFolder ? 2 : 1);
    if (!known || (wish != "--hear" && !toFolder && wish != "--check")) return complain("%s", usage);
    const Song song = soundtrack();
    if (wish == "--check") return check(song);
    if (!proofread(song)) return 1;
    if (wish == "--hear") return hear(song, words);
    return writeStems(song, wish == "--stems" ? stemsOf(song) : partsOf(song), words[1]);
}
