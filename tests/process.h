// Programs that tests start and wait for, and the environment that they get.
#pragma once

#include <sys/types.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tools/times.h"

void sleepSeconds(double seconds);

// Starts a program, which does not outlive this one, with its output and errors to files (-1: nowhere).
pid_t startProcess(const std::vector<std::string>& words, int outputFile = -1, int errorFile = -1);
// The same for a command of the shell.
pid_t startShell(const std::string& command, int outputFile = -1, int errorFile = -1);
bool isRunning(pid_t process);
// The exit status; -1 if the program crashed, or hung for longer than anything here can take.
int waitForProcess(pid_t process);
void endProcess(pid_t process, int signal);

// Waits until the condition holds, a minute at most, or the program has ended. Returns whether it holds.
template <typename Condition>
bool await(pid_t process, Condition condition) {
    for (int i = 0; i < 6000 && !condition() && isRunning(process); i++) sleepSeconds(0.01);
    return condition();
}

struct Result {
    int status;  // -1 if it did not end by itself
    std::string output;
};

// Runs a command of the shell to its end, with standard output and standard error as its output.
Result shell(const std::string& command);
// The standard output alone, of a command that must succeed.
std::string outputOf(const std::string& command);

// Sets environment variables, and puts back what was there before.
class Environment {
public:
    ~Environment();
    void set(const std::string& name, const std::string& value);

private:
    std::map<std::string, std::optional<std::string>> before;  // nothing where there was none
};
