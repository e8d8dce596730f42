// A command that is run in the background whenever its sources have changed: one that makes what is shown. A
// line of it that begins with "laid" says that something came out, one with "kept" is news, and one with
// "[3/9]" how far it is.
#pragma once

#include <sys/types.h>

#include <set>
#include <string>
#include <vector>

struct BackgroundBuild {
    std::vector<std::string> command;  // none if empty
    std::string root;                  // the sources' folder, which the errors are told without
    std::string problem;               // the errors in what the last run said; empty if it was good
    std::string what;                  // is made, in words
    std::string progress;  // of the present run, in words; empty until it has said something of it
    std::set<std::string>
        newer;  // sources of which a younger text was saved than what is shown was made from
    std::vector<std::string> news;  // lines, for whoever takes them

    ~BackgroundBuild();

    // Soon, since `source`, if any, was saved. A run that is under way is followed by another, or ended if it
    // makes what that very source was before.
    void request(const std::string& source = "");
    // Once a frame: starts and ends runs. True when one has ended that was not outdated; a problem is said on
    // standard error too.
    bool poll();
    bool running() const { return process > 0; }
    // "the stems shown are older than production/music/score.cpp", or empty.
    std::string whatIsShown() const;
    // "making the stems: 3 of 9, 1:04 so far; those shown are older than ..."; empty while nothing is made.
    std::string whatIsMade() const;

    pid_t process = -1;
    int output = -1;
    std::string said;
    std::set<std::string> seen;  // of `newer`, what the present run makes
    bool requested = false;
    bool outdated = false;              // the present run, which has been told to end
    double requestedAt = 0, began = 0;  // seconds

    void start();
    void listen();
    void tellNews();
};
