#include "sound/decoder.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <numbers>

namespace sound {

namespace {

constexpr int blockFrames = 1024;

// The sides that each channel is heard on, in Vorbis' order for 1, 2, .. 8 channels; B is both. The bass
// channel of surround sound, a dot, is left out.
const char* const channelSides[] = {"B", "LR", "LBR", "LRLR", "LBRLR", "LBRLR.", "LBRLRB.", "LBRLRLR."};

struct SideGains {
    float left = 0;
    float right = 0;
};

// Every side's gains add up to 1: nothing that fits its channels is cut off in the mix.
std::vector<SideGains> sideGains(int channels) {
    const char* sides = channels <= int(std::size(channelSides)) ? channelSides[channels - 1] : "LR";
    std::vector<SideGains> gains;
    SideGains sum;
    for (; *sides; sides++) {
        const float both = *sides == 'B' ? 1 / std::numbers::sqrt2_v<float> : 0;
        gains.push_back({*sides == 'L' ? 1 : both, *sides == 'R' ? 1 : both});
        sum.left += gains.back().left;
        sum.right += gains.back().right;
    }
    for (SideGains& gain : gains) gain = {gain.left / sum.left, gain.right / sum.right};
    return gains;
}

// Whether every link of a chained file can be decoded. Asked here, once, since libvorbis crashes when it is
// asked again about one that can't: it takes the codebooks for made and divides by zero.
bool isPlayable(OggVorbis_File& file) {
    for (int link = 0; link < ov_streams(&file); link++) {
        vorbis_dsp_state decoder;
        if (vorbis_synthesis_init(&decoder, ov_info(&file, link)) != 0) return false;
        vorbis_dsp_clear(&decoder);
    }
    return true;
}

}  // namespace

std::unique_ptr<Decoder> Decoder::open(std::shared_ptr<const std::string> bytes) {
    FILE* const memory = fmemopen(const_cast<char*>(bytes->data()), bytes->size(), "rb");
    if (!memory) return nullptr;
    std::unique_ptr<Decoder> decoder(new Decoder);
    decoder->bytes = std::move(bytes);
    if (ov_open_callbacks(memory, &decoder->file, nullptr, 0, OV_CALLBACKS_DEFAULT) != 0) {
        fclose(memory);
        return nullptr;
    }
    return isPlayable(decoder->file) ? std::move(decoder) : nullptr;
}

std::unique_ptr<Decoder> Decoder::open(const char* path) {
    std::error_code error;
    if (!path || !std::filesystem::is_regular_file(path, error)) return nullptr;
    std::string bytes(std::filesystem::file_size(path, error), '\0');
    std::ifstream in(path, std::ios::binary);
    in.read(bytes.data(), std::streamsize(bytes.size()));
    bytes.resize(size_t(in.gcount()));
    return open(std::make_shared<const std::string>(std::move(bytes)));
}

Decoder::~Decoder() {
    if (resampler) src_delete(resampler);
    ov_clear(&file);
}

void Decoder::seek(Time target, int rate) {
    mixRate = rate;
    block.clear();
    blockUsed = 0;
    lostFrames = 0;
    playRate = 0;
    ended = ov_time_seek(&file, std::chrono::duration<double>(target).count()) != 0;
    nextFrame = ov_pcm_tell(&file);
}

void Decoder::read(float* frames, int count) {
    while (count > 0 && !ended) {
        int got = 0;
        if (playRate == mixRate)
            got = take(frames, count);
        else if (playRate != 0)
            got = int(src_callback_read(resampler, double(mixRate) / playRate, count, frames));
        if (got <= 0) ended = !followRate();
        frames += 2 * std::max(got, 0);
        count -= std::max(got, 0);
    }
    std::fill_n(frames, 2 * count, 0.0f);
}

// Sets up for the rate of the block at hand, decoding one where there is none. False if nothing has changed,
// so that there is no more to read, or if it can't be done.
bool Decoder::followRate() {
    if (block.empty() && !decode()) return false;
    if (playRate == blockRate) return false;
    playRate = blockRate;
    if (playRate == mixRate) return true;
    int error = 0;
    if (!resampler) resampler = src_callback_new(supply, SRC_SINC_MEDIUM_QUALITY, 2, &error, this);
    return resampler && src_reset(resampler) == 0;
}

long Decoder::supply(void* decoder, float** frames) {
    auto* self = static_cast<Decoder*>(decoder);
    *frames = self->supplied;
    return self->take(self->supplied, int(std::size(self->supplied)) / 2);
}

// Up to `count` frames of the file; 0 at its end and where its rate changes.
int Decoder::take(float* frames, int count) {
    if (lostFrames == 0 && blockUsed == block.size() && !decode()) return 0;
    if (blockRate != playRate) return 0;
    if (lostFrames > 0) {
        count = int(std::min<int64_t>(count, lostFrames));
        std::fill_n(frames, 2 * count, 0.0f);
        lostFrames -= count;
        return count;
    }
    count = std::min(count, int(block.size() - blockUsed) / 2);
    std::copy_n(block.begin() + ptrdiff_t(blockUsed), 2 * count, frames);
    blockUsed += size_t(2 * count);
    return count;
}

// The next block of the file; false at its end.
bool Decoder::decode() {
    float** channels = nullptr;
    int link = 0;
    long got = OV_HOLE;
    while (got == OV_HOLE) {
        got = ov_read_float(&file, &channels, blockFrames, &link);
        damaged = damaged || got < 0;
    }
    if (got <= 0) return false;
    const vorbis_info* info = ov_info(&file, -1);
    blockRate = int(info->rate);
    const int64_t start = ov_pcm_tell(&file) - got;
    lostFrames = std::max<int64_t>(start - nextFrame, 0);
    nextFrame = start + got;

    block.assign(size_t(2 * got), 0.0f);
    blockUsed = 0;
    const std::vector<SideGains> gains = sideGains(info->channels);
    for (size_t channel = 0; channel < gains.size(); channel++) {
        for (long i = 0; i < got; i++) {
            block[size_t(2 * i)] += gains[channel].left * channels[channel][i];
            block[size_t(2 * i + 1)] += gains[channel].right * channels[channel][i];
        }
    }
    return true;
}

}  // namespace sound
