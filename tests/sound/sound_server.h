// A sound server for a test: one null sink, which is ALSA's default device as long as the server object
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
    enum Kind { PulseAudio, PipeWire };

    explicit SoundServer(Kind kind = PulseAudio);
    ~SoundServer();
    // Whether it is on this machine and has started.
    bool isRunning() const { return running; }
    // The process that its clients talk to; stopped, it answers nobody.
    pid_t id() const { return processes.empty() ? -1 : processes.front(); }
    void kill();

    std::string recorderSocket;  // where it speaks PulseAudio's protocol
    int recorderLatency = 5;     // ms, the least that it keeps on a busy machine

private:
    void startPulseAudio();
    void startPipeWire();

    Environment environment;
    std::string home;
    std::vector<pid_t> processes;
    bool running = false;
};

// All that the server's sink plays, first channel.
class Recorder {
public:
    explicit Recorder(const SoundServer& server);
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
