// Reading a file for a try in a process of its own: the show's readers end the process over a broken file,
// and then it is not the one that draws.
#pragma once

#include <sys/types.h>

#include <memory>
#include <optional>
#include <string>

#include "image/image.h"
#include "tools/rehearse/snapshot.h"

enum class FileKind { picture, model, music };

// The program itself, called as "rehearse --check KIND NAME" with the snapshot as descriptor 3: reads it as
// the show would and returns the exit status, 1 after a line on standard error if the show could not use it.
// Of music it prints the waveform: two bytes for each of waveformColumns, peak and loudness.
int runCheck(int argc, const char* const* argv);

// The program that is called so: this one, which is `rehearse` unless a test says otherwise.
extern const char* checkProgram;

constexpr int waveformColumns = 776;

// Of the kind that the name, not the path, tells.
int readPicture(const char* path, const std::string& name, Image* image);

// A check that is under way.
struct Check {
    FileKind kind;
    std::string name;
    std::unique_ptr<Snapshot> snapshot;
    pid_t process = -1;
    int output = -1, words = -1;  // files for its standard output and standard error

    // Starts it.
    Check(FileKind kind, const std::string& name, std::unique_ptr<Snapshot> snapshot);
    ~Check();
    Check(const Check&) = delete;
    Check& operator=(const Check&) = delete;

    struct Result {
        bool good;
        std::string output;
        std::string problem;  // a line, if it is not good
    };
    // Nothing as long as it is under way. Afterwards not to be called again.
    std::optional<Result> result();
};
