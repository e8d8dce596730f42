#include <algorithm>
#include <chrono>
#include <ctime>

#include "bench/bench.h"

double wallSeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

double processSeconds() {
    timespec time;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return time.tv_sec + time.tv_nsec * 1e-9;
}

double bestSeconds(int runs, const std::function<void()>& work) {
    double best = 1e9;
    for (int i = 0; i < runs; i++) {
        const double start = wallSeconds();
        work();
        best = std::min(best, wallSeconds() - start);
    }
    return best;
}
