// Other people's ears: ffmpeg's loudness meter and decoder, asked through processes.
#pragma once

#include <string>

#include "production/kit/sound/signal.h"

struct Loudness {
    double integrated = 0, truePeak = 0;  // LUFS, dBTP
};
Loudness measure(const std::string& path);
// What it shows at a moment, in seconds: LUFS of the last 3 s, dBTP of the last 100 ms.
struct LoudnessAt {
    double shortTerm = 0, left = 0, right = 0;
};
LoudnessAt measureAt(const std::string& path, double seconds);

// Any file that ffmpeg decodes, at 44.1 kHz.
audio::Stereo decode(const std::string& path);

// Mean square of both sides between two times in seconds, in dB of full scale.
double levelOf(const audio::Stereo& sound, double from, double to);

// How alike the sides are, from -1 to 1.
double correlationOf(const audio::Stereo& sound);
