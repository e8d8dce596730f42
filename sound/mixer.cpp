#include "sound/mixer.h"

#include <signal.h>

#include <algorithm>
#include <cmath>
#include <system_error>

#include "sound/sound.h"

namespace sound {

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
constexpr Time patience = 2s;  // for the thread to end before it is left to the end of the process

Time now() {
    return std::chrono::steady_clock::now().time_since_epoch();
}

std::unique_ptr<Device> openDevice(int code, int rate) {
    std::unique_ptr<Device> device;
    if (code == Oss) device = openOss(rate);
    if (code == Esd) device = openEsd(rate);
    if (!device && code != None) device = openAlsa(rate);
    if (!device) device = openNone(rate);
    return device;
}

}  // namespace

void Mixer::setOutput(int code) {
    if (started) return;
    device.reset();
    wantedOutput = code;
    openedRate = defaultRate;
    device = openDevice(code, defaultRate);
    outputCode = device->code;
}

int Mixer::output() {
    std::lock_guard lock(mutex);
    return outputCode;
}

void Mixer::start(int rate, int channelCount) {
    if (started || rate <= 0) return;
    if (!device) setOutput(Alsa);
    if (rate != openedRate) {
        device.reset();
        device = openDevice(wantedOutput, rate);
        openedRate = rate;
        outputCode = device->code;
    }
    channels.assign(size_t(std::max(channelCount, 0)), nullptr);
    mixRate = device->rate;
    recent.assign(size_t(2 * mixRate), 0.0f);
    heard = HeardPosition(now());
    quitting = finished = false;
    changed = started = true;

    // Signals are the main thread's business.
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, &before);
    try {
        thread = std::thread(&Mixer::run, this);
    } catch (const std::system_error&) {
        // Without a thread the time line still runs.
        outputCode = None;
        finished = true;
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

void Mixer::stop() {
    if (!started) return;
    std::unique_lock lock(mutex);
    const Time position = heard.at(now());
    for (auto& stream : streams) stream->playhead.stand(position);
    quitting = true;
    wake.notify_one();
    const bool ends = ended.wait_for(lock, patience, [&] { return finished; });
    lock.unlock();
    if (!ends) {
        // A device that never answers must not hold up the end of the process; nothing can be started again.
        if (thread.joinable()) thread.detach();
        return;
    }
    if (thread.joinable()) thread.join();
    device.reset();
    outputCode = None;
    started = false;
}

Stream* Mixer::openStream(const char* path) {
    auto decoder = Decoder::open(path);
    if (!decoder) return nullptr;
    streams.push_back(std::make_unique<Stream>());
    streams.back()->decoder = std::move(decoder);
    return streams.back().get();
}

void Mixer::play(int channel, Stream* stream) {
    std::lock_guard lock(mutex);
    if (!stream || channel < 0 || size_t(channel) >= channels.size() || quitting) return;
    const Time position = heard.at(now());
    std::replace(channels.begin(), channels.end(), stream, static_cast<Stream*>(nullptr));
    if (channels[size_t(channel)]) channels[size_t(channel)]->playhead.stand(position);
    channels[size_t(channel)] = stream;
    stream->playhead.run(position);
    changed = true;
    wake.notify_one();
}

int Mixer::position(const Stream* stream) {
    if (!stream) return 0;
    std::lock_guard lock(mutex);
    return int(stream->playhead.at(heard.at(now())) / 1ms);
}

void Mixer::setPosition(Stream* stream, int ms) {
    if (!stream) return;
    std::lock_guard lock(mutex);
    stream->playhead.seek(heard.at(now()), std::chrono::milliseconds(std::max(ms, 0)));
    changed = true;
    wake.notify_one();
}

void Mixer::setPaused(int channel, bool paused) {
    std::lock_guard lock(mutex);
    if (channel < 0 || size_t(channel) >= channels.size() || quitting) return;
    Stream* stream = channels[size_t(channel)];
    if (!stream || stream->playhead.isRunning() != paused) return;
    if (paused)
        stream->playhead.stand(heard.at(now()));
    else
        stream->playhead.run(heard.at(now()));
    changed = true;
    wake.notify_one();
}

void Mixer::setSpectrumActive(bool active) {
    if (active && !analyser) analyser = std::make_unique<Spectrum>();
    std::lock_guard lock(mutex);
    if (active && !spectrumActive) std::fill(recent.begin(), recent.end(), 0.0f);
    spectrumActive = active;
}

const float* Mixer::spectrum() {
    float samples[Spectrum::windowFrames] = {};
    {
        std::lock_guard lock(mutex);
        if (spectrumActive && !recent.empty()) {
            const int64_t first = std::max<int64_t>(frameAt(heard.at(now())) - Spectrum::windowFrames, 0);
            for (int i = 0; i < Spectrum::windowFrames; ++i)
                samples[i] = recent[size_t(first + i) % recent.size()];
        }
    }
    if (analyser) analyser->analyse(samples, magnitudes);
    return magnitudes;
}

void Mixer::run() {
    for (;;) {
        turn();
        std::unique_lock lock(mutex);
        wake.wait_for(lock, turnTime, [&] { return changed || quitting; });
        if (!quitting) continue;
        finished = true;
        ended.notify_one();
        return;
    }
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
    const Time report = written() - Time(std::llround(state.delay * 1e9 / mixRate));
    // A device that stands says nothing new, so the time line runs by itself.
    if (report == latestReport) return true;
    latestReport = report;
    if (!leadLearnt && after - seatedAt > startingTime) {
        leadLearnt = true;
        const Time late = seatTime - lead + (after - seatedAt) - report;
        lead = std::clamp(lead + late, Time::zero(), longestLead);
    }
    const Time error = report - heard.at(after);
    if (std::chrono::abs(error) > outOfStep && after - seatedAt > settlingTime) return false;
    heard.report(after, report);
    return true;
}

// Empties the device, so that the next frame written is the one that is due when it will be heard.
void Mixer::seat() {
    std::vector<Time> places;
    {
        std::lock_guard lock(mutex);
        changed = false;
        seatedAt = now();
        seatTime = latestReport = heard.at(seatedAt) + lead;
        leadLearnt = false;
        playing.clear();
        for (Stream* stream : channels) {
            if (!stream || !stream->playhead.isRunning()) continue;
            playing.push_back(stream);
            places.push_back(stream->playhead.at(seatTime));
        }
    }
    device->drop();
    seatFrames = 0;
    chunkUsed = chunkFrames;
    for (size_t i = 0; i < playing.size(); ++i) playing[i]->decoder->seek(places[i], mixRate);
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
        stream->decoder->read(frames, chunkFrames);
        for (int i = 0; i < 2 * chunkFrames; ++i) sum[i] += frames[i];
    }
    for (int i = 0; i < 2 * chunkFrames; ++i)
        chunk[i] = int16_t(std::lrint(std::clamp(sum[i], -1.0f, 1.0f) * 32767));
    chunkUsed = 0;

    std::lock_guard lock(mutex);
    if (!spectrumActive) return;
    const int64_t first = frameAt(written());
    for (int i = 0; i < chunkFrames; ++i)
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

}  // namespace sound
