// Programs run as a person would run them.
#pragma once

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <set>
#include <string>

#include "tests/scratch.h"

struct Result {
    int status;
    std::string output;  // standard output and standard error
};

inline Result shell(const std::string& command) {
    FILE* pipe = popen((command + " 2>&1").c_str(), "r");
    std::string output;
    std::array<char, 4096> part;
    while (const size_t count = fread(part.data(), 1, part.size(), pipe)) output.append(part.data(), count);
    return {WEXITSTATUS(pclose(pipe)), output};
}

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

inline std::string content(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline std::set<std::string> namesIn(const std::filesystem::path& directory) {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(directory))
        names.insert(entry.path().filename());
    return names;
}
