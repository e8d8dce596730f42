#include "tests/sound/alsa_faults.h"

#include <alsa/asoundlib.h>
#include <dlfcn.h>
#include <time.h>

#include <chrono>
#include <utility>

AlsaFaults alsaFaults;

using namespace std::chrono;

namespace {

thread_local bool looked = false;  // at a device, and not at the clock since

}  // namespace

// In the program itself, these come before the library's.
extern "C" {

snd_pcm_state_t snd_pcm_state(snd_pcm_t* pcm) {
    static const auto original =
        reinterpret_cast<decltype(&snd_pcm_state)>(dlsym(RTLD_NEXT, "snd_pcm_state"));
    return alsaFaults.runsDry ? SND_PCM_STATE_RUNNING : original(pcm);
}

int snd_pcm_avail_delay(snd_pcm_t* pcm, snd_pcm_sframes_t* available, snd_pcm_sframes_t* delay) {
    static const auto original =
        reinterpret_cast<decltype(&snd_pcm_avail_delay)>(dlsym(RTLD_NEXT, "snd_pcm_avail_delay"));
    static std::atomic<int> looks = 0;
    int result = original(pcm, available, delay);
    if (++looks % 2) *delay += alsaFaults.delayJitter;
    static snd_pcm_sframes_t held = -1;
    static steady_clock::time_point since;
    if (!alsaFaults.runsDry) {
        held = -1;
    } else {
        constexpr int rate = 44100, lastFrames = rate * 60 / 1000;
        if (held < 0) {
            held = *delay;
            since = steady_clock::now();
        }
        const double played = duration<double>(steady_clock::now() - since).count() * rate;
        const auto left = snd_pcm_sframes_t(double(held) - played);
        alsaFaults.stands = left <= lastFrames;
        *delay = alsaFaults.stands ? 0 : left;
        *available = result = 0;
    }
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
