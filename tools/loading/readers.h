// Files of the show, read and decoded by threads, so that the one that draws need not wait.
#pragma once

#include <atomic>
#include <chrono>
#include <future>
#include <list>
#include <optional>
#include <string>

#include "tools/loading/show_file.h"

// For one thread.
struct Readers {
    const bool measures;  // music as well

    explicit Readers(bool measureMusic) : measures(measureMusic) {}
    // Waits for what is being read.
    ~Readers() { stopping = true; }
    Readers& operator=(Readers&&) = delete;

    // Reads it from now on; what earlier requests for it find is not handed out any more.
    void request(const FileName& name);
    // A file that has been read, waiting for one until then. Music that can be played comes again when it has
    // been measured.
    std::optional<ShowFile> take(std::chrono::steady_clock::time_point until = {});
    // That file, once it has been read; here and now if it isn't being read.
    ShowFile await(const FileName& name);
    // Everything that was requested has been taken.
    bool idle() const { return readings.empty(); }

private:
    struct Reading {
        std::string path;
        bool outdated = false;
        std::future<ShowFile> file;
    };
    template <typename Work>
    void start(const std::string& path, Work work);
    ShowFile finish(std::list<Reading>::iterator reading);

    std::atomic<bool> stopping = false;
    std::list<Reading> readings;
};
