// The show's music: a stream on channel 0 of the sound output, as the clock wants to see it.
#pragma once

#include "app/clock.h"
#include "sound/sound.h"

struct SoundMusic : MusicSource {
    static constexpr int channel = 0;
    static constexpr char path[] = "data/KVX - Ondrevane2.ogg";

    sound::Stream* stream = nullptr;  // nullptr, of a music that can't be opened, stands at 0

    int position() override { return sound::position(stream); }
    void setPosition(int ms) override { sound::setPosition(stream, ms); }
    void pause() override { sound::setPaused(channel, true); }
    const float* spectrum() override {
        sound::setSpectrumActive(true);
        return sound::spectrum();
    }
};
