// The way back from code that crashes or does not return: the program starts itself anew, in the same
// process, and takes over where it was.
#pragma once

#include <sys/types.h>

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <string>

#include "tools/rehearse/transport.h"

// Where an author was.
struct Whereabouts {
    int ms = 0;  // of the music
    bool held = false;
    std::optional<Loop> loop;
    bool deskShown = true;
    int counterQ = 0, counterA = 0;
    StemChoice stems;
    std::array<pid_t, 3> builds{};  // groups of processes that end with this start
};

struct Comeback : Whereabouts {
    std::string before;             // the library that goes on; empty for what is linked
    std::string failed;             // and the one that did not; empty if there is none that could give way
    uintptr_t begin = 0;            // where that lay in memory, once it was loaded
    std::set<std::string> sources;  // what was saved between the two
    std::set<std::string> unmade;   // and what music, pictures and models are older than
    std::string turned;  // a number that was turned since it came into force: that is what gives way then
    std::set<std::string> unwritten;  // the others that are not what their sources have
    std::string problem;  // what happened: a line that begins with file and number, where they are known
};

// What this start is to take over; nothing if it is a first one. Only the first call finds it.
std::optional<Comeback> takeComeback();

// From now on a crash, or work without an end, leads to a new start with the words of main's `argv`, if there
// is code that can give way; otherwise a crash ends the program as it would anywhere.
void armComeback(char** argv);

// What a new start would take over from now on: once a frame, and before a library is loaded.
void setComeback(const Comeback& state);

// While one lives, more than two seconds of the thread's own work are a loop without an end.
struct WorkLimit {
    WorkLimit();
    ~WorkLimit();
    WorkLimit& operator=(WorkLimit&&) = delete;
};
