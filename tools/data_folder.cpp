#include "tools/data_folder.h"

#include <cstdio>
#include <filesystem>

#include "tools/process.h"

namespace fs = std::filesystem;

std::string generatorSources() {
    std::error_code error;
    const fs::path root = SOURCE_FOLDER;
    if (!fs::exists(fs::path(BUILD_FOLDER) / "CMakeCache.txt", error)) return "";
    // A fresh checkout has no data/ yet.
    const bool isOurs = fs::exists(root / "data", error) ? fs::equivalent("data", root / "data", error)
                                                         : fs::equivalent(".", root, error);
    if (!isOurs) return "";
    return fs::proximate(root / "production", error).string();
}

std::vector<std::string> makeCommand(const std::string& target) {
    return {"cmake", "--build", BUILD_FOLDER, "--target", target};
}

std::string stemsFolder() {
    return BUILD_FOLDER "/stems/";
}

bool makeStaleData() {
    if (generatorSources().empty()) return true;
    // Its lines matter only when it fails: on standard error then, since a picture may go to standard output.
    std::string said;
    const int status = runProgram(makeCommand("data"), [&](const std::string& line) {
        said += line;
        // That a build waits for another, or for who holds the data set.
        if (line.starts_with("Waiting for ") || line.find(": waiting for ") != std::string::npos)
            fputs(line.c_str(), stderr);
    });
    if (status == 0) return true;
    fputs(said.c_str(), stderr);
    return false;
}
