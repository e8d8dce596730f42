#include "production/kit/sound/wav.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <vector>

namespace audio {

namespace {

// Little-endian, as the format and this machine have all numbers.
struct Header {
    char riff[4] = {'R', 'I', 'F', 'F'};
    uint32_t restOfFile;
    char wave[8] = {'W', 'A', 'V', 'E', 'f', 'm', 't', ' '};
    uint32_t restOfFormat = 16;
    uint16_t wholeNumbers = 1, channels = 2;
    uint32_t rate = sampleRate, bytesPerSecond = sampleRate * 4;
    uint16_t bytesPerFrame = 4, bitsPerSample = 16;
    char data[4] = {'d', 'a', 't', 'a'};
    uint32_t bytes;
};

}  // namespace

bool writeWav(const std::string& path, const Stereo& sound) {
    std::vector<int16_t> samples;
    for (size_t i = 0; i < sound.frames(); i++)
        for (const float sample : {sound.left[i], sound.right[i]})
            samples.push_back(int16_t(std::lround(std::clamp(sample, -1.0f, 1.0f) * 32767)));
    const auto bytes = uint32_t(samples.size() * sizeof(int16_t));
    const Header header = {.restOfFile = uint32_t(sizeof(Header)) - 8 + bytes, .bytes = bytes};
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(&header), sizeof header);
    file.write(reinterpret_cast<const char*>(samples.data()), bytes);
    file.close();
    return bool(file);
}

}  // namespace audio
