// A sound server for a test: one null sink, which is ALSA's default device as long as the server object
// lives, and a recorder that knows when each frame it recorded was heard.
#pragma once

#include <sys/types.h>

#include <string>
#include <thread>
#include <vector>

#include "tests/process.h"

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
