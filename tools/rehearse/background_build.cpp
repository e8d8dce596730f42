#include "tools/rehearse/background_build.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <sstream>

#include "tools/formatted.h"
#include "tools/process.h"
#include "tools/times.h"

namespace {

constexpr double gathering = 0.1;  // seconds: several files that are saved at once make one run
constexpr size_t mostLines = 6;    // of a problem

// What a compiler or a tool calls an error; else what was said by that which failed, which ninja shows behind
// its command; else the last line.
std::string errorsIn(const std::string& said, const std::string& root) {
    std::vector<std::string> errors, words;
    std::string last = "the build failed without a word";
    int behindFailure = 0;
    std::istringstream lines(said);
    for (std::string line; std::getline(lines, line);) {
        if (line.empty()) continue;
        for (const std::string& prefix : {std::string("../"), root})  // as seen from the build's folder
            if (!prefix.empty() && line.starts_with(prefix)) line.erase(0, prefix.size());
        if (line.starts_with("FAILED: ")) behindFailure = 1;
        if (line.starts_with("[") || line.starts_with("ninja: ")) behindFailure = 0;
        if (behindFailure && behindFailure++ > 2) words.push_back(line);
        if (line.find("error") != std::string::npos) errors.push_back(line);
        last = line;
    }
    if (errors.empty()) errors = words.empty() ? std::vector{last} : words;
    std::string text;
    for (size_t i = 0; i < errors.size() && i < mostLines; i++) text.append(i ? "\n" : "").append(errors[i]);
    if (errors.size() > mostLines) text += formatted("\nand %zu more", errors.size() - mostLines);
    return text;
}

std::string listed(const std::set<std::string>& names) {
    const size_t others = names.size() - 1;
    return *names.begin() + (others ? formatted(" and %zu more", others) : "");
}

}  // namespace

BackgroundBuild::~BackgroundBuild() {
    if (process > 0) {
        kill(-process, SIGTERM);
        waitpid(process, nullptr, 0);
    }
    if (output >= 0) close(output);
}

void BackgroundBuild::request(const std::string& source) {
    if (command.empty()) return;
    if (!source.empty()) newer.insert(source);
    requested = true;
    requestedAt = steadySeconds();
    if (!running() || outdated || !seen.contains(source)) return;
    // The builder leaves no half file, and what it has done so far counts for the next run.
    outdated = true;
    kill(-process, SIGTERM);
}

bool BackgroundBuild::poll() {
    if (requested && !running() && steadySeconds() - requestedAt > gathering) start();
    if (!running()) return false;
    listen();
    int status = 0;
    if (waitpid(process, &status, WNOHANG) == 0) return false;
    listen();
    process = -1;
    close(output);
    output = -1;
    if (outdated) return false;
    problem = WIFEXITED(status) && WEXITSTATUS(status) == 0 ? "" : errorsIn(said, root);
    if (problem.empty())
        tellNews();
    else
        fprintf(stderr, "%s\n", problem.c_str());
    return true;
}

void BackgroundBuild::tellNews() {
    bool changed = false;
    std::istringstream lines(said);
    for (std::string line; std::getline(lines, line);) {
        const bool kept = line.starts_with("kept ");
        changed = changed || kept || line.starts_with("laid ");
        if (kept) news.push_back(line);
    }
    if (!changed && !seen.empty())
        news.push_back("nothing had to be made: all is as " + listed(seen) + " has it");
    for (const std::string& source : seen) newer.erase(source);
}

std::string BackgroundBuild::whatIsShown() const {
    return newer.empty() ? "" : what + " shown are older than " + listed(newer);
}

std::string BackgroundBuild::whatIsMade() const {
    if (!running()) return "";
    return "making " + what + (progress.empty() ? "" : ": " + progress) + ", " +
           minutesAndSeconds(steadySeconds() - began) + " so far" +
           (newer.empty() ? "" : "; those shown are older than " + listed(newer));
}

void BackgroundBuild::start() {
    requested = outdated = false;
    seen = newer;
    said.clear();
    progress.clear();
    began = steadySeconds();
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) == 0) {
        // In a group of its own, so that all of it can be ended.
        process = startProgram(command, {.output = ends[1], .error = ends[1]}, Group::own);
        close(ends[1]);
        output = ends[0];
        fcntl(output, F_SETFL, O_NONBLOCK);
    }
    if (process > 0) return;
    if (output >= 0) close(output);
    output = -1;
    problem = "the build can't be started";
}

void BackgroundBuild::listen() {
    char block[4096];
    for (ssize_t got; (got = read(output, block, sizeof block)) > 0;) said.append(block, size_t(got));
    std::istringstream lines(said);
    int made = 0, all = 0;
    for (std::string line; std::getline(lines, line);) {
        if (sscanf(line.c_str(), "[%d/%d]", &made, &all) == 2) progress = formatted("%d of %d", made, all);
        if (line.starts_with("Waiting ")) (progress = line)[0] = 'w';
    }
}
