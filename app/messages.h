// The latest lines that the shell has to say, kept for whoever wants to show them.
#pragma once

#include <memory>
#include <vector>

struct MessageList {
    static constexpr size_t maxLines = 19;
    static constexpr size_t lineSize = 80;  // characters, with the terminating zero

    std::vector<std::unique_ptr<char[]>> lines;  // oldest first

    MessageList() { lines.reserve(16); }
    // printf-style; what does not fit into a line is cut off, and the oldest line goes when the list is full.
    void post(const char* format, ...) __attribute__((format(printf, 2, 3)));
};
