// The soundtrack's stems in a rehearsal: made by the score's own generator when they are asked for, read, and
// muted or soloed.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tools/loading/readers.h"
#include "tools/rehearse/background_build.h"
#include "tools/rehearse/stem_mix.h"

struct Stem {
    std::string name;
    SoundFile file;
    std::string waveform;  // two bytes a column, as a music's; empty until it is measured
};

struct Stems {
    std::string folder = "build/stems/";  // its file "list" has their names, a line each; NAME.ogg are they
    BackgroundBuild build;                // that makes them; without a command they are taken as they are
    std::shared_ptr<Faders> faders;
    StemChoice choice;       // stays when they are made anew
    std::vector<Stem> rows;  // empty where there are none, for the problem's sake or as they are not read yet
    std::string problem;     // in one line: why there are none

    explicit Stems(std::shared_ptr<Faders> faders) : faders(std::move(faders)) {}

    // Shown, they are made if need be; hidden, the track is heard.
    void show(bool shown);
    // By number; nothing where there is none. A stem that is soloed is heard with all others that are;
    // without any, all that are not muted are.
    void toggle(uint32_t StemChoice::*which, int stem);
    void hearAll();
    bool isHeard(int stem) const;

    // What they are made from may have changed.
    void makeAgain();
    // Once a frame.
    void poll();
    // What is heard: `track`, if there is one, or stems.
    std::vector<SoundFile> heardFiles(const SoundFile& track) const;

private:
    std::optional<Readers> readers;  // while they are read
    std::vector<Stem> coming;
    std::filesystem::file_time_type listed{};  // the time of the list that `rows` are of
    int unread = 0;

    void read();
    void take(ShowFile& file);
    void refuse(const std::string& why);
    uint32_t heard() const;
};
