// A command that is run in the background whenever its sources have changed.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

struct BackgroundBuild {
    std::vector<std::string> command;  // none if empty
    std::string problem;               // the errors in what the last run said; empty if it was good
    std::string latest;                // the last line that the present run has said

    ~BackgroundBuild();

    // Soon; a run that is under way is followed by another.
    void request();
    // Once a frame: starts and ends runs. True when one has ended.
    bool poll();
    bool running() const { return process > 0; }

    pid_t process = -1;
    int output = -1;
    std::string said;
    bool requested = false;
    double requestedAt = 0;  // seconds

    void start();
    void listen();
};
