#include "sound/sound.h"

#include <signal.h>

#include <algorithm>
#include <cmath>
#include <condition_variable>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

#include "sound/decoder.h"
#include "sound/device.h"
#include "sound/heard_position.h"
#include "sound/source.h"
#include "sound/spectrum.h"

namespace sound {

struct Stream {
    Playhead playhead;               // guarded by the mixer's mutex
    std::unique_ptr<Source> source;  // the sound thread's
};

namespace {

using namespace std::chrono_literals;

constexpr int defaultRate = 44100;  // Hz
constexpr Time turnTime = 10ms;     // between two looks at the device
// A look at the device that was interrupted for longer than this says nothing about any one moment.
constexpr Time reportSlack = 2ms;
// A device that is this far from the time line, after time to settle, has lost or held up sound: the sound is
// seated anew rather than the clock bent after it.
constexpr Time outOfStep = 120ms;
constexpr Time settlingTime = 1s;
constexpr Time startingTime = 200ms;  // after which a start can be judged
constexpr Time longestLead = 250ms;
// For a device to open before it counts as one that can't be.
constexpr Time openingPatience = 2s;
// For the thread to close the device and end before both are left to the end of the process.
constexpr Time closingPatience = 500ms;

Time now() {
    return std::chrono::steady_clock::now().time_since_epoch();
}

// A thread that no signal disturbs: they are the main thread's business. Without threads it can't be joined.
std::thread startThread(const std::function<void()>& work) {
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, &before);
    std::thread thread;
    try {
        thread = std::thread(work);
    } catch (const std::system_error&) {
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return thread;
}

// nullptr also if the server behind the device does not answer in time. What opens later is closed unused, by
// the thread that has waited for it.
std::unique_ptr<Device> openInTime(std::unique_ptr<Device> (*open)(int), int rate) {
    const auto opened = std::make_shared<std::promise<std::unique_ptr<Device>>>();
    std::future<std::unique_ptr<Device>> answer = opened->get_future();
    std::thread thread = startThread([=] { opened->set_value(open(rate)); });
    if (!thread.joinable()) return nullptr;
    thread.detach();
    if (answer.wait_for(openingPatience) != std::future_status::ready) return nullptr;
    return answer.get();
}

std::unique_ptr<Device> openDevice(int code, int rate) {
    std::unique_ptr<Device> device;
    if (code == Oss) device = openInTime(openOss, rate);
    if (code == Esd) device = openInTime(openEsd, rate);
    if (!device && code != None) device = openInTime(openAlsa, rate);
    if (!device) device = openNone(rate);
    return device;
}

// The engine behind the calls: the channels, the clock, and the thread that keeps the device fed.
struct Mixer {
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

// Never destroyed: the thread, should it not end in time, may outlive the program's other objects.
Mixer& mixer = *new Mixer;

// What the device holds is wrong, and where it said to be in that tells nothing any more. With the mutex
// held.
void Mixer::reseat() {
    heard.forgetReport(now());
    changed = true;
    wake.notify_one();
}

void Mixer::run() {
    for (;;) {
        turn();
        std::unique_lock lock(mutex);
        wake.wait_for(lock, turnTime, [&] { return changed || quitting; });
        if (quitting) break;
    }
    // Here, where stop need not wait for it: closing asks the server as well.
    device.reset();
    std::lock_guard lock(mutex);
    finished = true;
    ended.notify_one();
}

void Mixer::turn() {
    const Time before = now();
    DeviceState state = device->state();
    const Time after = now();
    if (state.kind == DeviceState::Lost) loseDevice();
    if (state.kind != DeviceState::Fine || !hear(state, before, after)) {
        seat();
        state = device->state();
    }
    fill(state.writable);
}

// Hands the device's report to the clock. False when the sound has to be seated anew.
bool Mixer::hear(const DeviceState& state, Time before, Time after) {
    std::lock_guard lock(mutex);
    if (changed) return false;
    if (state.delay < 0 || after - before > reportSlack) return true;
    // The position may have been asked for since: the clock hears nothing of an earlier moment than this one.
    const Time moment = now();
    const Time report = written() - Time(std::llround(state.delay * 1e9 / mixRate));
    // A device that stands says nothing new, so the time line runs by itself.
    if (report == latestReport) return true;
    latestReport = report;
    if (!leadLearnt && after - seatedAt > startingTime) {
        leadLearnt = true;
        const Time late = seatTime - lead + (after - seatedAt) - report;
        lead = std::clamp(lead + late, Time::zero(), longestLead);
    }
    const Time reached = report + (moment - after);
    const Time error = reached - heard.at(moment);
    if (std::chrono::abs(error) > outOfStep && after - seatedAt > settlingTime) return false;
    heard.report(moment, reached);
    return true;
}

// Empties the device, so that the next frame written is the one that is due when it will be heard.
void Mixer::seat() {
    std::vector<Time> places;
    std::vector<std::unique_ptr<Stream>> closed;  // once nothing plays them
    {
        std::lock_guard lock(mutex);
        changed = false;
        seatedAt = now();
        heard.forgetReport(seatedAt);
        seatTime = latestReport = heard.at(seatedAt) + lead;
        leadLearnt = false;
        playing.clear();
        closed.swap(closing);
        for (Stream* stream : channels) {
            if (!stream || !stream->playhead.isRunning()) continue;
            playing.push_back(stream);
            places.push_back(stream->playhead.at(seatTime));
        }
    }
    device->drop();
    seatFrames = 0;
    chunkUsed = chunkFrames;
    for (size_t i = 0; i < playing.size(); i++) playing[i]->source->seek(places[i], mixRate);
}

void Mixer::fill(int writable) {
    while (writable > 0) {
        if (chunkUsed == chunkFrames) mixChunk();
        const int offered = std::min(writable, chunkFrames - chunkUsed);
        const int taken = device->write(chunk + 2 * chunkUsed, offered);
        if (taken < 0) {
            loseDevice();
            seat();
            return;
        }
        chunkUsed += taken;
        seatFrames += taken;
        writable -= taken;
        if (taken < offered) return;
    }
}

void Mixer::mixChunk() {
    float sum[2 * chunkFrames] = {}, frames[2 * chunkFrames];
    for (Stream* stream : playing) {
        stream->source->read(frames, chunkFrames);
        for (int i = 0; i < 2 * chunkFrames; i++) sum[i] += frames[i];
    }
    for (int i = 0; i < 2 * chunkFrames; i++)
        chunk[i] = int16_t(std::lrint(std::clamp(sum[i], -1.0f, 1.0f) * 32767));
    chunkUsed = 0;

    std::lock_guard lock(mutex);
    if (!spectrumActive) return;
    const int64_t first = frameAt(written());
    for (int i = 0; i < chunkFrames; i++)
        recent[size_t(first + i) % recent.size()] = (sum[2 * i] + sum[2 * i + 1]) / 2;
}

// The show goes on without its sound.
void Mixer::loseDevice() {
    device = openNone(mixRate);
    std::lock_guard lock(mutex);
    outputCode = None;
}

// On the time line: where the next frame that is written belongs.
Time Mixer::written() const {
    return seatTime + Time(std::llround(double(seatFrames) * 1e9 / mixRate));
}

int64_t Mixer::frameAt(Time time) const {
    return std::llround(std::chrono::duration<double>(time).count() * mixRate);
}

}  // namespace

void setOutput(int code) {
    if (mixer.started) return;
    mixer.device.reset();
    mixer.wantedOutput = code;
    mixer.openedRate = defaultRate;
    mixer.device = openDevice(code, defaultRate);
    mixer.outputCode = mixer.device->code;
}

int output() {
    std::lock_guard lock(mixer.mutex);
    return mixer.outputCode;
}

void start(int rate, int channelCount) {
    if (mixer.started || rate <= 0) return;
    if (!mixer.device) setOutput(Alsa);
    if (rate != mixer.openedRate) {
        mixer.device.reset();
        mixer.device = openDevice(mixer.wantedOutput, rate);
        mixer.openedRate = rate;
        mixer.outputCode = mixer.device->code;
    }
    mixer.channels.assign(size_t(std::max(channelCount, 0)), nullptr);
    mixer.mixRate = mixer.device->rate;
    mixer.recent.assign(size_t(2 * mixer.mixRate), 0.0f);
    mixer.heard = HeardPosition(now());
    mixer.quitting = mixer.finished = false;
    mixer.changed = mixer.started = true;
    mixer.thread = startThread([] { mixer.run(); });
    // After the output's libraries were loaded, so that they are still there when the thread ends.
    std::atexit(stop);
    if (mixer.thread.joinable()) return;
    // Without a thread the time line still runs.
    mixer.outputCode = None;
    mixer.finished = true;
}

void stop() {
    if (!mixer.started) return;
    std::unique_lock lock(mixer.mutex);
    const Time position = mixer.heard.at(now());
    for (auto& stream : mixer.streams) stream->playhead.stand(position);
    mixer.quitting = true;
    mixer.wake.notify_one();
    const bool ends = mixer.ended.wait_for(lock, closingPatience, [] { return mixer.finished; });
    lock.unlock();
    if (!ends) {
        // A device that never answers must not hold up the end of the process; nothing can be started again.
        if (mixer.thread.joinable()) mixer.thread.detach();
        return;
    }
    if (mixer.thread.joinable()) mixer.thread.join();
    mixer.device.reset();
    mixer.outputCode = None;
    mixer.started = false;
}

Stream* openStream(const char* path) {
    return openStream(Decoder::open(path));
}

Stream* openStream(std::unique_ptr<Source> source) {
    if (!source) return nullptr;
    mixer.streams.push_back(std::make_unique<Stream>());
    mixer.streams.back()->source = std::move(source);
    return mixer.streams.back().get();
}

void closeStream(Stream* stream) {
    const auto place = std::find_if(mixer.streams.begin(), mixer.streams.end(),
                                    [&](const auto& owned) { return owned.get() == stream; });
    if (!stream || place == mixer.streams.end()) return;
    std::lock_guard lock(mixer.mutex);
    std::replace(mixer.channels.begin(), mixer.channels.end(), stream, static_cast<Stream*>(nullptr));
    mixer.closing.push_back(std::move(*place));
    mixer.streams.erase(place);
    mixer.changed = true;
    mixer.wake.notify_one();
}

void play(int channel, Stream* stream) {
    std::lock_guard lock(mixer.mutex);
    if (!stream || channel < 0 || size_t(channel) >= mixer.channels.size() || mixer.quitting) return;
    const Time position = mixer.heard.at(now());
    std::replace(mixer.channels.begin(), mixer.channels.end(), stream, static_cast<Stream*>(nullptr));
    if (mixer.channels[size_t(channel)]) mixer.channels[size_t(channel)]->playhead.stand(position);
    mixer.channels[size_t(channel)] = stream;
    stream->playhead.run(position);
    mixer.reseat();
}

int position(const Stream* stream) {
    if (!stream) return 0;
    std::lock_guard lock(mixer.mutex);
    return int(stream->playhead.at(mixer.heard.at(now())) / 1ms);
}

void setPosition(Stream* stream, int ms) {
    if (!stream) return;
    std::lock_guard lock(mixer.mutex);
    stream->playhead.seek(mixer.heard.at(now()), std::chrono::milliseconds(std::max(ms, 0)));
    mixer.reseat();
}

void setPaused(int channel, bool paused) {
    std::lock_guard lock(mixer.mutex);
    if (channel < 0 || size_t(channel) >= mixer.channels.size() || mixer.quitting) return;
    Stream* stream = mixer.channels[size_t(channel)];
    if (!stream || stream->playhead.isRunning() != paused) return;
    if (paused)
        stream->playhead.stand(mixer.heard.at(now()));
    else
        stream->playhead.run(mixer.heard.at(now()));
    mixer.reseat();
}

void setSpectrumActive(bool active) {
    std::lock_guard lock(mixer.mutex);
    if (active && !mixer.spectrumActive) std::fill(mixer.recent.begin(), mixer.recent.end(), 0.0f);
    mixer.spectrumActive = active;
}

const float* spectrum() {
    float samples[spectrumFrames] = {};
    {
        std::lock_guard lock(mixer.mutex);
        if (mixer.spectrumActive && !mixer.recent.empty()) {
            const int64_t first = std::max<int64_t>(mixer.frameAt(mixer.heard.at(now())) - spectrumFrames, 0);
            for (int i = 0; i < spectrumFrames; i++)
                samples[i] = mixer.recent[size_t(first + i) % mixer.recent.size()];
        }
    }
    analyseSpectrum(samples, mixer.magnitudes);
    return mixer.magnitudes;
}

}  // namespace sound
