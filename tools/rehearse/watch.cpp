#include "tools/rehearse/watch.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <filesystem>

namespace fs = std::filesystem;

namespace {

constexpr uint32_t events = IN_CLOSE_WRITE | IN_MOVED_TO | IN_CREATE | IN_DELETE | IN_MOVED_FROM;

}  // namespace

Watch::Watch() : descriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}

Watch::~Watch() {
    if (descriptor >= 0) close(descriptor);
}

void Watch::add(const std::string& folder) {
    const int number = inotify_add_watch(descriptor, folder.c_str(), events | IN_ONLYDIR);
    if (number < 0) return;
    folders[number] = folder;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        if (entry.is_directory(error) && !entry.is_symlink(error)) add(entry.path().string());
    }
}

Watch::Changes Watch::take() {
    Changes changes;
    alignas(inotify_event) char block[1 << 14];
    for (ssize_t got; (got = read(descriptor, block, sizeof block)) > 0;) {
        for (const char* at = block; at < block + got;) {
            const auto* event = reinterpret_cast<const inotify_event*>(at);
            at += sizeof *event + event->len;
            if (event->mask & IN_Q_OVERFLOW) changes.lost = true;
            const auto folder = folders.find(event->wd);
            if (folder == folders.end()) continue;
            if (event->mask & IN_IGNORED) folders.erase(folder);
            if (event->mask & IN_IGNORED || event->len == 0) continue;
            const std::string path = folder->second + "/" + event->name;
            if (event->mask & IN_ISDIR) {
                if (event->mask & (IN_CREATE | IN_MOVED_TO)) {
                    add(path);
                    // What was put into it before it was watched.
                    std::error_code error;
                    for (const auto& entry : fs::recursive_directory_iterator(path, error))
                        if (entry.is_regular_file(error)) changes.saved.insert(entry.path().string());
                }
                continue;
            }
            if (event->mask & (IN_CLOSE_WRITE | IN_MOVED_TO)) {
                changes.saved.insert(path);
                changes.gone.erase(path);
            }
            if (event->mask & (IN_DELETE | IN_MOVED_FROM)) changes.gone.insert(path);
        }
    }
    return changes;
}
