// A film written by an ffmpeg process: what it is made of goes in through a pipe.
#pragma once

#include <sys/types.h>

#include <cstdio>
#include <string>
#include <vector>

#include "tools/capture/encoding.h"
#include "tools/capture/grabber.h"
#include "tools/process.h"

// What a film has beside its pictures.
struct FilmSound {
    std::string path;  // none if empty: the film is silent, and a part of one that tells of itself
    double from = 0;   // seconds of the show
    double seconds = 0;
    std::string origin;  // what the film is made of
};

struct Film {
    static Film* inProgress;  // the one, if any, that is under way

    std::string path;        // where the film goes once it is whole
    std::string unfinished;  // where it grows, beside that; none once it is there
    std::string problem;     // what went wrong, in ffmpeg's words where it had any
    pid_t process = -1;
    int pipe = -1;
    int held = -1;                // the file that grows, so that no other capture writes it
    FILE* words = nullptr;        // what ffmpeg says
    FILE* progress = nullptr;     // how far it says it is
    int expectedFrames = 0;       // that its last word on that has to tell, unless 0
    std::vector<uint8_t> levels;  // of the picture that is written

    // Starts ffmpeg on `inputs`, whose first is pipe:0, and what to do with them. Check `problem`.
    Film(const std::string& path, const Words& inputs);
    // A film that isn't in its place leaves nothing behind.
    ~Film() { abandon(); }

    bool write(const void* bytes, size_t count);
    // A picture, for which it was started with filmWords() of the kind.
    bool writePicture(const Picture& picture, FilmKind kind);
    // Waits for ffmpeg, which was given all that the film needs or not. False with a `problem` if the film
    // isn't whole.
    bool finish(bool complete);
    // Puts the film, which is whole, in its place. False with a `problem` if that failed.
    bool place();
    // Ends ffmpeg and removes what it has written, unless the film is in its place.
    void abandon();

    // Ends the ffmpeg that finish() waits for, if it does. Safe in a signal handler.
    static void interruptFinish();

    int wait();
    int framesWritten() const;
};

// For a film of pictures. Those of `starts` don't need any before them.
Words filmWords(const std::string& path, FilmKind kind, int fps, const FilmSound& sound,
                const std::vector<int>& starts = {});
// The soundtrack and the chapters as inputs, the sound's encoding and the tags; none if the film is silent.
Words soundInput(const std::string& path, FilmKind kind, const FilmSound& sound);
