#include "render/random.h"

#include <cstdint>
#include <cstdlib>

namespace {

// The C library's generator, with a state of the size that makes its sequence rand()'s.
struct Sequence {
    random_data data{};
    char state[128];

    Sequence() { initstate_r(1, state, sizeof state, &data); }
    Sequence& operator=(Sequence&&) = delete;
};

Sequence sequence;

}  // namespace

int randomNumber() {
    int32_t number = 0;
    random_r(&sequence.data, &number);
    return number;
}

void restartRandomNumbers(unsigned seed) {
    srandom_r(seed, &sequence.data);
}
