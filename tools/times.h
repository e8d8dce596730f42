// Times as texts and as readings of a clock.
#pragma once

#include <chrono>
#include <cmath>

#include "tools/formatted.h"

// Of a clock that nobody sets, from some moment on.
inline double steadySeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// Minutes and seconds, such as "3:15", or with up to three decimals: "3:15.28". The nearest to it.
inline std::string minutesAndSeconds(double seconds, int decimals = 0) {
    int unit = 1;  // of a second
    for (int i = 0; i < decimals; i++) unit *= 10;
    const long units = std::lround(seconds * unit), whole = units / unit;
    const std::string text = formatted("%ld:%02ld", whole / 60, whole % 60);
    return decimals > 0 ? text + formatted(".%0*ld", decimals, units % unit) : text;
}
