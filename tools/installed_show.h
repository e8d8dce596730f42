// Where a tool finds the data of the show: below the working directory or, where that has none, with the show
// that the tool was installed beside.
#pragma once

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string>

#include "tools/show_files.h"

// Whether data/ of the working directory is a data set of the show, if not a whole one: others have folders
// of that name too, and in them a file such as white.png.
inline bool showIsHere() {
    const auto files = showFiles();
    std::error_code error;
    return 2 * std::count_if(files.begin(), files.end(),
                             [&](const auto& file) { return std::filesystem::exists(file.path, error); }) >=
           std::ssize(files);
}

// Where there is no show, goes to the installed one and says so. Returns the folder that it left, with a
// slash at its end: the caller's paths lie there. Empty if it stayed.
inline std::string goToInstalledShow() {
    namespace fs = std::filesystem;
    if (showIsHere()) return "";
    std::error_code error;
    const fs::path tool = fs::read_symlink("/proc/self/exe", error);  // PREFIX/libexec/valojuova-tools/NAME
    const fs::path show = tool.parent_path().parent_path().parent_path() / "share/valojuova";
    if (!fs::exists(show / "data", error)) return "";
    const fs::path before = fs::current_path(error);
    if (error) return "";
    fs::current_path(show, error);
    if (error) return "";
    fprintf(stderr, "%s: the show is that of %s\n", program_invocation_short_name, show.c_str());
    return (before / "").string();
}

// A path, none if empty, as it was meant in that folder.
inline std::string pathFrom(const std::string& folder, const std::string& path) {
    return path.empty() || path.front() == '/' ? path : folder + path;
}
