#include "tools/rehearse/snapshot.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace {

bool copyAll(int from, int to) {
    char block[1 << 16];
    for (;;) {
        const ssize_t got = read(from, block, sizeof block);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return got == 0;
        for (ssize_t done = 0; done < got;) {
            const ssize_t written = write(to, block + done, size_t(got - done));
            if (written < 0) return false;
            done += written;
        }
    }
}

}  // namespace

Snapshot::~Snapshot() {
    if (descriptor >= 0) close(descriptor);
}

std::unique_ptr<Snapshot> takeSnapshot(const std::string& path, std::string* problem) {
    // A pipe in a file's place must not hold up the show.
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat about;
    if (file < 0 || fstat(file, &about) != 0) {
        *problem = strerror(errno);
        if (file >= 0) close(file);
        return nullptr;
    }
    auto snapshot = std::make_unique<Snapshot>();
    snapshot->descriptor = memfd_create("snapshot", MFD_CLOEXEC);
    const bool regular = S_ISREG(about.st_mode);
    const bool copied = regular && snapshot->descriptor >= 0 && copyAll(file, snapshot->descriptor);
    if (!copied) *problem = regular ? strerror(errno) : "is not a file";
    close(file);
    if (!copied) return nullptr;
    return snapshot;
}
