// A sound server for a test: one null sink, which is ALSA's default device as long as the server object
// lives, and a recorder that knows when each frame it recorded was heard.
#pragma once

#include <sys/types.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "tests/process.h"
#include "tests/scratch.h"

class SoundServer {
public:
    enum Kind { PulseAudio, PipeWire };

    explicit SoundServer(Kind kind = PulseAudio);
    ~SoundServer();
    // The process that its clients talk to; stopped, it answers nobody.
    pid_t id() const { return processes.empty() ? -1 : processes.front(); }
    void kill();

    std::string recorderSocket;  // where it speaks PulseAudio's protocol
    int recorderLatency = 5;     // ms, the least that it keeps on a busy machine

private:
    void startPulseAudio();
    void startPipeWire();

    Environment environment;
    ScratchDirectory scratch;
    std::string home = scratch.path;
    std::vector<pid_t> processes;
};

// All that the server's sink plays, first channel.
class Recorder {
public:
    // Records when it is there.
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
    std::atomic<double> firstFrame = 1e300;  // when it was heard
};
