#include "production/music/desk.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <utility>

#include "production/kit/sound/arrangement.h"
#include "production/kit/sound/check.h"
#include "production/kit/sound/wav.h"
#include "production/music/soundtrack.h"

using namespace audio;

namespace {

constexpr char usage[] =
    "usage: forge --hear FILE.wav [--bars FROM-TO] [--parts NAME,...]   (bar TO is where it ends)\n"
    "       forge --stems FOLDER\n"
    "       forge --check\n";

struct Wish {
    std::string file;
    double from = 0, to = 0;  // bars
    std::vector<std::string> parts;
};

bool readBars(const std::string& words, Wish& wish) {
    int read = 0;
    return sscanf(words.c_str(), "%lf-%lf%n", &wish.from, &wish.to, &read) == 2 &&
           read == int(words.size()) && wish.from < wish.to;
}

void readParts(const std::string& words, Wish& wish) {
    for (size_t at = 0; at <= words.size();) {
        const size_t end = std::min(words.find(',', at), words.size());
        wish.parts.push_back(words.substr(at, end - at));
        at = end + 1;
    }
}

int complain(const char* format, const std::string& what) {
    fprintf(stderr, format, what.c_str());
    return 1;
}

int complainOfPart(const std::string& name, const Song& song) {
    fprintf(stderr, "No part has the name \"%s\"; there are", name.c_str());
    for (const Part& part : song.parts) fprintf(stderr, " %s", std::string(part.name).c_str());
    fputc('\n', stderr);
    return 1;
}

Window windowOf(const Song& song, double from, double to) {
    const size_t all = frameAt(song.seconds);
    return {std::min(frameAt(song.secondsAt(from)), all), std::min(frameAt(song.secondsAt(to)), all)};
}

bool playsIn(const Song& song, const Part& part, double from, double to) {
    const std::vector<Note> notes = notesOf(song, part);
    return std::any_of(notes.begin(), notes.end(), [&](const Note& note) {
        return note.start < song.secondsAt(to) - 0.01 &&
               note.start + note.length > song.secondsAt(from) + 0.01;
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
            readParts(words[i + 1], wish);
        } else {
            return complain("The desk doesn't know \"%s\"\n", words[i]);
        }
    }
    const Window window = windowOf(song, wish.from, wish.to);
    if (window.from >= window.to) return complain("%s would be empty: no such bars\n", wish.file);
    for (const std::string& part : wish.parts)
        if (!partOf(song, part)) return complainOfPart(part, song);
    tellRests(song, wish);
    const std::vector<std::string_view> parts(wish.parts.begin(), wish.parts.end());
    writeWav(wish.file.c_str(), parts.empty() ? finish(song, window).sound : perform(song, window, parts));
    return 0;
}

int writeStems(const Song& song, const std::filesystem::path& folder) {
    std::error_code failure;
    std::filesystem::create_directories(folder, failure);
    if (failure) return complain("%s can't be made\n", folder.string());
    for (const Part& part : song.parts) {
        writeWav((folder / (part.name + std::string(".wav"))).c_str(),
                 perform(song, windowOf(song, song.barAt(0), song.barAt(song.seconds)), {part.name}));
        printf("%s\n", part.name);
        fflush(stdout);
    }
    return 0;
}

// How far the limiter goes in each section.
void printLimiter(const Song& song) {
    const std::vector<float> gain = finish(song, {0, frameAt(song.seconds)}).gain;
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

// Whether a song can be read. In a process of its own, which its first mistake ends with a line.
bool reads(const Song& song) {
    fflush(nullptr);
    const pid_t reader = fork();
    if (reader == 0) {
        // Without closing what it has of the process that it was forked from.
        atexit([] { _exit(1); });
        proofread(song);
        _exit(0);
    }
    int status = 1;
    return reader > 0 && waitpid(reader, &status, 0) == reader && status == 0;
}

}  // namespace

bool leaveReadable(Song& song) {
    Song part = song;
    bool whole = true;
    const auto isWrong = [&](const Section& section) {
        part.sections.assign(1, section);
        const bool wrong = !reads(part);
        whole = whole && !wrong;
        return wrong;
    };
    std::vector<Section> readable;
    for (Section section : song.sections) {
        const std::vector<Cue> cues = std::exchange(section.cues, {});
        Section alone = section;
        if (isWrong(alone)) continue;
        for (const Cue& cue : cues) {
            alone.cues.assign(1, cue);
            if (!isWrong(alone)) section.cues.push_back(cue);
        }
        readable.push_back(section);
    }
    song.sections = readable;
    return whole;
}

namespace {

int check(Song song) {
    const bool whole = leaveReadable(song);
    if (song.sections.empty()) return 1;
    for (const std::string& remark : remarksOn(song)) printf("%s\n", remark.c_str());
    if (!whole) return 1;
    printLimiter(song);
    return 0;
}

}  // namespace

int runDesk(const std::vector<std::string>& words) {
    const std::string wish = words.empty() ? "" : words[0];
    const bool known = wish == "--hear" ? words.size() > 1 : words.size() == (wish == "--stems" ? 2 : 1);
    if (!known || (wish != "--hear" && wish != "--stems" && wish != "--check")) return complain("%s", usage);
    const Song song = soundtrack();
    if (wish == "--check") return check(song);
    proofread(song);
    return wish == "--hear" ? hear(song, words) : writeStems(song, words[1]);
}
