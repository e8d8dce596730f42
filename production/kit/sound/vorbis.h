// Writes a finished sound as an Ogg Vorbis file.
#pragma once

#include "production/kit/sound/signal.h"

namespace audio {

struct Tag {
    const char *name, *value;  // such as "TITLE"
};

// quality: -0.1 to 1. The stream's serial number is fixed, so that the same sound gives the same file, byte
// for byte. Ends the process with a line where the file can't be written.
void writeVorbis(const char* path, const Stereo& sound, float quality, const std::vector<Tag>& tags);

}  // namespace audio
