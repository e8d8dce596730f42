#include "tools/rehearse/watch.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

constexpr uint32_t come = IN_CREATE | IN_MOVED_TO, go = IN_DELETE | IN_MOVED_FROM;

std::string parentOf(const std::string& folder) {
    const fs::path parent = fs::path(folder).parent_path();
    return parent.empty() ? "." : parent.string();
}

}  // namespace

Watch::Watch() : descriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (descriptor < 0) problem = std::string("what is saved is not seen: inotify: ") + strerror(errno);
}

Watch::~Watch() {
    if (descriptor >= 0) close(descriptor);
}

void Watch::add(const std::string& folder) {
    if (descriptor < 0) return;
    roots.push_back(folder);
    const std::string parent = parentOf(folder);
    const int number = inotify_add_watch(descriptor, parent.c_str(), come | go | IN_ONLYDIR | IN_MASK_ADD);
    if (number >= 0) parents[number] = parent;
    Changes before;  // of what is there nothing has changed
    addTree(folder, &before);
}

// All files in it count as saved: they may have been before it was watched.
void Watch::addTree(const std::string& folder, Changes* changes) {
    const int number =
        inotify_add_watch(descriptor, folder.c_str(), come | go | IN_CLOSE_WRITE | IN_ONLYDIR | IN_MASK_ADD);
    if (number < 0) {
        if (errno != ENOENT && errno != ENOTDIR)
            problem = "what is saved below " + folder + " is not seen: inotify: " + strerror(errno);
        return;
    }
    folders[number] = folder;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        const std::string path = entry.path().string();
        if (entry.is_directory(error) && !entry.is_symlink(error)) addTree(path, changes);
        if (entry.is_regular_file(error)) changes->saved.insert(path);
    }
}

void Watch::dropTree(const std::string& folder) {
    std::erase_if(folders, [&](const auto& entry) {
        const auto& [number, path] = entry;
        if (path != folder && !path.starts_with(folder + "/")) return false;
        if (!parents.contains(number)) inotify_rm_watch(descriptor, number);
        return true;
    });
}

Watch::Changes Watch::take() {
    Changes changes;
    alignas(inotify_event) char block[1 << 14];
    for (ssize_t got; (got = read(descriptor, block, sizeof block)) > 0;) {
        for (const char* at = block; at < block + got;) {
            const auto* event = reinterpret_cast<const inotify_event*>(at);
            at += sizeof *event + event->len;
            takeEvent(*event, &changes);
        }
    }
    Changes any;  // which `lost` has told already
    if (changes.lost)
        for (const std::string& root : roots) folderChanged(come, root, &any);
    return changes;
}

void Watch::takeEvent(const inotify_event& event, Changes* changes) {
    if (event.mask & IN_Q_OVERFLOW) changes->lost = true;
    if (event.mask & IN_IGNORED) {
        folders.erase(event.wd);
        parents.erase(event.wd);
    }
    if (event.len == 0) return;
    if (const auto parent = parents.find(event.wd); parent != parents.end()) {
        for (const std::string& root : roots) {
            // A link to a folder is one too.
            if (parentOf(root) == parent->second && fs::path(root).filename() == event.name)
                folderChanged(event.mask, root, changes);
        }
    }
    const auto folder = folders.find(event.wd);
    if (folder == folders.end()) return;
    const std::string path = folder->second + "/" + event.name;
    if (event.mask & IN_ISDIR) return folderChanged(event.mask, path, changes);
    std::error_code error;
    // Nobody closes a link.
    const bool isLink = (event.mask & IN_CREATE) &&
                        (fs::is_symlink(path, error) || (fs::hard_link_count(path, error) > 1 && !error));
    if (isLink || (event.mask & (IN_CLOSE_WRITE | IN_MOVED_TO))) {
        changes->saved.insert(path);
        changes->gone.erase(path);
    }
    // What has only just been saved was on its way to another place.
    if ((event.mask & go) && !changes->saved.erase(path)) changes->gone.insert(path);
}

void Watch::folderChanged(uint32_t mask, const std::string& folder, Changes* changes) {
    dropTree(folder);
    if (mask & go) changes->gone.insert(folder);
    if (mask & come) addTree(folder, changes);
}
