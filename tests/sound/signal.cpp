#include "tests/sound/signal.h"

#include <unistd.h>
#include <vorbis/vorbisenc.h>
#include <vorbis/vorbisfile.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <numbers>

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

std::string scratchPath(const std::string& name) {
    // A forked copy of the tests that ends by exit() leaves the folder to the process that made it.
    static const struct Folder {
        pid_t owner = getpid();
        std::filesystem::path path =
            std::filesystem::temp_directory_path() / ("sound-tests-" + std::to_string(owner));
        Folder() { std::filesystem::create_directories(path); }
        ~Folder() {
            if (getpid() == owner) std::filesystem::remove_all(path);
        }
    } folder;
    return folder.path / name;
}

namespace {

struct VorbisWriter {
    std::ofstream out;
    vorbis_info info;
    vorbis_comment comment;
    vorbis_dsp_state dsp;
    vorbis_block block;
    ogg_stream_state stream;

    VorbisWriter(const std::string& path, int rate, int channels) : out(path, std::ios::binary) {
        vorbis_info_init(&info);
        vorbis_encode_init_vbr(&info, channels, rate, 0.6f);
        vorbis_comment_init(&comment);
        vorbis_analysis_init(&dsp, &info);
        vorbis_block_init(&dsp, &block);
        static int serial = 0;
        ogg_stream_init(&stream, ++serial);
        ogg_packet packets[3];
        vorbis_analysis_headerout(&dsp, &comment, &packets[0], &packets[1], &packets[2]);
        for (ogg_packet& packet : packets) ogg_stream_packetin(&stream, &packet);
        writePages(ogg_stream_flush);
    }

    ~VorbisWriter() {
        encode(0);
        ogg_stream_clear(&stream);
        vorbis_block_clear(&block);
        vorbis_dsp_clear(&dsp);
        vorbis_comment_clear(&comment);
        vorbis_info_clear(&info);
    }

    void writePages(int (*next)(ogg_stream_state*, ogg_page*)) {
        ogg_page page;
        while (next(&stream, &page)) {
            out.write(reinterpret_cast<char*>(page.header), page.header_len);
            out.write(reinterpret_cast<char*>(page.body), page.body_len);
        }
    }

    // What was put into the analysis buffer; 0 ends the stream.
    void encode(int frames) {
        vorbis_analysis_wrote(&dsp, frames);
        ogg_packet packet;
        while (vorbis_analysis_blockout(&dsp, &block) == 1) {
            vorbis_analysis(&block, nullptr);
            vorbis_bitrate_addblock(&block);
            while (vorbis_bitrate_flushpacket(&dsp, &packet)) {
                ogg_stream_packetin(&stream, &packet);
                writePages(ogg_stream_pageout);
            }
        }
        if (frames == 0) writePages(ogg_stream_flush);
    }
};

}  // namespace

void writeVorbis(const std::string& path, const std::vector<float>& samples, int rate, int channels) {
    VorbisWriter writer(path, rate, channels);
    for (size_t at = 0; at < samples.size(); at += 1024) {
        const int count = int(std::min<size_t>(1024, samples.size() - at));
        float** buffer = vorbis_analysis_buffer(&writer.dsp, count);
        for (int channel = 0; channel < channels; channel++)
            std::copy_n(samples.begin() + long(at), count, buffer[channel]);
        writer.encode(count);
    }
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
