// ALSA devices that misbehave: calls of the library as the tests' program makes them, with the faults that a
// test asks for. Without any they are the library's own.
#pragma once

#include <atomic>

struct AlsaFaults {
    std::atomic<int> delayJitter = 0;  // frames that every other look finds too many waiting
    std::atomic<int> holdUp = 0;     // ms that a thread stands still after its look at a device and the clock
    std::atomic<int> laterRate = 0;  // Hz of every handle after the first; 0 leaves the choice to the device
    std::atomic<int> handles = 0;    // whose rate was chosen
};
extern AlsaFaults alsaFaults;

// No more of them once this is gone.
struct AlsaFaultsEnd {
    ~AlsaFaultsEnd() {
        alsaFaults.delayJitter = alsaFaults.holdUp = alsaFaults.laterRate = alsaFaults.handles = 0;
    }
};
