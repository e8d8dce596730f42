#include "production/kit/sound/wav.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fstream>

namespace audio {

namespace {

// Little-endian, as the format has all its numbers.
void append(std::string& bytes, uint32_t value, int count) {
    for (int i = 0; i < count; i++) bytes += char(value >> (8 * i) & 255);
}

void appendSample(std::string& bytes, float sample) {
    append(bytes, uint32_t(std::lround(std::clamp(sample, -1.0f, 1.0f) * 32767)), 2);
}

}  // namespace

bool writeWav(const std::string& path, const Stereo& sound) {
    constexpr int channels = 2, bytesPerFrame = 4;
    const uint32_t size = uint32_t(sound.frames()) * bytesPerFrame;
    std::string bytes = "RIFF";
    append(bytes, 36 + size, 4);
    bytes += "WAVEfmt ";
    append(bytes, 16, 4);  // of this block
    append(bytes, 1, 2);   // whole numbers, not packed
    append(bytes, channels, 2);
    append(bytes, sampleRate, 4);
    append(bytes, sampleRate * bytesPerFrame, 4);
    append(bytes, bytesPerFrame, 2);
    append(bytes, 16, 2);
    bytes += "data";
    append(bytes, size, 4);
    bytes.reserve(bytes.size() + size);
    for (size_t i = 0; i < sound.frames(); i++) {
        appendSample(bytes, sound.left[i]);
        appendSample(bytes, sound.right[i]);
    }
    std::ofstream file(path, std::ios::binary);
    file << bytes;
    file.close();
    return bool(file);
}

}  // namespace audio
