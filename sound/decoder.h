// Decodes Ogg Vorbis to stereo floats at the mixer's rate. A damaged or chained file keeps its time: what is
// missing is silent.
#pragma once

#include <samplerate.h>
#include <vorbis/vorbisfile.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "sound/source.h"

namespace sound {

class Decoder : public Source {
public:
    // Of the bytes of a whole file. nullptr if they aren't Vorbis that can be played.
    static std::unique_ptr<Decoder> open(std::shared_ptr<const std::string> bytes);
    // Reads the file at once. nullptr also if that can't be.
    static std::unique_ptr<Decoder> open(const char* path);
    ~Decoder() override;
    Decoder& operator=(Decoder&&) = delete;

    void seek(Time target, int rate) override;
    void read(float* frames, int count) override;
    // Whether something of what was decoded so far is missing in the file.
    bool isDamaged() const { return damaged; }

private:
    Decoder() = default;
    bool decode();
    int take(float* frames, int count);
    bool followRate();
    static long supply(void* decoder, float** frames);

    std::shared_ptr<const std::string> bytes;
    OggVorbis_File file{};
    bool ended = true;
    bool damaged = false;
    int64_t nextFrame = 0;     // of the file, at which the next decoded block should start
    int64_t lostFrames = 0;    // missing before the block: handed on as silence first
    int blockRate = 0;         // Hz; links of a chained file may differ
    std::vector<float> block;  // decoded, stereo
    size_t blockUsed = 0;      // floats of it that were handed on

    int playRate = 0;  // Hz that take() and the resampler are set up for; 0 until the first block
    int mixRate = 0;
    SRC_STATE* resampler = nullptr;  // none until a rate needs it
    float supplied[512];
};

}  // namespace sound
