#include "sound/mixer.h"

#include <signal.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <future>
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
    thread = startThread([this] { run(); });
    if (thread.joinable()) return;
    // Without a thread the time line still runs.
    outputCode = None;
    finished = true;
}

void Mixer::stop() {
    if (!started) return;
    std::unique_lock lock(mutex);
    const Time position = heard.at(now());
    for (auto& stream : streams) stream->playhead.stand(position);
    quitting = true;
    wake.notify_one();
    const bool ends = ended.wait_for(lock, closingPatience, [&] { return finished; });
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

Stream* Mixer::openStream(std::unique_ptr<Source> source) {
    if (!source) return nullptr;
    streams.push_back(std::make_unique<Stream>());
    streams.back()->source = std::move(source);
    return streams.back().get();
}

void Mixer::closeStream(Stream* stream) {
    const auto place = std::find_if(streams.begin(), streams.end(),
                                    [&](const auto& owned) { return owned.get() == stream; });
    if (!stream || place == streams.end()) return;
    std::lock_guard lock(mutex);
    std::replace(channels.begin(), channels.end(), stream, static_cast<Stream*>(nullptr));
    closing.push_back(std::move(*place));
    streams.erase(place);
    changed = true;
    wake.notify_one();
}

void Mixer::play(int channel, Stream* stream) {
    std::lock_guard lock(mutex);
    if (!stream || channel < 0 || size_t(channel) >= channels.size() || quitting) return;
    const Time position = heard.at(now());
    std::replace(channels.begin(), channels.end(), stream, static_cast<Stream*>(nullptr));
    if (channels[size_t(channel)]) channels[size_t(channel)]->playhead.stand(position);
    channels[size_t(channel)] = stream;
    stream->playhead.run(position);
    reseat();
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
    reseat();
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
    reseat();
}

void Mixer::setSpectrumActive(bool active) {
    std::lock_guard lock(mutex);
    if (active && !spectrumActive) std::fill(recent.begin(), recent.end(), 0.0f);
    spectrumActive = active;
}

const float* Mixer::spectrum() {
    float samples[spectrumFrames] = {};
    {
        std::lock_guard lock(mutex);
        if (spectrumActive && !recent.empty()) {
            const int64_t first = std::max<int64_t>(frameAt(heard.at(now())) - spectrumFrames, 0);
            for (int i = 0; i < spectrumFrames; i++) samples[i] = recent[size_t(first + i) % recent.size()];
        }
    }
    analyseSpectrum(samples, magnitudes);
    return magnitudes;
}

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

}  // namespace sound
