// A film written by an ffmpeg process: frames go in through a pipe, the soundtrack comes from its file.
#pragma once

#include <sys/types.h>

#include <cstdio>
#include <string>

#include "tools/capture/grabber.h"

struct Film {
    std::string path;        // where the film goes once it is whole
    std::string unfinished;  // where it grows, beside that
    std::string problem;     // what went wrong, in ffmpeg's words where it had any
    pid_t process = -1;
    int pipe = -1;
    FILE* words = nullptr;  // what ffmpeg says

    // Starts ffmpeg; the kind of film is what the path's ending means to it, H.264 and AAC for MP4 and its
    // like. Of the soundtrack it takes `seconds` from `from` on. Check `problem`.
    Film(const std::string& path, int fps, double from, double seconds, const char* soundtrack);
    // A film that was not finished leaves nothing behind.
    ~Film() { abandon(); }

    bool write(const Picture& picture);
    // Waits for ffmpeg and puts the film in its place, if it took all pictures. False with a `problem` if
    // not.
    bool finish(bool complete);
    // Ends ffmpeg and removes what it has written, unless the film is finished.
    void abandon();

    int wait();
};
