// ALSA's default device, polled rather than waited for.
#include <alsa/asoundlib.h>

#include <algorithm>
#include <utility>

#include "sound/device.h"
#include "sound/sound.h"

namespace sound {

namespace {

// To throw away what a sound server holds, ALSA's plugin opens a new stream there. That takes its time, and a
// sink without a stream may fall asleep meanwhile. So a second handle stands ready where the device allows
// one, and the two change places.
struct AlsaDevice : Device {
    snd_pcm_t* pcm = nullptr;
    snd_pcm_t* spare = nullptr;  // nullptr where only one can be open
    bool spareReady = false;

    ~AlsaDevice() override {
        if (pcm) snd_pcm_drop(pcm);
        if (pcm) snd_pcm_close(pcm);
        if (spare) snd_pcm_close(spare);
        snd_config_update_free_global();
    }

    DeviceState state() override {
        if (spare && !spareReady) spareReady = snd_pcm_prepare(spare) >= 0;
        snd_pcm_sframes_t writable = 0, delay = -1;
        int error = 0;
        if (snd_pcm_state(pcm) == SND_PCM_STATE_RUNNING) {
            error = snd_pcm_avail_delay(pcm, &writable, &delay);
        } else {
            writable = snd_pcm_avail_update(pcm);
            error = int(std::min<snd_pcm_sframes_t>(writable, 0));
        }
        if (error == -EPIPE || error == -ESTRPIPE) {
            if (snd_pcm_prepare(pcm) < 0) return {.kind = DeviceState::Lost};
            return {.kind = DeviceState::RanDry, .writable = bufferFrames(rate)};
        }
        if (error < 0) return {.kind = DeviceState::Lost};
        return {.writable = int(writable), .delay = int(delay)};
    }

    int write(const int16_t* frames, int count) override {
        const snd_pcm_sframes_t taken = snd_pcm_writei(pcm, frames, snd_pcm_uframes_t(count));
        if (taken >= 0) return int(taken);
        // Running dry is found, and mended, by the next look at the state.
        return taken == -EAGAIN || taken == -EPIPE || taken == -ESTRPIPE ? 0 : -1;
    }

    void drop() override {
        if (snd_pcm_state(pcm) == SND_PCM_STATE_PREPARED) return;
        snd_pcm_drop(pcm);
        if (spareReady) {
            std::swap(pcm, spare);
            spareReady = false;
        } else {
            snd_pcm_prepare(pcm);
        }
    }
};

// A handle ready for writing at the rate nearest to `*rate`, which is set to it; or nullptr.
snd_pcm_t* openPcm(unsigned* rate) {
    snd_pcm_t* pcm = nullptr;
    if (snd_pcm_open(&pcm, "default", SND_PCM_STREAM_PLAYBACK, SND_PCM_NONBLOCK) < 0) return nullptr;
    snd_pcm_hw_params_t* hardware;
    snd_pcm_sw_params_t* software;
    snd_pcm_hw_params_alloca(&hardware);
    snd_pcm_sw_params_alloca(&software);
    snd_pcm_uframes_t buffer = snd_pcm_uframes_t(bufferFrames(int(*rate)));
    snd_pcm_uframes_t period = buffer / 10;
    if (snd_pcm_hw_params_any(pcm, hardware) >= 0 &&
        snd_pcm_hw_params_set_access(pcm, hardware, SND_PCM_ACCESS_RW_INTERLEAVED) >= 0 &&
        snd_pcm_hw_params_set_format(pcm, hardware, SND_PCM_FORMAT_S16) >= 0 &&
        snd_pcm_hw_params_set_channels(pcm, hardware, 2) >= 0 &&
        snd_pcm_hw_params_set_rate_near(pcm, hardware, rate, nullptr) >= 0 &&
        snd_pcm_hw_params_set_period_size_near(pcm, hardware, &period, nullptr) >= 0 &&
        snd_pcm_hw_params_set_buffer_size_near(pcm, hardware, &buffer) >= 0 &&
        snd_pcm_hw_params(pcm, hardware) >= 0 && snd_pcm_sw_params_current(pcm, software) >= 0 &&
        snd_pcm_sw_params_set_start_threshold(pcm, software, period) >= 0 &&
        snd_pcm_sw_params(pcm, software) >= 0 && snd_pcm_prepare(pcm) >= 0)
        return pcm;
    snd_pcm_close(pcm);
    return nullptr;
}

void ignoreMessage(const char*, int, const char*, int, const char*, ...) {}

}  // namespace

std::unique_ptr<Device> openAlsa(int rate) {
    snd_lib_error_set_handler(ignoreMessage);
    unsigned exactRate = unsigned(rate);
    snd_pcm_t* pcm = openPcm(&exactRate);
    if (!pcm) {
        snd_config_update_free_global();
        return nullptr;
    }
    auto device = std::make_unique<AlsaDevice>();
    device->code = Alsa;
    device->rate = int(exactRate);
    device->pcm = pcm;
    unsigned spareRate = exactRate;
    device->spare = openPcm(&spareRate);
    // A device may take one rate from its first user and another from its next.
    if (device->spare && spareRate != exactRate) snd_pcm_close(std::exchange(device->spare, nullptr));
    device->spareReady = device->spare != nullptr;
    return device;
}

}  // namespace sound
