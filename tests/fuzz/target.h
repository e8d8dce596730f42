// What a fuzz target is: a function that hands an input to a reader, uses what was read as the program does
// and demands what always holds of it. A crash, a hang, a leak or a complaint of a sanitizer is a fault.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "tests/memory_file.h"

// May end by a CleanExit.
void tryInput(std::string_view input);

// Reads every byte, so that what was never written or lies outside is noticed.
inline volatile uint8_t readSum;
inline void readAll(const void* bytes, size_t count) {
    uint8_t sum = 0;
    for (size_t i = 0; i < count; i++) sum ^= static_cast<const uint8_t*>(bytes)[i];
    readSum = sum;
}

inline void demand(bool holds, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
    if (holds) return;
    fprintf(stderr, "%s:%d: what always holds does not\n", file, line);
    abort();
}
