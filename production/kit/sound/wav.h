// Writes a sound as a WAV file of 16 bits, for listening and for other programs to measure.
#pragma once

#include <string>

#include "production/kit/sound/signal.h"

namespace audio {

// What is over full scale is cut off there. False if the file can't be written.
bool writeWav(const std::string& path, const Stereo& sound);

}  // namespace audio
