// Writes a sound as a WAV file of 16 bits, for listening and for other programs to measure.
#pragma once

#include "production/kit/sound/signal.h"

namespace audio {

// What is over full scale is cut off there. Ends the process with a line where the file can't be written.
void writeWav(const char* path, const Stereo& sound);

}  // namespace audio
