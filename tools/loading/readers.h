// Threads that read files of the show and decode them, so that the one that draws need not wait.
#pragma once

#include <atomic>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "tools/loading/show_file.h"

struct Readers {
    // As many as the machine has processors, but no less than two: music takes a second.
    explicit Readers(bool measureMusic);
    // What is being read is waited for, what only waits is not read.
    ~Readers();
    Readers(const Readers&) = delete;
    Readers& operator=(const Readers&) = delete;

    // Reads it from now on; what an earlier request for it has found, or will, is not handed out any more.
    void request(const FileName& name);
    // A file that has been read; at once. Music that can be played comes again when it has been measured.
    std::optional<ShowFile> take();
    // That file, which has been requested, once it has been read.
    ShowFile await(const std::string& path);
    // Everything that was requested has been taken.
    bool idle();

private:
    struct Request {
        FileName name;
        int number;
    };
    void work();
    void serve(std::unique_lock<std::mutex>& lock);
    void report(int number, ShowFile file);

    const bool measures;
    std::mutex mutex;
    std::condition_variable requested, found;
    std::deque<Request> waiting;
    std::deque<ShowFile> findings;
    std::map<std::string, int> latest;  // by path: the number of its last request
    int requests = 0;
    int busy = 0;  // threads
    std::atomic<bool> stopping = false;
    std::vector<std::thread> threads;
};
