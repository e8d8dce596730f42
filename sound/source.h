// What a stream plays.
#pragma once

#include "sound/heard_position.h"

namespace sound {

class Source {
public:
    virtual ~Source() = default;
    // The next frame read is the one at `target`, and frames come at `rate` Hz. Needed before the first read.
    virtual void seek(Time target, int rate) = 0;
    // `count` stereo frames, left first; silence past the end and where something is missing.
    virtual void read(float* frames, int count) = 0;
};

}  // namespace sound
