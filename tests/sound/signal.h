// Signals for the sound tests: made, written as Ogg Vorbis, and found again in a recording.
#pragma once

#include <optional>
#include <string>
#include <vector>

constexpr int recordRate = 44100;  // Hz, of every recording

// Never repeats, so that any 20 ms of it tell which they are, and smooth enough to be the same after a
// resampler; half of full scale.
std::vector<float> makeNoise(double seconds, int rate);
std::vector<float> makeTone(double seconds, int rate, double frequency);
// `samples` go to every one of the channels. Several files can be chained by putting one after the other.
void writeVorbis(const std::string& path, const std::vector<float>& samples, int rate, int channels);
// The first channel of a file as any Vorbis player decodes it.
std::vector<float> decodeVorbis(const std::string& path);

// Where in `reference`, in frames, the frames of the recording from `at` on are found, looking up to `reach`
// frames around `expected`; nothing if they are not from there.
std::optional<double> locate(const std::vector<float>& recording, long at,
                             const std::vector<float>& reference, long expected, long reach);
// Hz of a clean tone, by its upward zero crossings.
double toneFrequency(const std::vector<float>& samples, long from, long to);
