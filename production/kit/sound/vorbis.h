// Writes a finished sound as an Ogg Vorbis file.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "production/kit/sound/signal.h"

namespace audio {

struct Tag {
    const char *name, *value;  // such as "TITLE"
};

struct VorbisForm {
    int rate = sampleRate;
    float quality = 0.6f;  // -0.1 to 1
    int serial = 126;      // of the stream; files that are to be chained need different ones
    std::vector<Tag> tags = {};
};

// The channels are of one length. The same sound gives the same file, byte for byte. False if the file can't
// be written.
bool writeVorbis(const std::string& path, const std::vector<std::span<const float>>& channels,
                 const VorbisForm& form);

}  // namespace audio
