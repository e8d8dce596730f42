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

// An instrument that plays each note by itself.
inline Instrument eachBy(const std::function<void(const Note&, Stereo&)>& play) {
    return [play](std::span<const Note> notes, Stereo& out) {
        for (const Note& note : notes) play(note, out);
    };
}

}  // namespace audio
