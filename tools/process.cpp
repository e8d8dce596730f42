#include "tools/process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fstream>

pid_t startProgram(const Words& words, const Streams& streams, Group group) {
    std::vector<char*> arguments;
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    const int files[] = {streams.input, streams.output, streams.error};
    for (int stream = 0; stream < 3; stream++) {
        if (files[stream] < 0)
            posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
        else
            posix_spawn_file_actions_adddup2(&actions, files[stream], stream);
    }
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    if (group == Group::own) posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    pid_t process = -1;
    const int error = posix_spawnp(&process, arguments[0], &actions, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    errno = error;
    return error ? -1 : process;
}

int waitForEnd(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::string fileInMemory(const std::string& content) {
    const std::string path = "/proc/self/fd/" + std::to_string(memfd_create("in memory", 0));
    std::ofstream(path, std::ios::binary) << content;
    return path;
}

int runProgram(const Words& words, const std::function<void(const std::string& line)>& take) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return -1;
    const pid_t process = startProgram(words, {-1, ends[1], ends[1]}, Group::ours);
    const int error = errno;
    close(ends[1]);
    FILE* lines = fdopen(ends[0], "r");
    char* line = nullptr;
    size_t room = 0;
    for (ssize_t length; (length = getline(&line, &room, lines)) > 0;) take({line, size_t(length)});
    free(line);
    fclose(lines);
    errno = error;
    return process < 0 ? -1 : waitForEnd(process);
}
