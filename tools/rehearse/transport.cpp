#include "tools/rehearse/transport.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include "tools/capture/frames.h"

namespace {

using namespace std::chrono_literals;

constexpr int shortestLoop = 120;  // milliseconds; a sixteenth of the music's bars is one

sound::Time now() {
    return std::chrono::steady_clock::now().time_since_epoch();
}

}  // namespace

int nearestFrame(int ms) {
    return int(std::lround(ms * Transport::framesPerSecond / 1000.0));
}

int millisecondsOf(int frame) {
    return millisecondsOf(frame, Transport::framesPerSecond);
}

int Transport::rawPosition() {
    return stream ? sound::position(stream) : int(silent.at(now()) / 1ms);
}

int Transport::position() {
    const int ms = rawPosition();
    if (ms < end) return ms;
    hold();
    return rawPosition();
}

void Transport::moveTo(int ms) {
    if (stream) sound::setPosition(stream, ms);
    silent.seek(now(), std::chrono::milliseconds(ms));
}

void Transport::setPosition(int ms) {
    int frame = nearestFrame(std::clamp(ms, 0, end));
    while (millisecondsOf(frame) >= end) frame--;
    moveTo(millisecondsOf(frame));
    jumped = true;
}

const float* Transport::spectrum() {
    sound::setSpectrumActive(true);
    return sound::spectrum();
}

void Transport::hold() {
    held = true;
    if (stream) sound::setPaused(channel, true);
    silent.stand(now());
    setPosition(rawPosition());
}

void Transport::goOn() {
    held = false;
    // Both, so that either can go on in the other's place.
    if (stream) sound::setPaused(channel, false);
    silent.run(now());
}

void Transport::step(int frames) {
    if (!held) hold();
    setPosition(millisecondsOf(std::max(nearestFrame(rawPosition()) + frames, 0)));
}

bool Transport::turn() {
    if (held || !loop) return false;
    const int past = rawPosition() - loop->to;
    if (past < 0) return false;
    moveTo(loop->from + past % (loop->to - loop->from));
    jumped = true;
    return true;
}

void Transport::setLoop(int from, int to) {
    if (from > to) std::swap(from, to);
    from = std::clamp(from, 0, end);
    to = std::clamp(to, 0, end);
    loop.reset();
    if (to - from >= shortestLoop) loop = Loop{from, to};
}

void Transport::replaceMusic(std::unique_ptr<sound::Decoder> track) {
    const int ms = rawPosition();
    sound::closeStream(stream);
    stream = track ? sound::openStream(std::make_unique<StemMix>(std::move(track), faders)) : nullptr;
    moveTo(ms);
    if (stream) sound::play(channel, stream);
    if (stream && held) sound::setPaused(channel, true);
}
