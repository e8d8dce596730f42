// Where a tool finds the data of the show: below the working directory or, where there is none, with the show
// that the tool was installed beside.
#pragma once

#include <filesystem>
#include <string>

// Without a data/ in the working directory, goes to that of the installed show. Returns the folder that it
// left, with a slash at its end: the caller's paths lie there. Empty if it stayed.
inline std::string goToInstalledShow() {
    namespace fs = std::filesystem;
    std::error_code error;
    if (fs::exists("data", error)) return "";
    const fs::path tool = fs::read_symlink("/proc/self/exe", error);  // PREFIX/libexec/valojuova-tools/NAME
    const fs::path show = tool.parent_path().parent_path().parent_path() / "share/valojuova";
    if (!fs::exists(show / "data", error)) return "";
    const fs::path before = fs::current_path(error);
    if (error) return "";
    fs::current_path(show, error);
    return error ? "" : (before / "").string();
}

// A path, none if empty, as it was meant in that folder.
inline std::string pathFrom(const std::string& folder, const std::string& path) {
    return path.empty() || path.front() == '/' ? path : folder + path;
}
