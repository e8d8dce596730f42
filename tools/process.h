// Programs that are started, listened to and waited for.
#pragma once

#include <signal.h>
#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

using Words = std::vector<std::string>;

// While one lives, no signal comes to its thread or to those that this one starts.
struct Undisturbed {
    sigset_t before;

    Undisturbed() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_BLOCK, &all, &before);
    }
    ~Undisturbed() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }
    Undisturbed& operator=(Undisturbed&&) = delete;
};

// Files of ours that are a program's standard streams; without one there is nothing to read, and what it
// writes is lost.
struct Streams {
    int input = -1;
    int output = -1;
    int error = -1;
};

// In a group of its own a terminal's Ctrl-C doesn't reach it, and kill(-process) reaches all that it starts.
enum class Group { ours, own };

// Starts the program that PATH has for the first word. Its process, or -1 with the cause in errno.
pid_t startProgram(const Words& words, const Streams& streams, Group group);

// Waits for its end, whatever signals come meanwhile. Its exit status, or -1 if a signal ended it.
int waitForEnd(pid_t process);

// A file in memory, under a path by which this process and those that it starts find it until they end.
std::string fileInMemory(const std::string& content);

// Runs it to its end, handing on each line that it prints, to standard error too. Its exit status; -1 if a
// signal ended it or, with the cause in errno, it can't be started.
int runProgram(const Words& words, const std::function<void(const std::string& line)>& take);
