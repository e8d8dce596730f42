// How loud what is heard is, at each moment of the music: measured from its files in the background, first
// around where the music is.
#pragma once

#include <future>
#include <memory>
#include <optional>
#include <vector>

#include "tools/rehearse/stem_mix.h"

struct Level {
    float loudness = 0;               // LUFS, of the last 3 s (EBU R 128, "short-term")
    float left = -120, right = -120;  // dBTP, of the last 100 ms
    float held = -120;                // dBTP, the most of both sides in the last 3 s

    bool operator==(const Level&) const = default;
};

class Meters {
public:
    ~Meters() { stop(); }
    // Of the sum of these, until `end`; at first from `ms` on, both in milliseconds. Once a frame: it begins
    // anew only where they are others than before.
    void follow(const std::vector<SoundFile>& files, int ms, int end);
    // Up to the last tenth of a second before `ms`; nothing where that is not measured yet, or nothing is.
    std::optional<Level> at(int ms) const;

    // Nothing is being measured.
    bool idle() const;

private:
    struct Measured;
    void stop();

    std::vector<SoundFile> measuring;
    int lastEnd = 0;
    std::shared_ptr<Measured> measured;
    std::future<void> work;
};
