// The Open Sound System's one device file.
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/soundcard.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "sound/device.h"
#include "sound/sound.h"

namespace sound {

namespace {

constexpr int frameBytes = 4;
constexpr int fragmentBytes = 2048;

struct OssDevice : Device {
    int file = -1;
    bool playing = false;

    ~OssDevice() override {
        if (file < 0) return;
        ioctl(file, SNDCTL_DSP_RESET, nullptr);
        close(file);
    }

    DeviceState state() override {
        audio_buf_info space{};
        int heldBytes = 0;
        if (ioctl(file, SNDCTL_DSP_GETOSPACE, &space) < 0) return {.kind = DeviceState::Lost};
        DeviceState state{.writable = std::max(space.bytes, 0) / frameBytes};
        if (!playing || ioctl(file, SNDCTL_DSP_GETODELAY, &heldBytes) < 0) return state;
        state.delay = heldBytes / frameBytes;
        if (heldBytes > 0) return state;
        playing = false;
        state.kind = DeviceState::RanDry;
        return state;
    }

    int write(const int16_t* frames, int count) override {
        const ssize_t taken = ::write(file, frames, size_t(count) * frameBytes);
        if (taken < 0) return errno == EAGAIN || errno == EINTR ? 0 : -1;
        playing = playing || taken > 0;
        return int(taken / frameBytes);
    }

    void drop() override {
        ioctl(file, SNDCTL_DSP_RESET, nullptr);
        playing = false;
    }

    bool configure(int wantedRate) {
        int fragments = bufferFrames(wantedRate) * frameBytes / fragmentBytes << 16 | 11;  // 2^11 bytes each
        int format = AFMT_S16_NE, channels = 2, exactRate = wantedRate;
        ioctl(file, SNDCTL_DSP_SETFRAGMENT, &fragments);
        if (ioctl(file, SNDCTL_DSP_SETFMT, &format) < 0 || format != AFMT_S16_NE) return false;
        if (ioctl(file, SNDCTL_DSP_CHANNELS, &channels) < 0 || channels != 2) return false;
        if (ioctl(file, SNDCTL_DSP_SPEED, &exactRate) < 0 || exactRate <= 0) return false;
        rate = exactRate;
        return true;
    }
};

}  // namespace

std::unique_ptr<Device> openOss(int rate) {
    auto device = std::make_unique<OssDevice>();
    device->code = Oss;
    device->file = open("/dev/dsp", O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    if (device->file < 0 || !device->configure(rate)) return nullptr;
    return device;
}

}  // namespace sound
