// What plays: a value, so that a band can be a table.
#pragma once

#include <functional>
#include <span>

#include "production/kit/sound/notation.h"
#include "production/kit/sound/signal.h"

namespace audio {

// Plays notes into a stretch of sound, adding to what is there; their starts are seconds from its first
// frame.
using Instrument = std::function<void(std::span<const Note>, Stereo&)>;

}  // namespace audio
