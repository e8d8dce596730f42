#include "sound/sound.h"

#include <cstdlib>

#include "sound/decoder.h"
#include "sound/mixer.h"

namespace sound {

namespace {

// Never destroyed: the thread, should it not end in time, may outlive the program's other objects.
Mixer& mixer() {
    static Mixer& only = *new Mixer;
    return only;
}

}  // namespace

void setOutput(int code) {
    mixer().setOutput(code);
}
int output() {
    return mixer().output();
}

void start(int rate, int channels) {
    mixer().start(rate, channels);
    // After the output's libraries were loaded, so that they are still there when the thread ends.
    std::atexit(stop);
}

void stop() {
    mixer().stop();
}

Stream* openStream(const char* path) {
    return mixer().openStream(Decoder::open(path));
}
Stream* openStream(std::unique_ptr<Source> source) {
    return mixer().openStream(std::move(source));
}
void closeStream(Stream* stream) {
    mixer().closeStream(stream);
}
void play(int channel, Stream* stream) {
    mixer().play(channel, stream);
}
int position(const Stream* stream) {
    return mixer().position(stream);
}
void setPosition(Stream* stream, int ms) {
    mixer().setPosition(stream, ms);
}
void setPaused(int channel, bool paused) {
    mixer().setPaused(channel, paused);
}
void setSpectrumActive(bool active) {
    mixer().setSpectrumActive(active);
}
const float* spectrum() {
    return mixer().spectrum();
}

}  // namespace sound
