// A file's content as it was at one moment, kept in memory under a path of its own: whoever reads it reads
// the same bytes however often the file is written meanwhile.
#pragma once

#include <memory>
#include <string>

struct Snapshot {
    int descriptor = -1;

    Snapshot() = default;
    ~Snapshot();
    Snapshot(const Snapshot&) = delete;
    Snapshot& operator=(const Snapshot&) = delete;

    // In this process; while it lives.
    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor); }
};

// nullptr, with the reason in `problem`, for what is no file or can't be read.
std::unique_ptr<Snapshot> takeSnapshot(const std::string& path, std::string* problem);
