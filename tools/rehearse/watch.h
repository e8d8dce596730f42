// Folders under watch: which files in them were saved.
#pragma once

#include <map>
#include <set>
#include <string>

struct Watch {
    int descriptor = -1;
    std::map<int, std::string> folders;  // by watch number

    Watch();
    ~Watch();
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    // With all folders below it, also those that come later. What is no folder is left out.
    void add(const std::string& folder);

    struct Changes {
        std::set<std::string> saved;  // closed after writing, or moved into their place
        std::set<std::string> gone;   // deleted or moved away; they may have come back since
        bool lost = false;            // there were too many: anything may have changed
    };
    // Since the last call; at once.
    Changes take();
};
