// A file that lies in memory and goes away with its owner, also in the child of a death test.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <string>
#include <string_view>

struct MemoryFile {
    int descriptor = memfd_create("test", 0);
    std::string name = "/proc/self/fd/" + std::to_string(descriptor);

    MemoryFile() = default;
    explicit MemoryFile(std::string_view content) { write(content); }
    ~MemoryFile() { close(descriptor); }
    MemoryFile& operator=(MemoryFile&&) = delete;

    const char* path() const { return name.c_str(); }
    std::string read() const {
        std::string content(lseek(descriptor, 0, SEEK_END), '\0');
        content.resize(pread(descriptor, content.data(), content.size(), 0));
        return content;
    }
    // True if all was written.
    bool write(std::string_view content) const {
        return ftruncate(descriptor, 0) == 0 &&
               pwrite(descriptor, content.data(), content.size(), 0) == ssize_t(content.size());
    }
};
