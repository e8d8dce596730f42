// A server of the Enlightened Sound Daemon's protocol as far as a player needs it: it plays blocks of 4096
// bytes to the tick of its own clock, whoever has data or not, and keeps what was heard.
#pragma once

#include <unistd.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

class EsdServer {
public:
    // At the user's socket. `speed` is that of its clock against the steady one.
    explicit EsdServer(double speed);
    ~EsdServer();

    // Ends the server. First channel.
    const std::vector<float>& samples();
    long frameAt(double seconds) const;
    int refused = 0;      // clients that did not speak the protocol
    bool heldUp = false;  // it has played later than its clock says: what was heard since is shifted

private:
    void run();
    bool admit(int client);
    void playBlock(const std::vector<int>& players);

    double speed;
    int listener = -1;
    int lock = -1;
    const std::string folder = "/tmp/.esd-" + std::to_string(getuid()), path = folder + "/socket";
    std::atomic<bool> quitting = false;
    std::thread thread;
    double started = 0;
    std::vector<int> others;  // clients that play nothing
    std::vector<float> heard;
};
