// Programs run as a person would run them.
#pragma once

#include <filesystem>
#include <set>
#include <string>

#include "tests/process.h"
#include "tests/scratch.h"

inline Result capture(const std::string& words) {
    return shell(CAPTURE_PROGRAM " " + words);
}

// Stands for the show in the folder: links to the files of its data set, soundtrack and all.
inline void linkDataSet(const std::filesystem::path& folder) {
    namespace fs = std::filesystem;
    for (const auto& entry : fs::recursive_directory_iterator("data")) {
        if (entry.is_directory()) continue;
        fs::create_directories((folder / entry.path()).parent_path());
        fs::create_symlink(fs::absolute(entry.path()), folder / entry.path());
    }
}

inline std::set<std::string> namesIn(const std::filesystem::path& directory) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(directory))
        names.insert(entry.path().filename());
    return names;
}
