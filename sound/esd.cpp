// The Enlightened Sound Daemon, by its own protocol over the sockets that it makes by itself: the user's, or
// the machine's. Integers travel in this machine's byte order, which the server is told.
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <string>
#include <utility>

#include "sound/device.h"
#include "sound/sound.h"

namespace sound {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int answerTime = 500;  // ms that a server gets for each answer
constexpr int32_t endianMark = 'E' << 24 | 'N' << 16 | 'D' << 8 | 'N';
constexpr int32_t streamPlay = 3, latencyQuery = 23;           // requests
constexpr int32_t format = 0x0001 | 0x0020 | 0x0000 | 0x1000;  // 16 bits, stereo, a stream, to play
constexpr int32_t latencyRate = 44100;                         // Hz that a latency is counted in
constexpr int frameBytes = 4;
constexpr int serverBlock =
    1024;  // frames that the server mixes at once: half of one is the mean wait for it
constexpr int socketBytes = 24576;  // little, since what waits in the socket can't be taken back
constexpr double measuring = 1;     // seconds for which it is measured how much a full pipe holds
constexpr double reportLife = 0.1;  // seconds after it was full that a pipe still tells what was heard

struct ConnectionKey {
    char cookie[16] = {};
    int32_t endian = endianMark;
};

struct StreamRequest {
    int32_t request = streamPlay;
    int32_t format = sound::format;
    int32_t rate = 0;
    char name[128] = "valojuova";
};

bool receiveInteger(int socket, int32_t* value) {
    pollfd entry{socket, POLLIN, 0};
    return poll(&entry, 1, answerTime) == 1 && (entry.revents & POLLIN) &&
           recv(socket, value, sizeof *value, 0) == ssize_t(sizeof *value);
}

template <typename Record>
bool sendRecord(int socket, const Record& record) {
    return send(socket, &record, sizeof record, MSG_NOSIGNAL) == ssize_t(sizeof record);
}

int connectTo(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (connection < 0) return -1;
    setsockopt(connection, SOL_SOCKET, SO_SNDBUF, &socketBytes, sizeof socketBytes);
    if (connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        return connection;
    close(connection);
    return -1;
}

// A connection that the server has admitted, or -1.
int connectServer() {
    int connection = connectTo("/tmp/.esd-" + std::to_string(getuid()) + "/socket");
    if (connection < 0) connection = connectTo("/tmp/.esd/socket");
    if (connection < 0) return -1;

    // The cookie that clients of this user share with the server; one without a cookie is for the server to
    // judge.
    ConnectionKey key;
    if (const char* home = std::getenv("HOME"))
        std::ifstream(std::string(home) + "/.esd_auth", std::ios::binary).read(key.cookie, sizeof key.cookie);
    int32_t admitted = 0;
    if (sendRecord(connection, key) && receiveInteger(connection, &admitted) && admitted) return connection;
    close(connection);
    return -1;
}

// Frames at latencyRate between the server's mixer and the ear; 0 if it does not say.
int32_t askLatency() {
    const int connection = connectServer();
    if (connection < 0) return 0;
    int32_t latency = 0;
    if (!sendRecord(connection, latencyQuery) || !receiveInteger(connection, &latency)) latency = 0;
    close(connection);
    return std::clamp(latency, 0, latencyRate);
}

// The server does not tell how much it holds. But it reads at the speed it plays, so a pipe that is kept full
// holds a constant number of frames: they are measured against the steady clock for a second, and from then
// on what the pipe has taken tells what was heard, by the server's own clock. A pipe too wide to be filled
// is filled by the steady clock instead.
struct EsdDevice : Device {
    int connection = -1;
    double latency = 0;   // frames behind the pipe
    int64_t written = 0;  // frames, on this connection
    size_t partial = 0;   // bytes of the next frame that the socket has taken already
    Clock::time_point firstWrite, lastFull;
    bool full = false;
    double aheadSum = 0;  // frames written ahead of the steady clock, whenever the pipe was full
    int aheadCount = 0;
    double pipeFrames = -1;  // that a full pipe holds; negative until measured

    ~EsdDevice() override {
        if (connection >= 0) close(connection);
    }

    bool connectStream() {
        connection = connectServer();
        StreamRequest request;
        request.rate = rate;
        return connection >= 0 && sendRecord(connection, request);
    }

    DeviceState state() override {
        pollfd entry{connection, POLLOUT | POLLRDHUP, 0};
        if (connection < 0 || poll(&entry, 1, 0) < 0) return {.kind = DeviceState::Lost};
        if (entry.revents & (POLLRDHUP | POLLHUP | POLLERR)) return {.kind = DeviceState::Lost};
        const int room = bufferFrames(rate) - (written > 0 ? int(ahead()) : 0);
        return {.writable = entry.revents & POLLOUT ? std::max(room, 0) : 0, .delay = delay()};
    }

    int write(const int16_t* frames, int count) override {
        const auto now = Clock::now();
        if (written == 0) firstWrite = now;
        const size_t offered = size_t(count) * frameBytes - partial;
        const ssize_t sent =
            send(connection, reinterpret_cast<const char*>(frames) + partial, offered, MSG_NOSIGNAL);
        if (sent < 0 && errno != EAGAIN && errno != EINTR) return -1;
        const size_t bytes = partial + size_t(std::max<ssize_t>(sent, 0));
        partial = bytes % frameBytes;
        written += int64_t(bytes / frameBytes);
        if (bytes < size_t(count) * frameBytes) measure(now);
        return int(bytes / frameBytes);
    }

    void drop() override {
        if (written == 0) return;
        close(std::exchange(connection, -1));
        written = 0;
        partial = 0;
        full = false;
        pipeFrames = -1;
        aheadSum = aheadCount = 0;
        if (!connectStream()) close(std::exchange(connection, -1));
    }

    double secondsSince(Clock::time_point time) const {
        return std::chrono::duration<double>(Clock::now() - time).count();
    }

    // The pipe is full now.
    void measure(Clock::time_point now) {
        full = true;
        lastFull = now;
        if (pipeFrames >= 0) return;
        aheadSum += ahead();
        aheadCount++;
        if (secondsSince(firstWrite) > measuring) pipeFrames = aheadSum / aheadCount;
    }

    double ahead() const { return double(written) - secondsSince(firstWrite) * rate; }

    int delay() const {
        if (written == 0) return -1;
        if (pipeFrames < 0) return int(std::max(ahead() + latency, 0.0));
        if (!full || secondsSince(lastFull) > reportLife) return -1;
        return int(std::max(pipeFrames + latency - secondsSince(lastFull) * rate, 0.0));
    }
};

}  // namespace

std::unique_ptr<Device> openEsd(int rate) {
    auto device = std::make_unique<EsdDevice>();
    device->code = Esd;
    device->rate = rate;
    if (!device->connectStream()) return nullptr;
    device->latency = double(askLatency()) * rate / latencyRate + serverBlock / 2.0;
    return device;
}

}  // namespace sound
