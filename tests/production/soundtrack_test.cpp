// What the show relies on in the soundtrack: its loudness and peaks, its place on the beat grid, and where it
// is quiet. Read from data/ in the working directory; the beat is found by another program too.
#include "production/music/soundtrack.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <fstream>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

#include "production/kit/sound/filter.h"
#include "script/show_times.h"
#include "tests/process.h"
#include "tests/production/meter.h"
#include "tests/scratch.h"

using namespace audio;

namespace {

constexpr char track[] = "data/KVX - Ondrevane2.ogg";
constexpr double barZero = showtime::beatZero.seconds();
constexpr double beatsPerSecond = showtime::beatsPerMinute / 60.0;
constexpr int lastBeat = 368;

double secondsAt(double bar) {
    return barZero + bar * 4 / beatsPerSecond;
}

const Stereo& heard() {
    static const Stereo sound = decode(track);
    return sound;
}

Stereo between(double from, double to) {
    return sliceOf(heard(), frameAt(from), std::min(frameAt(to), heard().frames()));
}

// A part of the soundtrack by itself, only what lies above a frequency.
Stereo above(float hertz, double from, double to) {
    Stereo part = between(from, to);
    Equalizer::lowCut(hertz).apply(part);
    return part;
}

// Twice the slope of a single cut, so that little of the neighbours is left.
Stereo octaveOf(Stereo sound, float hertz) {
    for (int i = 0; i < 2; i++) {
        Equalizer::lowCut(hertz / std::numbers::sqrt2_v<float>).apply(sound);
        Equalizer::highCut(hertz * std::numbers::sqrt2_v<float>).apply(sound);
    }
    return sound;
}

// The Fourier transform of a power of two of samples, in place (Cooley and Tukey 1965).
void transform(std::vector<std::complex<double>>& samples) {
    const size_t count = samples.size();
    if (count == 1) return;
    std::vector<std::complex<double>> even, odd;
    for (size_t i = 0; i < count; i += 2) even.push_back(samples[i]), odd.push_back(samples[i + 1]);
    transform(even);
    transform(odd);
    for (size_t i = 0; i < count / 2; i++) {
        const auto turned = std::polar(1.0, -2 * std::numbers::pi * double(i) / double(count)) * odd[i];
        samples[i] = even[i] + turned;
        samples[i + count / 2] = even[i] - turned;
    }
}

// Mean levels in 24 thirds of an octave from 50 Hz up, in dB around their own mean (periodograms averaged
// after Welch 1967).
std::vector<double> thirdsOf(const Stereo& sound) {
    constexpr size_t window = 8192;
    std::vector<double> power(window / 2), levels;
    for (size_t at = 0; at + window <= sound.frames(); at += window / 2) {
        // Two real signals in one transform; the sum of their powers is that of both sides.
        std::vector<std::complex<double>> piece;
        for (size_t i = 0; i < window; i++) {
            const double gain = 0.5 - 0.5 * std::cos(2 * std::numbers::pi * double(i) / window);
            piece.emplace_back(gain * sound.left[at + i], gain * sound.right[at + i]);
        }
        transform(piece);
        for (size_t i = 1; i < window / 2; i++)
            power[i] += std::norm(piece[i]) + std::norm(piece[window - i]);
    }
    double mean = 0;
    for (int third = 0; third < 24; third++) {
        const double hertz = 50 * std::exp2(third / 3.0);
        double sum = 0, count = 0;
        for (size_t i = 1; i < power.size(); i++) {
            const double here = double(i) * sampleRate / window;
            if (here < hertz * std::exp2(-1 / 6.0) || here >= hertz * std::exp2(1 / 6.0)) continue;
            sum += power[i];
            count++;
        }
        levels.push_back(10 * std::log10(sum / count));
        mean += levels.back() / 24;
    }
    for (double& level : levels) level -= mean;
    return levels;
}

// How alike the sides are, from -1 to 1.
double correlationOf(const Stereo& sound) {
    double product = 0, left = 0, right = 0;
    for (size_t i = 0; i < sound.frames(); i++) {
        product += sound.left[i] * sound.right[i];
        left += sound.left[i] * sound.left[i];
        right += sound.right[i] * sound.right[i];
    }
    return product / std::sqrt(left * right + 1e-20);
}

struct Stretch {
    const char* name;
    double from, to;  // seconds
};
std::vector<Stretch> sections() {
    std::vector<Stretch> stretches;
    for (const Section& section : soundtrack().sections)
        stretches.push_back({section.name, std::max(0.0, secondsAt(section.from)), secondsAt(section.to)});
    return stretches;
}
// From the ship to the credits, without those where the drums rest.
std::vector<Stretch> withDrums() {
    const std::vector<Stretch> all = sections();
    std::vector<Stretch> stretches(all.begin() + 2, all.end() - 1);
    std::erase_if(stretches, [](const Stretch& each) {
        return std::string_view(each.name) == "smoke" || std::string_view(each.name) == "sinking";
    });
    return stretches;
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
    EXPECT_GE(heard().frames(), frameAt(197));
}

TEST(Soundtrack, IsAsLoudAsItsKindAndNeverClips) {
    const Loudness loudness = measure(std::string("-i '") + track + "'");
    EXPECT_NEAR(loudness.integrated, -14, 0.5);
    EXPECT_NEAR(loudness.range, 9, 3);
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

TEST(Soundtrack, DrumsHavePunch) {
    // The first 30 ms of a hit against what follows it, before the next one.
    for (const Stretch& stretch : withDrums()) {
        double sum = 0;
        int count = 0;
        for (double hit = stretch.from; hit < stretch.to - 0.1; hit += 1 / beatsPerSecond) {
            const double attack = levelOf(heard(), hit, hit + 0.03);
            if (attack < levelOf(heard(), stretch.from, stretch.to)) continue;  // no drum on this beat
            sum += attack - levelOf(heard(), hit + 0.1, hit + 0.4);
            count++;
        }
        EXPECT_GE(sum / count, 4) << stretch.name;
        EXPECT_GE(count, 8) << stretch.name;
    }
}

TEST(Soundtrack, SidesAddUpOnOneLoudspeaker) {
    for (const Stretch& stretch : withDrums()) {
        const Stereo part = between(stretch.from, stretch.to);
        Stereo low = part, middle = part;
        for (int i = 0; i < 2; i++) {
            Equalizer::highCut(120).apply(low);
            Equalizer::lowCut(120).apply(middle);
            Equalizer::highCut(300).apply(middle);
        }
        EXPECT_GE(correlationOf(low), 0.9) << stretch.name;
        EXPECT_GE(correlationOf(middle), 0.3) << stretch.name;
    }
    for (const Stretch& stretch : sections()) {
        for (float hertz = 62.5f; hertz <= 8000; hertz *= 2) {
            const Stereo octave = octaveOf(between(stretch.from, stretch.to), hertz);
            Stereo mono = octave;
            widen(mono, 0);
            EXPECT_LE(levelOf(octave, 0, 1e9) - levelOf(mono, 0, 1e9), 1.5)
                << stretch.name << ", " << hertz << " Hz";
        }
    }
}

TEST(Soundtrack, IsBalancedFromBassToTreble) {
    // 4.5 dB an octave is how the spectrum of most music falls; an octave's level rises by 3 dB of them,
    // since it is twice as wide as the one below it. No octave is more than 3 dB from such a line.
    for (const Stretch& stretch : withDrums()) {
        const Stereo part = between(stretch.from, stretch.to);
        double highest = -1e9, lowest = 1e9;
        for (int octave = 0; octave < 8; octave++) {
            const double level = levelOf(octaveOf(part, 62.5f * float(1 << octave)), 0, 1e9);
            highest = std::max(highest, level + 1.5 * octave);
            lowest = std::min(lowest, level + 1.5 * octave);
        }
        EXPECT_LE((highest - lowest) / 2, 3) << stretch.name;
    }
}

TEST(Soundtrack, EveryCutIsHeard) {
    // Across a cut the mean levels in thirds of an octave, each taken against its own mean, change by 1 dB.
    const std::vector<Stretch> stretches = sections();
    std::vector<std::vector<double>> spectra;
    for (const Stretch& stretch : stretches) spectra.push_back(thirdsOf(between(stretch.from, stretch.to)));
    for (size_t cut = 1; cut < spectra.size(); cut++) {
        double squares = 0;
        for (size_t i = 0; i < spectra[cut].size(); i++)
            squares += std::pow(spectra[cut][i] - spectra[cut - 1][i], 2);
        EXPECT_GE(std::sqrt(squares / double(spectra[cut].size())), 1) << stretches[cut].name;
    }
}

TEST(Soundtrack, ClimaxIsTheLoudestPlace) {
    const auto loudness = [](double from, double to) { return measure(between(from, to)).integrated; };
    const double climax = loudness(secondsAt(72), secondsAt(80));
    EXPECT_GE(climax, loudness(secondsAt(56), secondsAt(64)) + 2);
    EXPECT_GE(climax, loudness(secondsAt(64), secondsAt(72)) + 2);
    EXPECT_GE(climax, loudness(secondsAt(48), secondsAt(54)) + 0.5);
}

TEST(Soundtrack, DropIsAStepUp) {
    const double last = measure(between(secondsAt(47), secondsAt(48))).integrated;
    EXPECT_GE(measure(between(secondsAt(48), secondsAt(54))).integrated, last + 2);
}

TEST(Soundtrack, EntriesOutweighWhatLeadsThere) {
    // The climax most, then the drop, then the stripes; ship and greetings no more than those.
    const auto step = [](int bar) {
        const auto loudness = [](int bar) {
            return measure(between(secondsAt(bar), secondsAt(bar + 1))).integrated;
        };
        return loudness(bar) - loudness(bar - 1);
    };
    const double stripes = step(8), drop = step(48);
    EXPECT_GT(step(72), drop);
    EXPECT_GT(drop, stripes);
    for (const int bar : {0, 56}) {
        EXPECT_GE(stripes, step(bar)) << bar;
        EXPECT_GT(step(bar), 0.5) << bar;
    }
}

TEST(Soundtrack, LimiterOnlyTouchesPeaks) {
    const Song song = soundtrack();
    const std::vector<float> gain = finish(song, {0, frameAt(song.seconds)}).gain;
    for (const Section& section : song.sections) {
        const size_t from = frameAt(song.secondsAt(section.from));
        const size_t to = std::min(gain.size(), frameAt(song.secondsAt(section.to)));
        EXPECT_GE(*std::min_element(gain.begin() + from, gain.begin() + to), gainOf(-6)) << section.name;
        const auto deep = std::count_if(gain.begin() + from, gain.begin() + to,
                                        [](float each) { return each < gainOf(-3); });
        EXPECT_LT(double(deep), 0.05 * double(to - from)) << section.name;
    }
}

TEST(Soundtrack, DrumsFallOnTheGrid) {
    const Song song = soundtrack();
    int found = 0, off = 0;
    for (const double onset : onsets()) {
        if (onset < barZero - 0.05 || onset > secondsAt(92.1)) continue;
        if (onset > secondsAt(16) - 0.02 && onset < secondsAt(18)) continue;  // cut to pieces on purpose
        const double sixteenths = (onset - barZero) * beatsPerSecond * 4, nearest = std::round(sixteenths);
        // Every second sixteenth comes late where the section swings.
        const double late = std::remainder(nearest, 2) == 0 ? 0 : song.sectionAt(nearest / 16).swing;
        const double away = std::fabs(sixteenths - nearest - late) / beatsPerSecond / 4;
        found++;
        if (away > 0.010) off++;
    }
    EXPECT_GT(found, 2 * lastBeat);
    EXPECT_LE(off, found / 100);
}

TEST(Soundtrack, EveryBeatIsMarkedEvenWhereTheDrumsRest) {
    int missed = 0, inARow = 0, mostInARow = 0;
    for (int beat = 0; beat <= lastBeat; beat++) {
        const double time = barZero + beat / beatsPerSecond;
        const auto near = std::lower_bound(onsets().begin(), onsets().end(), time - 0.010);
        const bool marked = near != onsets().end() && *near <= time + 0.010;
        inARow = marked ? 0 : inARow + 1;
        missed += !marked;
        mostInARow = std::max(mostInARow, inARow);
    }
    EXPECT_LE(missed, lastBeat / 20);  // some are drowned by what still rings
    EXPECT_LE(mostInARow, 2);
}

TEST(Soundtrack, AnotherTrackerFindsItsBeat) {
    const ScratchDirectory scratch;
    const std::string part = scratch.file("from-bar-zero.wav");
    outputOf("ffmpeg -v error -ss 17.138 -i '" + std::string(track) + "' " + part);
    std::istringstream times(outputOf("aubiotrack -B 1024 -H 256 -i " + part));
    const std::vector<double> beats{std::istream_iterator<double>(times), {}};
    ASSERT_GT(beats.size(), 300u);

    // At the tempo that suits the beats best, their places within it point the same way.
    double best = 0, tempo = 0;
    for (double tried = 100; tried < 160; tried += 0.01) {
        std::complex<double> sum;
        for (const double beat : beats) sum += std::polar(1.0, 2 * std::numbers::pi * beat * tried / 60);
        if (std::abs(sum) > best) best = std::abs(sum), tempo = tried;
    }
    EXPECT_NEAR(tempo, 126, 0.1);
    const auto ours = std::count_if(beats.begin(), beats.end(), [](double beat) {
        return std::fabs(std::remainder(beat, 1 / beatsPerSecond)) < 0.03;
    });
    EXPECT_GT(ours, long(beats.size()) * 3 / 4);
}

TEST(Soundtrack, FollowsTheShow) {
    const auto level = [](double from, double to) { return levelOf(heard(), from, to); };
    // The impact in the tunnel, the groove, the breakdown without a kick, the way up, the drop.
    EXPECT_GT(level(secondsAt(-4), secondsAt(-3)), level(0, secondsAt(-5)) + 6);
    EXPECT_LT(level(secondsAt(32), secondsAt(40)), level(secondsAt(24), secondsAt(32)) - 3);
    EXPECT_GT(level(secondsAt(46), secondsAt(47)), level(secondsAt(40), secondsAt(42)) + 3);
    EXPECT_GT(level(secondsAt(48), secondsAt(50)), level(secondsAt(47.75), secondsAt(48)) + 6);
    EXPECT_GT(level(secondsAt(72), secondsAt(80)), level(secondsAt(84), secondsAt(88)) + 3);

    // From 120.8 s on the highs close for three seconds, and are all there again with the greetings.
    const Stereo highs = above(5000, 119, 126);
    const double open = levelOf(highs, 0, 1.8), closed = levelOf(highs, 3.8, 4.7);
    EXPECT_LT(closed, open - 20);
    EXPECT_GT(levelOf(highs, 4.85, 6.85), open - 3);
}

TEST(Soundtrack, LastHitRingsOutIntoSilence) {
    const double hit = barZero + lastBeat / beatsPerSecond;
    const auto level = [](double from, double to) { return levelOf(heard(), from, to); };
    EXPECT_GT(level(hit, hit + 0.2), level(hit - 0.5, hit) + 6);
    for (double time = hit + 0.5; time < 195; time += 0.5)
        EXPECT_LT(level(time, time + 0.5), level(time - 0.5, time)) << time;
    EXPECT_GT(level(hit + 1, hit + 1.5), -50);
    EXPECT_LT(level(195.28, 197), -80);
}

TEST(Soundtrack, IsTheSameEachTimeItIsMade) {
    const ScratchDirectory scratch;
    const std::string again = scratch.file("again.ogg");
    makeSoundtrack(again.c_str());
    // Not EXPECT_EQ: five megabytes are nothing to print.
    EXPECT_TRUE(contentOf(again) == contentOf(track));
}
