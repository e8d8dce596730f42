// What the mixer asks of an output: one class per kind, each in its own source file. A device is used by one
// thread at a time and never waits for the sound to be heard.
#pragma once

#include <cstdint>
#include <memory>

namespace sound {

struct DeviceState {
    enum Kind {
        Fine,
        RanDry,  // it had nothing to play; it is ready to start again
        Lost     // for good
    };
    Kind kind = Fine;
    int writable = 0;  // frames that it takes now
    int delay = -1;    // frames written and not heard yet; negative when it can't tell now
};

// Frames are stereo, 16 bits, left first.
struct Device {
    int code = 0;  // of the output
    int rate = 0;  // Hz; the nearest to what was asked for

    virtual ~Device() = default;
    virtual DeviceState state() = 0;
    // Takes up to `count` frames, starting to play if it does not yet. Returns how many it took, negative
    // when it is lost.
    virtual int write(const int16_t* frames, int count) = 0;
    // Forgets what was written and not heard yet, and stands until the next write.
    virtual void drop() = 0;
};

// Frames a device is asked to hold: enough to ride out a busy machine, dropped on every seek anyway.
inline int bufferFrames(int rate) {
    return rate / 5;
}

// nullptr if it can't be opened at 16 bits stereo; nothing is printed.
std::unique_ptr<Device> openAlsa(int rate);
std::unique_ptr<Device> openOss(int rate);
std::unique_ptr<Device> openEsd(int rate);
// Always opens: silence at real speed.
std::unique_ptr<Device> openNone(int rate);

}  // namespace sound
