#include "production/music/soundtrack.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <utility>

#include "production/kit/sound/arrangement.h"
#include "production/kit/sound/effects.h"
#include "production/kit/sound/vorbis.h"
#include "production/music/band.h"
#include "production/music/score.h"
#include "script/show_times.h"

using namespace audio;

namespace {

constexpr double silentBy = showtime::end.seconds() - 0.08;
constexpr float codecQuality = 0.6f;
constexpr float stemQuality = 0.9f;  // less is lost than in the whole, of which several are a sum
constexpr double before = 4;         // seconds: longer than cuts and blur take

// Pieces of the finished mix that are repeated in place: from a bar, over so many sixteenths, in slices of so
// many.
struct Cut {
    double bar;
    float length, slice, gate;
    int crush;
};
constexpr Cut cuts[] = {
    {16.25, 2, 0.5f, 0.7f, 0},   {16.4375, 1, 0.25f, 0.8f, 6}, {16.75, 4, 1, 0.5f, 0},
    {17.125, 2, 0.5f, 1, 10},    {17.375, 2, 0.5f, 0.6f, 0},   {17.75, 2, 0.5f, 0.7f, 4},
    {17.875, 2, 0.25f, 0.8f, 0}, {21.75, 4, 1, 0.6f, 6},       {23.75, 4, 1, 0.6f, 0},
};

// Where everything stops for a moment.
struct Silence {
    double from, to;  // bars
};
const Silence silences[] = {{-0.0625, 0},
                            {27.54, std::round(barAt(showtime::heapSecondView) * 16) / 16},
                            {47.9375, 48},
                            {55.875, 56}};

// While the picture blurs.
constexpr FilterSweep blur = {showtime::greetings.seconds(), showtime::greetingShocks.seconds(), 16000, 260,
                              0.9f};

void silence(Stereo& sound, std::ptrdiff_t from, std::ptrdiff_t to) {
    constexpr std::ptrdiff_t edge = 200;  // frames
    for (std::ptrdiff_t i = std::max<std::ptrdiff_t>(0, from); i < to && i < std::ptrdiff_t(sound.frames());
         i++) {
        const std::ptrdiff_t inside = std::min(i - from, to - 1 - i);
        const float gain = inside >= edge ? 0 : 1 - float(inside) / edge;
        sound.set(size_t(i), gain * sound.at(size_t(i)));
    }
}

// start: frame with which the mix begins. What began before is left out.
void cutAndBlur(const Song& song, size_t first, Stereo& mix) {
    const double start = double(first) / sampleRate;
    const double sixteenth = song.grid.sixteenth();
    for (const Cut& cut : cuts) {
        const double at = song.grid.secondsAt(cut.bar) - start;
        if (at >= 0) stutter(mix, {at, cut.length * sixteenth, cut.slice * sixteenth, cut.gate, cut.crush});
    }
    for (const Silence& each : silences)
        silence(mix, std::llround((song.grid.secondsAt(each.from) - start) * sampleRate),
                std::llround((song.grid.secondsAt(each.to) - start) * sampleRate));
    FilterSweep here = blur;
    here.from -= start;
    here.to -= start;
    if (here.from >= 0) sweepLowPass(mix, here);
}

// What has to be heard before a stretch for it to be as in the whole.
size_t leadOf(const Window& window) {
    return std::min(window.from, frameAt(before));
}

void failToWrite(const std::string& path) {
    fprintf(stderr, "%s can't be written\n", path.c_str());
    exit(1);
}

// All of it, faded where it begins and ends.
void writeSound(const std::string& path, const Song& song, const Stereo& sound, float quality,
                const std::vector<Tag>& tags) {
    Stereo heard = sliceOf(sound, 0, frameAt(silentBy));
    fadeEnds(heard, 0.02f, 1.2f);
    Stereo whole(frameAt(song.seconds));
    mixAt(whole, heard, 0);
    if (!writeVorbis(path, {whole.left, whole.right}, {.quality = quality, .tags = tags})) failToWrite(path);
}

}  // namespace

Song soundtrack() {
    return {.grid = grid,
            .seconds = showtime::end.seconds() + 2.2,
            .parts = band(),
            .sections = score(),
            .mixer = mixer()};
}

bool proofread(const Song& song) {
    const Problems problems = problemsOf(song);
    for (const std::string& line : problems) fprintf(stderr, "%s\n", line.c_str());
    return problems.empty();
}

Finished finish(const Song& song, const Window& window) {
    const size_t lead = leadOf(window);
    const Window reach = {window.from - lead, window.to};
    Stereo mix = perform(song, reach);
    cutAndBlur(song, reach.from, mix);
    MasterGains gains = passMaster(song.mixer.master, mix);
    for (std::vector<float>* gain : {&gains.compressor, &gains.limiter})
        gain->erase(gain->begin(), gain->begin() + long(lead));
    return {sliceOf(mix, lead, mix.frames()), std::move(gains)};
}

std::vector<Stem> stemsOf(const Song& song) {
    const std::pair<Role, const char*> roles[] = {{Role::drums, "drums"},
                                                  {Role::noise, "noise"},
                                                  {Role::bass, "bass"},
                                                  {Role::chords, "chords"},
                                                  {Role::lead, "lead"}};
    std::vector<Stem> stems;
    for (const auto& [role, name] : roles) {
        Stem stem{name, {}};
        for (const Part& part : song.parts)
            if (part.role == role) stem.parts.push_back(part.name);
        if (!stem.parts.empty()) stems.push_back(std::move(stem));
    }
    return stems;
}

bool finishStems(const Song& song, const Window& window, const std::vector<Stem>& stems,
                 const std::function<bool(const Stem&, const Stereo&)>& take) {
    const size_t lead = leadOf(window);
    const Window reach = {window.from - lead, window.to};
    Unclipped unclipped;
    Stereo whole = perform(song, reach, {}, nullptr, &unclipped);
    cutAndBlur(song, reach.from, whole);
    const MasterGains gains = passMaster(song.mixer.master, whole);
    whole = Stereo();
    return std::all_of(stems.begin(), stems.end(), [&](const Stem& stem) {
        Stereo sound = perform(song, reach, stem.parts, &unclipped);
        cutAndBlur(song, reach.from, sound);
        passMaster(song.mixer.master, gains, sound);
        return take(stem, sliceOf(sound, lead, sound.frames()));
    });
}

void makeSoundtrack(const char* path) {
    const Song song = soundtrack();
    if (!proofread(song)) exit(1);
    writeSound(path, song, finish(song, {0, frameAt(song.seconds)}).sound, codecQuality,
               {{"TITLE", "Valojuova"}, {"ARTIST", "Valojuova"}});
}

void makeStems(const char* path) {
    const Song song = soundtrack();
    if (!proofread(song)) exit(1);
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    std::filesystem::create_directories(folder);
    const std::vector<Stem> stems = stemsOf(song);
    std::string names;
    int made = 0;
    // In the words of ninja, which hands them on at once.
    const auto tell = [&](const char* what) {
        printf("[%d/%zu] Making %s\n", made, stems.size(), what);
        fflush(stdout);
    };
    tell("the stems");
    finishStems(song, {0, frameAt(song.seconds)}, stems, [&](const Stem& stem, const Stereo& sound) {
        writeSound(folder / (stem.name + ".ogg"), song, sound, stemQuality, {{"TITLE", stem.name.c_str()}});
        names += stem.name + "\n";
        made++;
        tell(stem.name.c_str());
        return true;
    });
    std::ofstream list(path);
    list << names;
    if (!list.flush()) failToWrite(path);
}
