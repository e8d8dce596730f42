#include "production/shaders/shader_check.h"

#include <fcntl.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <mutex>
#include <optional>
#include <sstream>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr char compiler[] = "glslangValidator";

// What a program prints to either output, whatever it ends with; nothing if it can't be run.
std::optional<std::string> outputOf(std::vector<std::string> words) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return std::nullopt;
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
    pid_t process;
    const bool runs = posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    std::string output;
    char part[4096];
    for (ssize_t size; runs && (size = read(ends[0], part, sizeof part)) > 0;) output.append(part, size);
    close(ends[0]);
    if (!runs) return std::nullopt;
    waitpid(process, nullptr, 0);
    return output;
}

// The compiler tells a shader's stage by its file's ending, which is not the one that the show reads.
struct StagedLinks {
    std::error_code error;
    std::string folder = fs::temp_directory_path(error) / "shadersXXXXXX";
    std::string vertex, fragment;

    StagedLinks(const std::string& vertexSource, const std::string& fragmentSource) {
        if (error || !mkdtemp(folder.data())) return;
        vertex = folder + "/program.vert";
        fragment = folder + "/program.frag";
        fs::create_symlink(fs::absolute(vertexSource), vertex, error);
        fs::create_symlink(fs::absolute(fragmentSource), fragment, error);
    }
    ~StagedLinks() {
        if (!vertex.empty()) fs::remove_all(folder, error);
    }
    StagedLinks(const StagedLinks&) = delete;
    StagedLinks& operator=(const StagedLinks&) = delete;
};

void sayOnce(const char* line) {
    static std::once_flag said;
    std::call_once(said, [line] { fprintf(stderr, "%s\n", line); });
}

}  // namespace

std::string shaderFaults(const std::string& vertex, const std::string& fragment) {
    const StagedLinks staged(vertex, fragment);
    if (staged.vertex.empty()) {
        sayOnce("The shaders are not checked: there is no place for temporary files");
        return {};
    }
    const auto output = outputOf({compiler, "-d", "-l", staged.vertex, staged.fragment});
    if (!output) {
        sayOnce("The shaders are not checked: there is no glslangValidator (Debian's glslang-tools)");
        return {};
    }
    // Faults read "ERROR: WHERE:LINE: WHAT", where WHERE is the file, or a number below a line with the file.
    // Those of the pair have no line and go on in lines that are indented; they mean nothing while there are
    // others.
    std::string faults, faultsOfPair, file, line;
    for (std::istringstream lines(*output); std::getline(lines, line);) {
        int number = 0, begin = 0;
        if (line.find(staged.vertex) != std::string::npos) file = vertex;
        if (line.find(staged.fragment) != std::string::npos) file = fragment;
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
