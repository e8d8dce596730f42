// No output: takes frames at the speed of the steady clock, so that a silent show runs as a heard one does.
#include <algorithm>
#include <chrono>

#include "sound/device.h"
#include "sound/sound.h"

namespace sound {

namespace {

using Clock = std::chrono::steady_clock;

struct NoDevice : Device {
    int64_t written = 0;  // frames since the start
    Clock::time_point started;

    // The time line needs no reports: it runs by the same clock.
    DeviceState state() override {
        const int64_t room = bufferFrames(rate) - written + played();
        if (room > bufferFrames(rate)) {
            written = 0;
            return {.kind = DeviceState::RanDry, .writable = bufferFrames(rate)};
        }
        return {.writable = int(room)};
    }

    int write(const int16_t*, int count) override {
        if (written == 0) started = Clock::now();
        const int taken = int(std::min<int64_t>(count, bufferFrames(rate) - written + played()));
        written += taken;
        return taken;
    }

    void drop() override { written = 0; }

    int64_t played() const {
        if (written == 0) return 0;
        return int64_t(std::chrono::duration<double>(Clock::now() - started).count() * rate);
    }
};

}  // namespace

std::unique_ptr<Device> openNone(int rate) {
    auto device = std::make_unique<NoDevice>();
    device->code = None;
    device->rate = rate;
    return device;
}

}  // namespace sound
