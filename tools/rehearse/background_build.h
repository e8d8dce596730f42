// A command that is run in the background whenever its sources have changed: one that makes what is shown. A
// line of it that begins with "laid" says that something came out, one with "kept" is news.
#pragma once

#include <sys/types.h>

#include <set>
#include <string>
#include <vector>

struct BackgroundBuild {
    std::vector<std::string> command;  // none if empty
    std::string root;                  // the sources' folder, which the errors are told without
    std::string problem;               // the errors in what the last run said; empty if it was good
    std::string latest;                // what the present run has said last of what it does
    std::set<std::string>
        newer;  // sources of which a younger text was saved than what is shown was made from
    std::set<std::string> shared;   // those of `newer` which only some of what is shown is made from
    std::vector<std::string> news;  // lines, for whoever takes them

    ~BackgroundBuild();

    // Soon, since `source`, if any, was saved. A run that is under way is followed by another, or ended if it
    // makes what that very source was before.
    void request(const std::string& source = "");
    // Once a frame: starts and ends runs. True when one has ended that was not outdated; a problem is said on
    // standard error too.
    bool poll();
    bool running() const { return process > 0; }
    // "shown is older than production/music/score.cpp", or "what is made of script/show_times.h is older", or
    // empty.
    std::string whatIsShown() const;
    // "making: [3/9] ...; shown is older than ..."; empty while nothing is made.
    std::string whatIsMade() const;

    pid_t process = -1;
    int output = -1;
    std::string said;
    std::set<std::string> seen;  // of `newer`, what the present run makes
    bool requested = false;
    bool outdated = false;   // the present run, which has been told to end
    double requestedAt = 0;  // seconds

    void start();
    void listen();
    void tellNews();
};
