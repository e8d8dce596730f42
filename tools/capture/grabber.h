// Takes finished frames out of GL; another thread hands them to whoever writes them.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

// A picture of the screen: 4 bytes a pixel, blue, green, red and one without meaning; bottom row first.
using Picture = std::vector<uint8_t>;

struct Grabber {
    // Called for every frame in order, on the grabber's own thread; false stops the rest.
    using Write = std::function<bool(const Picture&)>;

    explicit Grabber(Write write);
    ~Grabber();

    // After drawing a frame: reads it back and hands it over. False once a write failed, or with a `problem`
    // if it can't be read back.
    bool grab();
    // Waits until all are written and tells whether they were.
    bool finish();

    std::string problem;

    // From here on its own.
    void work();

    Write write;
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Picture> waiting;  // to be written
    std::deque<Picture> spare;    // to be filled
    bool failed = false;
    bool closing = false;
    std::thread writer;
};
