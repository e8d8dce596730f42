// The sound of a rehearsal: the show's track or, where some of its stems are muted, the sum of those that are
// not. Which it is changes without a click, and nothing moves in time.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "sound/decoder.h"

// A whole file of Ogg Vorbis.
using SoundFile = std::shared_ptr<const std::string>;

// What the author has chosen of the stems: a bit for each.
struct StemChoice {
    bool shown = false;
    uint32_t muted = 0, soloed = 0;
};

// What is to be heard: of the thread that draws, for that of the sound to follow.
class Faders {
public:
    struct State {
        std::vector<SoundFile> stems;
        uint32_t heard = 0;  // a bit for each of them; all of them are the track
        int edition = 0;     // of the files

        bool isTrack() const { return heard == (1u << stems.size()) - 1; }
    };
    void setStems(std::vector<SoundFile> stems, uint32_t heard);
    void hear(uint32_t heard);
    State state() const;

private:
    mutable std::mutex mutex;
    State wanted;
};

class StemMix : public sound::Source {
public:
    StemMix(std::unique_ptr<sound::Decoder> track, std::shared_ptr<const Faders> faders);

    void seek(sound::Time target, int rate) override;
    void read(float* frames, int count) override;

private:
    struct Voice {
        std::unique_ptr<sound::Decoder> decoder;
        bool wanted = false;
        float gain = 0;
        bool inStep = false;  // the decoder is where the mix is
    };
    void follow();
    void add(Voice& voice, float* frames, int count);

    std::shared_ptr<const Faders> faders;
    int edition = 0;  // of the stems that are open
    Voice track;
    std::vector<Voice> stems, leaving;  // leaving: of an edition before
    int rate = 0;
    int64_t nextFrame = 0;
    std::vector<float> block;
};
