#include "tests/sound/esd_server.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "tests/sound/signal.h"
#include "tests/sound/sound_server.h"

namespace {

constexpr int blockFrames = 1024;
constexpr int latency = 3000;  // frames between its mixer and the ear

}  // namespace

struct EsdServer::Client {
    int socket = -1;
    bool admitted = false;
    bool playing = false;
    std::string bytes;  // read and not used yet
};

EsdServer::EsdServer(bool tcp, double speed) : speed(speed) {
    // The addresses are fixed: one test at a time on this machine.
    lock = open("/tmp/sound-tests-esd.lock", O_CREAT | O_RDWR | O_CLOEXEC, 0666);
    flock(lock, LOCK_EX);
    listener = socket(tcp ? AF_INET : AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    int bound = -1;
    if (tcp) {
        const int yes = 1;
        setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(16001);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        bound = bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address);
    } else {
        path = "/tmp/.esd-" + std::to_string(getuid());
        mkdir(path.c_str(), 0700);
        path += "/socket";
        unlink(path.c_str());
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        bound = bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address);
    }
    if (bound != 0 || listen(listener, 8) != 0) {
        close(listener);
        listener = -1;
        return;
    }
    started = secondsNow();
    thread = std::thread(&EsdServer::run, this);
}

EsdServer::~EsdServer() {
    samples();
    close(listener);
    if (!path.empty()) {
        unlink(path.c_str());
        rmdir(path.substr(0, path.rfind('/')).c_str());
    }
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
    std::vector<Client> clients;
    while (!quitting) {
        const int accepted = accept4(listener, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
        if (accepted >= 0) clients.push_back({.socket = accepted, .bytes = {}});
        for (Client& client : clients) serve(client);
        while (double(heard.size()) < (secondsNow() - started) * recordRate * speed) play(clients);
        std::erase_if(clients, [](const Client& client) { return client.socket < 0; });
        sleepSeconds(0.002);
    }
    for (Client& client : clients) close(client.socket);
}

// What comes before the sound: a key and an endian mark, then one request.
void EsdServer::serve(Client& client) {
    if (client.playing || client.socket < 0) return;
    char buffer[256];
    const ssize_t got = recv(client.socket, buffer, client.admitted ? 140 - client.bytes.size() : 20, 0);
    if (got == 0) {
        close(client.socket);
        client.socket = -1;
    }
    if (got <= 0) return;
    client.bytes.append(buffer, size_t(got));
    int32_t words[3] = {};
    if (!client.admitted && client.bytes.size() >= 20) {
        const uint32_t endian = 0x454e444e;  // "ENDN"
        const int32_t yes = memcmp(client.bytes.data() + 16, &endian, 4) == 0;
        refused += !yes;
        client.admitted = yes;
        client.bytes.erase(0, 20);
        send(client.socket, &yes, sizeof yes, MSG_NOSIGNAL);
        return;
    }
    memcpy(words, client.bytes.data(), std::min<size_t>(client.bytes.size(), sizeof words));
    if (words[0] == 23) {
        send(client.socket, &latency, sizeof latency, MSG_NOSIGNAL);
        client.bytes.clear();
    } else if (client.bytes.size() == 140) {
        const bool understood = words[0] == 3 && words[1] == 0x1021 && words[2] == recordRate;
        refused += !understood;
        client.playing = understood;
        client.bytes.clear();
    }
}

void EsdServer::play(std::vector<Client>& clients) {
    const size_t first = heard.size();
    heard.resize(first + blockFrames);
    for (Client& client : clients) {
        if (!client.playing) continue;
        char buffer[4 * blockFrames];
        const ssize_t got = recv(client.socket, buffer, sizeof buffer - client.bytes.size(), 0);
        if (got == 0) {
            close(client.socket);
            client.socket = -1;
            client.playing = false;
            continue;
        }
        client.bytes.append(buffer, size_t(std::max<ssize_t>(got, 0)));
        for (size_t i = 0; i < client.bytes.size() / 4; i++) {
            int16_t left;
            memcpy(&left, client.bytes.data() + 4 * i, sizeof left);
            heard[first + i] += float(left) / 32768;
        }
        client.bytes.erase(0, client.bytes.size() / 4 * 4);
    }
}
