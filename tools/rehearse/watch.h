// Folders under watch: which files in them were saved.
#pragma once

#include <sys/inotify.h>

#include <map>
#include <set>
#include <string>
#include <vector>

struct Watch {
    int descriptor = -1;
    std::string problem;  // a line, if not all that is asked for can be watched
    std::vector<std::string> roots;
    std::map<int, std::string> folders;  // by watch number
    std::map<int, std::string> parents;  // of roots

    Watch();
    ~Watch();
    Watch& operator=(Watch&&) = delete;

    // With all folders below it, also those that come later; so may the folder itself, and go and come again.
    void add(const std::string& folder);

    struct Changes {
        std::set<std::string> saved;  // closed after writing, or moved into their place
        std::set<std::string> gone;   // files and folders, deleted or moved away; they may be back already
        bool lost = false;            // there were too many: anything may have changed
    };
    // Since the last call; at once.
    Changes take();

private:
    void addTree(const std::string& folder, Changes* changes);
    void dropTree(const std::string& folder);
    void takeEvent(const inotify_event& event, Changes* changes);
    void folderChanged(uint32_t mask, const std::string& folder, Changes* changes);
};
