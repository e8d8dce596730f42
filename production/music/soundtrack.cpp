#include "production/music/soundtrack.h"

#include <algorithm>
#include <cmath>

#include "production/kit/sound/filter.h"
#include "production/kit/sound/loudness.h"
#include "production/kit/sound/mix.h"
#include "production/kit/sound/vorbis.h"
#include "production/music/band.h"
#include "production/music/score.h"

using namespace audio;

namespace {

constexpr float loudness = -14;     // LUFS over the whole
constexpr float peakCeiling = -2;   // dBTP before the codec, which adds up to 1 dB of its own
constexpr double silentBy = 195.2;  // seconds
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
    {17.875, 2, 0.25f, 0.8f, 0}, {23.75, 4, 1, 0.6f, 0},       {47.4375, 1, 0.25f, 0.7f, 0},
};

// Where everything stops for a moment.
struct Silence {
    double from, to;  // bars
};
constexpr Silence silences[] = {{27.54, 27.625}};

// The blur of the picture from 120.8 to 123.8 s.
constexpr FilterSweep blur = {120.8, 123.8, 16000, 260, 0.9f};

void silence(Stereo& sound, size_t from, size_t to) {
    constexpr size_t edge = 200;  // frames
    for (size_t i = from; i < to && i < sound.frames(); i++) {
        const size_t inside = std::min(i - from, to - 1 - i);
        const float gain = inside >= edge ? 0 : 1 - float(inside) / edge;
        sound.left[i] *= gain;
        sound.right[i] *= gain;
    }
}

float levelAt(double bar) {
    size_t next = 0;
    while (next < faders.size() && faders[next].bar <= bar) next++;
    if (next == 0) return faders.front().level;
    if (next == faders.size()) return faders.back().level;
    const Fader &from = faders[next - 1], &to = faders[next];
    return from.level + (to.level - from.level) * float((bar - from.bar) / (to.bar - from.bar));
}

void ride(const Song& song, Stereo& mix) {
    constexpr size_t stretch = 64;  // frames that share one level
    for (size_t i = 0; i < mix.frames(); i += stretch) {
        const double bar = (double(i) / sampleRate - song.barZero) / (song.secondsAt(1) - song.barZero);
        const float gain = gainOf(levelAt(bar));
        for (size_t j = i; j < std::min(i + stretch, mix.frames()); j++) {
            mix.left[j] *= gain;
            mix.right[j] *= gain;
        }
    }
}

void cutAndBlur(const Song& song, Stereo& mix) {
    const double sixteenth = 15 / song.beatsPerMinute;
    for (const Cut& cut : cuts)
        stutter(mix, {song.secondsAt(cut.bar), cut.length * sixteenth, cut.slice * sixteenth, cut.gate,
                      cut.crush});
    for (const Silence& each : silences)
        silence(mix, frameAt(song.secondsAt(each.from)), frameAt(song.secondsAt(each.to)));
    sweepLowPass(mix, blur);
}

// Brings the mix to its loudness: what the limiter takes in one try is asked for on top in the next.
void master(Stereo& mix) {
    Equalizer::lowCut(28).apply(mix);
    Equalizer::bell(330, -1.5f, 1.2f).apply(mix);
    Equalizer::bell(3800, 3, 2).apply(mix);
    Equalizer::highShelf(6000, 1).apply(mix);
    centreBelow(mix, 130);
    scale(mix, gainOf(loudness - integratedLoudness(mix)));
    compress(mix, -10, 1.5f, 0.02f, 0.2f, 0);
    float gain = loudness - integratedLoudness(mix);
    for (int tries = 0; tries < 3; tries++) {
        Stereo loud = mix;
        scale(loud, gainOf(gain));
        limit(loud, peakCeiling, 0.12f);
        const float missing = loudness - integratedLoudness(loud);
        if (std::fabs(missing) < 0.1f || tries == 2) return std::swap(mix, loud);
        gain += 1.3f * missing;
    }
}

}  // namespace

void makeSoundtrack(const char* path) {
    const Song song = {
        .beatsPerMinute = 126,
        .barZero = 17.138,
        .seconds = 197.5,
        .parts = band(),
        .cues = arrangement,
        .harmony = harmony,
        .duckedBy = "kick",
        .duckRecovery = 0.3,
        .room = {.preDelay = 0.006f, .size = 0.55f, .decay = 0.7f, .damping = 7000, .lowCut = 200},
        .hall = {.preDelay = 0.03f, .size = 1.15f, .decay = 2.4f, .damping = 5000, .lowCut = 250},
        .echoFeedback = 0.45f};
    Stereo mix = perform(song);
    cutAndBlur(song, mix);
    ride(song, mix);
    master(mix);
    const size_t end = frameAt(silentBy);
    Stereo heard(end);
    mixAt(heard, mix, 0);
    fadeEnds(heard, 0.02f, 1.2f);
    Stereo whole(frameAt(song.seconds));
    mixAt(whole, heard, 0);
    writeVorbis(path, whole, codecQuality, {{"TITLE", "Valojuova"}, {"ARTIST", "Valojuova"}});
}
