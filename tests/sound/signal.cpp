#include "tests/sound/signal.h"

#include <vorbis/vorbisfile.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "production/kit/sound/vorbis.h"

// For the build with sanitizers: the encoder loses a block of its own when it is set up for surround sound.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:vorbis_encode_setup_init";
}

std::vector<float> makeNoise(double seconds, int rate) {
    std::vector<float> samples(size_t(seconds * rate));
    uint32_t state = 12345;
    float smooth = 0, smoother = 0;
    for (float& sample : samples) {
        state = state * 1664525 + 1013904223;
        smooth += 0.3f * (float(state >> 8) / float(1 << 23) - 1 - smooth);
        smoother += 0.3f * (smooth - smoother);
        sample = 1.2f * smoother;
    }
    return samples;
}

std::vector<float> makeTone(double seconds, int rate, double frequency) {
    std::vector<float> samples(size_t(seconds * rate));
    for (size_t i = 0; i < samples.size(); i++)
        samples[i] = 0.5f * float(std::sin(2 * std::numbers::pi * frequency * double(i) / rate));
    return samples;
}

void writeVorbis(const std::string& path, const std::vector<float>& samples, int rate, int channels) {
    static int serial = 0;
    const std::vector<std::span<const float>> all(size_t(channels), samples);
    audio::writeVorbis(path, all, {.rate = rate, .serial = ++serial});
}

std::vector<float> decodeVorbis(const std::string& path) {
    std::vector<float> samples;
    OggVorbis_File file;
    if (ov_fopen(path.c_str(), &file) != 0) return samples;
    float** channels;
    int link;
    for (long got; (got = ov_read_float(&file, &channels, 4096, &link)) > 0;)
        samples.insert(samples.end(), channels[0], channels[0] + got);
    ov_clear(&file);
    return samples;
}

std::optional<double> locate(const std::vector<float>& recording, long at,
                             const std::vector<float>& reference, long expected, long reach) {
    constexpr long window = 882;  // 20 ms
    const long first = std::max(expected - reach, 0L);
    const long last = std::min(expected + reach, long(reference.size()) - window);
    if (at < 0 || at + window > long(recording.size())) return std::nullopt;
    const float* sought = recording.data() + at;
    double bestLikeness = 0;
    long best = -1;
    for (long from = first; from < last; from++) {
        const float* candidate = reference.data() + from;
        float product = 0, energy = 0, soughtEnergy = 0;
        for (long i = 0; i < window; i++) {
            product += candidate[i] * sought[i];
            energy += candidate[i] * candidate[i];
            soughtEnergy += sought[i] * sought[i];
        }
        const double likeness = product / std::sqrt(double(energy) * soughtEnergy + 1e-12);
        if (likeness > bestLikeness) {
            bestLikeness = likeness;
            best = from;
        }
    }
    if (bestLikeness < 0.95) return std::nullopt;
    return double(best);
}

double toneFrequency(const std::vector<float>& samples, long from, long to) {
    double first = 0, last = 0;
    int crossings = 0;
    for (long i = std::max(from, 1L); i < std::min(to, long(samples.size())); i++) {
        const float before = samples[size_t(i - 1)], after = samples[size_t(i)];
        if (!(before < 0 && after >= 0)) continue;
        last = double(i) - double(after) / double(after - before);
        if (crossings++ == 0) first = last;
    }
    return crossings < 2 ? 0 : (crossings - 1) * recordRate / (last - first);
}
