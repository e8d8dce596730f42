#include "tests/sound/esd_server.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "tests/process.h"
#include "tests/sound/signal.h"

namespace {

constexpr int blockFrames = 1024;
constexpr int32_t latency = 3000;  // frames between its mixer and the ear

}  // namespace

EsdServer::EsdServer(double speed) : speed(speed) {
    // The address is fixed: one test at a time on this machine.
    lock = open("/tmp/sound-tests-esd.lock", O_CREAT | O_RDWR | O_CLOEXEC, 0666);
    flock(lock, LOCK_EX);
    listener = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    mkdir(folder.c_str(), 0700);
    unlink(path.c_str());
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const int bound = bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address);
    EXPECT_TRUE(bound == 0 && listen(listener, 8) == 0) << "another server is there";
    started = steadySeconds();
    thread = std::thread(&EsdServer::run, this);
}

EsdServer::~EsdServer() {
    samples();
    close(listener);
    unlink(path.c_str());
    rmdir(folder.c_str());
    close(lock);
}

const std::vector<float>& EsdServer::samples() {
    quitting = true;
    if (thread.joinable()) thread.join();
    return heard;
}

long EsdServer::frameAt(double seconds) const {
    return std::lround((seconds - started) * recordRate * speed) - latency;
}

void EsdServer::run() {
    std::vector<int> players;
    while (!quitting) {
        const int client = accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (client >= 0) (admit(client) ? players : others).push_back(client);
        const auto due = [&] {
            return (steadySeconds() - started) * recordRate * speed - double(heard.size());
        };
        heldUp |= due() > 2 * blockFrames;
        while (due() > 0) playBlock(players);
        sleepSeconds(0.002);
    }
    others.insert(others.end(), players.begin(), players.end());
    for (const int client : others) close(client);
}

// What comes before the sound: a key and an endian mark, then one request. False if no sound follows.
bool EsdServer::admit(int client) {
    const timeval patience{5, 0};
    setsockopt(client, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    int32_t key[5] = {}, request[35] = {};
    recv(client, key, sizeof key, MSG_WAITALL);
    const int32_t known = key[4] == 0x454e444e;  // "ENDN"
    send(client, &known, sizeof known, MSG_NOSIGNAL);
    recv(client, request, sizeof request[0], MSG_WAITALL);
    if (known && request[0] == 23) {
        send(client, &latency, sizeof latency, MSG_NOSIGNAL);
        return false;
    }
    const ssize_t rest = recv(client, request + 1, sizeof request - sizeof request[0], MSG_WAITALL);
    const bool understood = known && rest == sizeof request - sizeof request[0] && request[0] == 3 &&
                            request[1] == 0x1021 && request[2] == recordRate;
    refused += !understood;
    return understood;
}

void EsdServer::playBlock(const std::vector<int>& players) {
    const size_t first = heard.size();
    heard.resize(first + blockFrames);
    for (const int player : players) {
        int ready = 0;  // bytes; half a frame stays there
        ioctl(player, FIONREAD, &ready);
        int16_t frames[2 * blockFrames];
        const int count = std::min(ready / 4, blockFrames);
        if (count > 0) recv(player, frames, size_t(count) * 4, 0);
        for (int i = 0; i < count; i++) heard[first + size_t(i)] += float(frames[2 * i]) / 32768;
    }
}
