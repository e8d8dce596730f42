#include "production/music/soundtrack.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

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

double sixteenthNear(showtime::Moment moment) {
    return std::round(barAt(moment) * 16) / 16;
}

// Where everything stops for a moment.
struct Silence {
    double from, to;  // bars
};
const Silence silences[] = {
    {-0.0625, 0}, {27.54, sixteenthNear(showtime::heapSecondView)}, {47.9375, 48}, {55.875, 56}};

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

// start: seconds at which the mix begins. What began before is left out.
void cutAndBlur(const Song& song, double start, Stereo& mix) {
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
    constexpr double before = 4;  // seconds: longer than cuts and blur take
    const size_t lead = std::min(window.from, frameAt(before)), from = window.from - lead;
    Stereo mix = perform(song, {from, window.to});
    cutAndBlur(song, double(from) / sampleRate, mix);
    const std::vector<float> gain = passMaster(song.mixer.master, mix);
    return {sliceOf(mix, lead, mix.frames()), {gain.begin() + long(lead), gain.end()}};
}

void makeSoundtrack(const char* path) {
    const Song song = soundtrack();
    if (!proofread(song)) exit(1);
    Stereo heard = sliceOf(finish(song, {0, frameAt(song.seconds)}).sound, 0, frameAt(silentBy));
    fadeEnds(heard, 0.02f, 1.2f);
    Stereo whole(frameAt(song.seconds));
    mixAt(whole, heard, 0);
    const VorbisForm form = {.quality = codecQuality,
                             .tags = {{"TITLE", "Valojuova"}, {"ARTIST", "Valojuova"}}};
    if (writeVorbis(path, {whole.left, whole.right}, form)) return;
    fprintf(stderr, "%s can't be written\n", path);
    exit(1);
}
