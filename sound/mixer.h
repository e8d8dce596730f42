// The engine behind sound.h: the channels, the clock, and the thread that keeps the device fed.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "sound/device.h"
#include "sound/heard_position.h"
#include "sound/source.h"
#include "sound/spectrum.h"

namespace sound {

struct Stream {
    Playhead playhead;               // guarded by the mixer's mutex
    std::unique_ptr<Source> source;  // the sound thread's
};

// The calls are those of sound.h, for one caller's thread.
class Mixer {
public:
    void setOutput(int code);
    int output();
    void start(int rate, int channelCount);
    void stop();

    Stream* openStream(std::unique_ptr<Source> source);
    void closeStream(Stream* stream);
    void play(int channel, Stream* stream);
    int position(const Stream* stream);
    void setPosition(Stream* stream, int ms);
    void setPaused(int channel, bool paused);

    void setSpectrumActive(bool active);
    const float* spectrum();

private:
    static constexpr int chunkFrames = 512;

    void reseat();
    void run();
    void turn();
    bool hear(const DeviceState& state, Time before, Time after);
    void seat();
    void fill(int writable);
    void mixChunk();
    void loseDevice();
    Time written() const;
    int64_t frameAt(Time time) const;

    // The caller's.
    bool started = false;
    int wantedOutput = 0;
    int openedRate = 0;  // Hz that the device was asked for
    int mixRate = 0;     // Hz that it gave; set while the thread does not run
    std::thread thread;
    std::vector<std::unique_ptr<Stream>> streams;
    float magnitudes[spectrumBands] = {};

    // Both threads', guarded by a mutex that is never held while decoding or at the device.
    std::mutex mutex;
    std::condition_variable wake;   // the thread: something changed, or quitting
    std::condition_variable ended;  // stop: finished
    bool changed = false;           // what plays or where, so that what the device holds is wrong
    bool quitting = false;
    bool finished = true;
    int outputCode = 0;
    HeardPosition heard;
    std::vector<Stream*> channels;
    std::vector<std::unique_ptr<Stream>> closing;  // the thread may still be reading from them
    bool spectrumActive = false;
    std::vector<float> recent;  // the mix in mono: frame n of the time line is at n modulo the size

    // The sound thread's, from start to stop.
    std::unique_ptr<Device> device;
    std::vector<Stream*> playing;
    int16_t chunk[2 * chunkFrames];
    int chunkUsed = chunkFrames;  // frames of it that the device took
    Time seatTime{};          // on the time line: the first frame written since the device was last emptied
    int64_t seatFrames = 0;   // written since
    Time seatedAt{};          // steady clock
    Time latestReport{};      // on the time line
    Time lead{};              // that an emptied device takes until it is heard; learnt from its starts
    bool leadLearnt = false;  // since it was emptied last
};

}  // namespace sound
