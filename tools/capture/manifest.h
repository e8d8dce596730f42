// What a part of a film carries beside it, so that parts from many machines can be joined: a file of lines,
// each a word and what it stands for.
#pragma once

#include <string>
#include <vector>

#include "tools/capture/encoding.h"
#include "tools/capture/frames.h"

struct DrawnFrame {
    int number;
    std::string hash;  // of its drawn pixels; of its file, where it is a picture
};

struct Manifest {
    std::string program;   // its hash
    std::string renderer;  // who drew
    std::string data;      // hash of what the show loads
    std::string sound;     // hash of the soundtrack
    int fps = 0;
    int samples = 0;  // a pixel
    FilmKind kind = FilmKind::Net;
    std::string film;                // hash of the part's own file; none of numbered pictures
    std::vector<DrawnFrame> frames;  // in the order in which the part shows them

    FrameRuns runs() const;
};

// Of what this program would draw in the window that is open from these hashes, with neither film nor frames
// yet.
Manifest manifestOfWindow(int fps, FilmKind kind, const std::string& data, const std::string& sound);

// Who drew, and of what, in a line.
std::string originOf(const Manifest& manifest);

std::string manifestPath(const std::string& part);
// False if there is none, or it isn't whole.
bool readManifest(const std::string& part, Manifest* manifest);
// Writes it whole or not at all; false after a line on standard error.
bool writeManifest(const std::string& part, const Manifest& manifest);

// What keeps parts with these manifests out of one film, in a few words that go on "was drawn ..."; "" if
// nothing does.
std::string differenceOf(const Manifest& part, const Manifest& other);

// Whether the part is there and its film is what its manifest says. Puts it in its place if a capture ended
// between doing so with the manifest, which comes first, and with the film.
bool isWhole(const std::string& part, const Manifest& manifest);
