#include "app/clock.h"

#include <algorithm>
#include <cmath>

#include "script/show_times.h"

namespace {

constexpr float beatsPerSecond = showtime::beatsPerMinute / 60.0f;
constexpr float beatPulseLength = 0.3f;       // seconds
constexpr float autoBeatLatchBelow = 0.4f;    // phase up to which a beat fires, beats
constexpr float autoBeatReleaseFrom = 0.6f;   // phase from which the next one is awaited, beats
constexpr float rateSamplePeriod = 500;       // milliseconds
constexpr float furthestSeek = 2147483520.f;  // milliseconds; the largest float that an int holds

const float silentSpectrum[512] = {};

int position(MusicSource* source) {
    return source ? source->position() : 0;
}

}  // namespace

const float* MusicSource::spectrum() {
    return silentSpectrum;
}

float musicTime(int ms) {
    return float(ms * 0.001);
}

float beatPositionAt(float time) {
    return (time - showtime::beatZero) * beatsPerSecond;
}

void MusicClock::update() {
    previousTime = currentTime;
    currentTime = musicTime(position(source));
    delta = currentTime - previousTime;
}

void MusicClock::seek(float target) {
    const float ms = target > 0 ? target * 1000 : 0;
    if (source) source->setPosition(int(std::min(ms, furthestSeek)));
}

void MusicClock::pause() {
    paused = !paused;
    // Kept: in both directions. Whoever presses the key again notices that the music does not go on.
    if (source) source->pause();
}

void MusicClock::registerBeat() {
    beatCount += 1;
    lastBeatTime = time();
}

float MusicClock::beatPulse() {
    pulseLength = beatPulseLength;
    const float value = 1 - (time() - lastBeatTime) / pulseLength;
    return value > 0 ? value : 0;
}

float MusicClock::frameRate() {
    const float now = float(position(source));
    if (now > sampleStart + rateSamplePeriod) {
        lastRate = float(frameCount * 2);
        sampleStart = now;
        frameCount = 0;
    }
    return lastRate;
}

const float* MusicClock::spectrum() {
    return source ? source->spectrum() : silentSpectrum;
}

void MusicClock::runAutoBeat() {
    if (!(time() >= showtime::automaticBeats)) return;
    const float beats = beatPosition();
    // Negative before beat 0, so the first beat fires at the first frame from that moment on.
    const float phase = beats - std::trunc(beats);
    if (!autoBeatLatch && phase < autoBeatLatchBelow) {
        registerBeat();
        autoBeatLatch = true;
    } else if (phase >= autoBeatReleaseFrom) {
        autoBeatLatch = false;
    }
}
