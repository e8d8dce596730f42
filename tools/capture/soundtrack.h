// The show's soundtrack as it was when the capture began: what is saved over its file later isn't in the
// film.
#pragma once

#include <string>

#include "tools/loading/show_file.h"
#include "tools/process.h"

struct Soundtrack {
    std::string path;  // where this process and ffmpeg find it until the process ends
    std::string hash;
    std::string problem;  // a line, if it can't be in a film; a silent one is made all the same

    explicit Soundtrack(const ShowFile& music)
        : path(fileInMemory(music.bytes ? *music.bytes : "")), hash(music.hash), problem(music.problem) {}
};
