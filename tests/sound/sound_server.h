// A PulseAudio server for a test: one null sink, which is ALSA's default device as long as the server object
// lives, and a recorder that knows when each frame it recorded was heard.
#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <thread>
#include <vector>

// Of the steady clock.
double secondsNow();
void sleepSeconds(double seconds);

// Starts a program, which does not outlive this one, with its output and errors to files (-1: nowhere).
pid_t startProcess(const std::vector<std::string>& words, int outputFile = -1, int errorFile = -1);
// The exit status; -1 if the program crashed, or hung for longer than anything here can take.
int waitForProcess(pid_t process);
void endProcess(pid_t process, int signal);

// Sets environment variables, and puts back what was there before.
class Environment {
public:
    ~Environment();
    void set(const std::string& name, const std::string& value);

private:
    std::map<std::string, std::string> before;
    std::vector<std::string> unset;
};

class SoundServer {
public:
    SoundServer();
    ~SoundServer();
    pid_t id() const { return process; }
    void kill();

private:
    Environment environment;
    std::string home;
    pid_t process = -1;
};

// All that the server's sink plays, first channel.
class Recorder {
public:
    Recorder();
    ~Recorder();
    // Ends the recording.
    const std::vector<float>& samples();
    // The recorded frame that was heard at a moment.
    long frameAt(double seconds) const;

private:
    void read();

    pid_t process = -1;
    int pipeEnd = -1;
    std::thread reader;
    std::vector<float> recorded;
    double firstFrame = 1e300;  // when it was heard
};
