#include "production/shaders/shader_check.h"

#include <stdlib.h>

#include <cstdio>
#include <filesystem>
#include <mutex>
#include <optional>
#include <sstream>

#include "tools/process.h"

namespace fs = std::filesystem;

namespace {

// The compiler tells a shader's stage by its file's ending, which is not the one that the show reads.
struct StagedLinks {
    std::error_code error;
    std::string folder = fs::temp_directory_path(error) / "shadersXXXXXX";
    bool made = false;

    StagedLinks(const std::string& vertex, const std::string& fragment) {
        made = !error && mkdtemp(folder.data());
        if (!made) return;
        fs::create_symlink(fs::absolute(vertex), folder + "/a.vert", error);
        fs::create_symlink(fs::absolute(fragment), folder + "/a.frag", error);
    }
    ~StagedLinks() {
        if (made) fs::remove_all(folder, error);
    }
    StagedLinks& operator=(StagedLinks&&) = delete;
};

// What the compiler says of the shaders in a folder; nothing if there is none.
std::optional<std::string> compilersWords(const std::string& folder) {
    std::string words;
    const Words command = {"env", "-C", folder, "glslangValidator", "-d", "-l", "a.vert", "a.frag"};
    const int status = runProgram(command, [&](const std::string& line) { words += line; });
    constexpr int notFound = 127;  // that is how env ends
    if (status < 0 || status == notFound) return std::nullopt;
    return words;
}

void sayOnce(const char* line) {
    static std::once_flag said;
    std::call_once(said, [line] { fprintf(stderr, "%s\n", line); });
}

}  // namespace

std::string shaderFaults(const std::string& vertex, const std::string& fragment) {
    const StagedLinks staged(vertex, fragment);
    if (!staged.made) {
        sayOnce("The shaders are not checked: there is no place for temporary files");
        return {};
    }
    const auto words = compilersWords(staged.folder);
    if (!words) {
        sayOnce("The shaders are not checked: there is no glslangValidator (Debian's glslang-tools)");
        return {};
    }
    // Faults read "ERROR: WHERE:LINE: WHAT", where WHERE is the file, or a number below a line with the file.
    // Those of the pair have no line and go on in lines that are indented; they mean nothing while there are
    // others.
    std::string faults, faultsOfPair, file, line;
    for (std::istringstream lines(*words); std::getline(lines, line);) {
        int number = 0, begin = 0;
        if (line.find("a.vert") != std::string::npos) file = vertex;
        if (line.find("a.frag") != std::string::npos) file = fragment;
        while (line.ends_with(" ")) line.pop_back();
        if (sscanf(line.c_str(), "ERROR: %*[^:]:%d: %n", &number, &begin) == 1 && begin > 0) {
            if (line.find("compilation terminated") == std::string::npos)
                faults += file + ":" + std::to_string(number) + ": " + line.substr(begin) + "\n";
        } else if (line.starts_with("ERROR: Linking")) {
            faultsOfPair += vertex + " and " + fragment + ": " + line.substr(line.find(' ') + 1) + "\n";
        } else if (!faultsOfPair.empty() && line.starts_with(" ")) {
            faultsOfPair += line + "\n";
        }
    }
    return faults.empty() ? faultsOfPair : faults;
}
