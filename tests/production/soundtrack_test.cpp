// What the show relies on in the soundtrack: its loudness and peaks, its place on the beat grid, and where it
// is quiet. Read from data/ in the working directory.
#include "production/music/soundtrack.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "production/kit/sound/filter.h"
#include "script/show_times.h"
#include "tests/process.h"
#include "tests/production/meter.h"

using namespace audio;

namespace {

constexpr char track[] = "data/KVX - Ondrevane2.ogg";
constexpr double barZero = showtime::beatZero.seconds();
constexpr double beat = 60.0 / showtime::beatsPerMinute, bar = beat * showtime::beatsPerBar;  // seconds
constexpr int lastBeat = 368;

// The bar on which the music of a cut begins.
double barAt(showtime::Moment cut) {
    return barZero + std::round((cut.seconds() - barZero) / bar) * bar;
}

const Stereo& heard() {
    static const Stereo sound = decode(track);
    return sound;
}

double level(double from, double to) {
    return levelOf(heard(), from, to);
}

// Times at which the sound's edge, its second difference, is suddenly four times as strong as it was on
// average over the 20 ms before.
std::vector<double> findOnsets(const Stereo& sound) {
    constexpr size_t hop = 64, before = 14, apart = 28;  // frames; the others in hops
    std::vector<double> edges;
    for (size_t at = 2; at + hop <= sound.frames(); at += hop) {
        double sum = 0;
        for (size_t i = at; i < at + hop; i++) {
            const auto middle = [&](size_t frame) { return sound.left[frame] + sound.right[frame]; };
            const double edge = middle(i) - 2 * middle(i - 1) + middle(i - 2);
            sum += edge * edge;
        }
        edges.push_back(sum / hop);
    }
    std::vector<double> onsets;
    size_t latest = 0;
    for (size_t n = before; n < edges.size(); n++) {
        double sum = 0;
        for (size_t i = n - before; i < n; i++) sum += edges[i];
        if (edges[n] < 1e-9 || edges[n] < 4 * sum / before || (latest && n - latest < apart)) continue;
        latest = n;
        onsets.push_back(double(n * hop + 2) / sampleRate);
    }
    return onsets;
}

const std::vector<double>& onsets() {
    static const std::vector<double> found = findOnsets(heard());
    return found;
}

}  // namespace

TEST(Soundtrack, IsStereoAndOutlastsTheShow) {
    const std::string facts = outputOf(
        std::string("ffprobe -v error -show_entries stream=codec_name,sample_rate,channels -of csv=p=0 '") +
        track + "'");
    EXPECT_EQ(facts, "vorbis,44100,2\n");
    EXPECT_GE(heard().frames(), frameAt(showtime::end.seconds() + 1.7));
}

TEST(Soundtrack, IsAsLoudAsItsKindAndNeverClips) {
    const Loudness loudness = measure(track);
    EXPECT_NEAR(loudness.integrated, -14, 0.5);
    EXPECT_LE(loudness.truePeak, -1);

    // A clipped wave is flat: for a while its samples lie at the outermost value that its side ever has.
    for (const std::vector<float>* side : {&heard().left, &heard().right}) {
        const auto [low, high] = std::minmax_element(side->begin(), side->end());
        size_t run = 0, longest = 0;
        for (const float sample : *side) {
            run = sample > 0.995f * *high || sample < 0.995f * *low ? run + 1 : 0;
            longest = std::max(longest, run);
        }
        EXPECT_LT(longest, 10u);
    }
}

TEST(Soundtrack, SidesAddUpOnOneLoudspeaker) {
    for (const Section& section : soundtrack().sections) {
        const double from = barZero + section.from * bar, to = barZero + section.to * bar;
        const Stereo part = sliceOf(heard(), frameAt(from), std::min(frameAt(to), heard().frames()));
        Stereo low = part, mono = part;
        for (int i = 0; i < 2; i++) Equalizer::highCut(120).apply(low);
        EXPECT_GE(correlationOf(low), 0.9) << section.name;
        widen(mono, 0);
        EXPECT_LE(levelOf(part, 0, 1e9) - levelOf(mono, 0, 1e9), 1.5) << section.name;
    }
}

