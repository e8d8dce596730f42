#include "tests/sound/alsa_faults.h"

#include <alsa/asoundlib.h>
#include <dlfcn.h>
#include <time.h>

#include <utility>

AlsaFaults alsaFaults;

namespace {

thread_local bool looked = false;  // at a device, and not at the clock since

}  // namespace

// In the program itself, these come before the library's.
extern "C" {

int snd_pcm_avail_delay(snd_pcm_t* pcm, snd_pcm_sframes_t* available, snd_pcm_sframes_t* delay) {
    static const auto original =
        reinterpret_cast<decltype(&snd_pcm_avail_delay)>(dlsym(RTLD_NEXT, "snd_pcm_avail_delay"));
    static std::atomic<int> looks = 0;
    const int result = original(pcm, available, delay);
    if (++looks % 2) *delay += alsaFaults.delayJitter;
    looked = true;
    return result;
}

int snd_pcm_hw_params_set_rate_near(snd_pcm_t* pcm, snd_pcm_hw_params_t* parameters, unsigned* rate,
                                    int* direction) {
    static const auto original = reinterpret_cast<decltype(&snd_pcm_hw_params_set_rate_near)>(
        dlsym(RTLD_NEXT, "snd_pcm_hw_params_set_rate_near"));
    if (alsaFaults.handles++ > 0 && alsaFaults.laterRate > 0) *rate = unsigned(alsaFaults.laterRate.load());
    return original(pcm, parameters, rate, direction);
}

int clock_gettime(clockid_t clock, timespec* time) {
    static const auto original =
        reinterpret_cast<decltype(&clock_gettime)>(dlsym(RTLD_NEXT, "clock_gettime"));
    const int result = original(clock, time);
    const timespec pause{0, alsaFaults.holdUp * 1000000L};
    if (std::exchange(looked, false) && pause.tv_nsec > 0) nanosleep(&pause, nullptr);
    return result;
}
}
