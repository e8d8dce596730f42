#include "tools/rehearse/stem_mix.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double fade = 0.02;  // seconds

}  // namespace

void Faders::setStems(std::vector<SoundFile> stems, uint32_t heard) {
    const std::lock_guard lock(mutex);
    wanted = {std::move(stems), heard, wanted.edition + 1};
}

void Faders::hear(uint32_t heard) {
    const std::lock_guard lock(mutex);
    wanted.heard = heard;
}

Faders::State Faders::state() const {
    const std::lock_guard lock(mutex);
    return wanted;
}

StemMix::StemMix(std::unique_ptr<sound::Decoder> music, std::shared_ptr<const Faders> faders)
    : faders(std::move(faders)) {
    track.decoder = std::move(music);
    follow();
    // It begins with what is wanted.
    track.gain = track.wanted;
    for (Voice& stem : stems) stem.gain = stem.wanted;
}

void StemMix::seek(sound::Time target, int mixRate) {
    rate = mixRate;
    nextFrame = int64_t(std::chrono::duration<double>(target).count() * rate);
    track.inStep = false;
    for (std::vector<Voice>* voices : {&stems, &leaving})
        for (Voice& voice : *voices) voice.inStep = false;
}

void StemMix::read(float* frames, int count) {
    follow();
    std::fill_n(frames, 2 * count, 0.0f);
    add(track, frames, count);
    for (std::vector<Voice>* voices : {&stems, &leaving})
        for (Voice& voice : *voices) add(voice, frames, count);
    std::erase_if(leaving, [](const Voice& voice) { return voice.gain == 0; });
    nextFrame += count;
}

void StemMix::follow() {
    const Faders::State state = faders->state();
    if (state.edition != edition) {
        edition = state.edition;
        for (Voice& old : stems) {
            old.wanted = false;
            leaving.push_back(std::move(old));
        }
        stems.clear();
        for (const SoundFile& file : state.stems) stems.push_back({sound::Decoder::open(file)});
    }
    track.wanted = state.isTrack();
    for (size_t i = 0; i < stems.size(); i++) stems[i].wanted = !track.wanted && (state.heard >> i & 1);
}

void StemMix::add(Voice& voice, float* frames, int count) {
    if (!voice.wanted && voice.gain == 0) voice.inStep = false;
    if (!voice.decoder || (!voice.wanted && voice.gain == 0)) return;
    // To the frame's middle, so that every decoder rounds it to that frame.
    const sound::Time time(std::llround((double(nextFrame) + 0.5) * 1e9 / rate));
    if (!voice.inStep) voice.decoder->seek(time, rate);
    voice.inStep = true;
    block.resize(size_t(2 * count));
    voice.decoder->read(block.data(), count);
    const float step = float((voice.wanted ? 1 : -1) / (fade * rate));
    for (int i = 0; i < count; i++) {
        voice.gain = std::clamp(voice.gain + step, 0.0f, 1.0f);
        for (int side = 0; side < 2; side++) frames[2 * i + side] += voice.gain * block[size_t(2 * i + side)];
    }
}