TEST(Soundtrack, LimiterOnlyTouchesPeaksAsItIsMade) {
    const Song song = soundtrack();
    const std::vector<float> gain = finish(song, {0, frameAt(song.seconds)}).gains.limiter;
    for (const Section& section : song.sections) {
        const size_t from = frameAt(song.grid.secondsAt(section.from));
        const size_t to = std::min(gain.size(), frameAt(song.grid.secondsAt(section.to)));
        EXPECT_GE(*std::min_element(gain.begin() + from, gain.begin() + to), gainOf(-6)) << section.name;
        const auto deep = std::count_if(gain.begin() + from, gain.begin() + to,
                                        [](float each) { return each < gainOf(-3); });
        EXPECT_LT(double(deep), 0.05 * double(to - from)) << section.name;
    }
}

TEST(Soundtrack, DrumsFallOnTheGrid) {
    const Song song = soundtrack();
    const double torn = barAt(showtime::tornTunnel);
    int found = 0, off = 0;
    for (const double onset : onsets()) {
        if (onset < barZero - 0.05 || onset > barZero + (lastBeat + 0.4) * beat) continue;
        if (onset > torn - 0.02 && onset < torn + 2 * bar) continue;  // cut to pieces on purpose
        const double sixteenths = (onset - barZero) / beat * 4, nearest = std::round(sixteenths);
        // Every second sixteenth comes late where the section swings.
        const double late = std::remainder(nearest, 2) == 0 ? 0 : song.sectionAt(nearest / 16).swing;
        const double away = std::fabs(sixteenths - nearest - late) * beat / 4;
        found++;
        if (away > 0.010) off++;
    }
    EXPECT_GT(found, 2 * lastBeat);
    EXPECT_LE(off, found / 100);
}

TEST(Soundtrack, EveryBeatIsMarkedEvenWhereTheDrumsRest) {
    int missed = 0, inARow = 0, mostInARow = 0;
    for (int n = 0; n <= lastBeat; n++) {
        const double time = barZero + n * beat;
        const auto near = std::lower_bound(onsets().begin(), onsets().end(), time - 0.010);
        const bool marked = near != onsets().end() && *near <= time + 0.010;
        inARow = marked ? 0 : inARow + 1;
        missed += !marked;
        mostInARow = std::max(mostInARow, inARow);
    }
    EXPECT_LE(missed, lastBeat / 20);  // some are drowned by what still rings
    EXPECT_LE(mostInARow, 2);
}

TEST(Soundtrack, FollowsTheShow) {
    // The burst in the tunnel, the breakdown without a kick, the drop after a moment of silence.
    EXPECT_GT(level(barAt(showtime::tunnel), barAt(showtime::tunnel) + bar),
              level(0, barAt(showtime::tunnel) - bar) + 6);
    EXPECT_LT(level(barAt(showtime::probes), barAt(showtime::robot)),
              level(barAt(showtime::heap), barAt(showtime::probes)) - 3);
    const double drop = barAt(showtime::awake);
    EXPECT_GT(level(drop, drop + 2 * bar), level(drop - bar / 16, drop) + 6);

    // While the picture blurs the highs close, and are all there again with the greetings.
    Stereo highs = heard();
    Equalizer::lowCut(5000).apply(highs);
    const double blur = showtime::greetings.seconds(), end = showtime::greetingShocks.seconds();
    const double open = levelOf(highs, blur - 1.8, blur);
    EXPECT_LT(levelOf(highs, end - 1, end - 0.1), open - 20);
    EXPECT_GT(levelOf(highs, end + 0.1, end + 2), open - 3);
}

TEST(Soundtrack, LastHitRingsOutIntoSilence) {
    const double hit = barZero + lastBeat * beat, end = showtime::end.seconds();
    EXPECT_GT(level(hit, hit + 0.2), level(hit - 0.5, hit) + 6);
    for (double time = hit + 0.5; time < end - 0.28; time += 0.5)
        EXPECT_LT(level(time, time + 0.5), level(time - 0.5, time)) << time;
    EXPECT_GT(level(hit + 1, hit + 1.5), -50);
    EXPECT_LT(level(end, end + 1.7), -80);
}
