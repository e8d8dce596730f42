#include "production/kit/sound/envelope.h"

#include <algorithm>
#include <cmath>

namespace audio {

namespace {

// Per sample factor of a fall to 2 % (e to the -3.9) in that many seconds.
float keepOf(float seconds) {
    return std::exp(-3.9f / std::max(1.0f, seconds * sampleRate));
}

}  // namespace

Envelope::Envelope(const Adsr& shape, float length)
    : rise(std::max<size_t>(1, frameAt(shape.attack))),
      held(frameAt(length)),
      tail(frameAt(2 * shape.release) + 1),
      sustain(shape.sustain),
      riseStep(1.0f / rise),
      decayKeep(keepOf(shape.decay)),
      releaseKeep(keepOf(shape.release)) {}

float Envelope::next() {
    if (frame >= held)
        level *= releaseKeep;
    else if (frame < rise)
        level += riseStep;
    else
        level = sustain + (level - sustain) * decayKeep;
    frame++;
    return level;
}

Decay::Decay(float seconds) : keep(keepOf(seconds)) {}

}  // namespace audio
