#include "tests/process.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "tools/process.h"

void sleepSeconds(double seconds) {
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

pid_t startProcess(const std::vector<std::string>& words, int outputFile, int errorFile) {
    Words all = {"setpriv", "--pdeathsig", "KILL"};
    all.insert(all.end(), words.begin(), words.end());
    return startProgram(all, {.output = outputFile, .error = errorFile}, Group::ours);
}

pid_t startShell(const std::string& command, int outputFile, int errorFile) {
    return startProcess({"sh", "-c", command}, outputFile, errorFile);
}

bool isRunning(pid_t process) {
    siginfo_t end{};
    return waitid(P_PID, id_t(process), &end, WEXITED | WNOHANG | WNOWAIT) == 0 && end.si_pid == 0;
}

int waitForProcess(pid_t process) {
    int status = 0;
    for (int i = 0; i < 400; i++) {
        if (waitpid(process, &status, WNOHANG) == process)
            return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        sleepSeconds(0.05);
    }
    endProcess(process, SIGKILL);
    return -1;
}

void endProcess(pid_t process, int signal) {
    if (process <= 0) return;
    kill(process, signal);
    waitpid(process, nullptr, 0);
}

namespace {

Result outputAndStatus(const std::string& command) {
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) return {-1, ""};
    std::string output;
    std::array<char, 65536> part;
    while (const size_t count = fread(part.data(), 1, part.size(), pipe)) output.append(part.data(), count);
    const int status = pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output};
}

}  // namespace

Result shell(const std::string& command) {
    return outputAndStatus(command + " 2>&1");
}

std::string outputOf(const std::string& command) {
    const Result result = outputAndStatus(command);
    EXPECT_EQ(result.status, 0) << command;
    return result.output;
}

void Environment::set(const std::string& name, const std::string& value) {
    const char* old = std::getenv(name.c_str());
    before.emplace(name, old ? std::optional<std::string>(old) : std::nullopt);
    setenv(name.c_str(), value.c_str(), 1);
}

Environment::~Environment() {
    for (const auto& [name, value] : before)
        value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
}
