#include "tools/capture/film.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <vector>

#include "render/screen.h"

namespace fs = std::filesystem;

namespace {

constexpr int pipeBytes = 1 << 20;  // half a picture, so that writer and reader seldom wait for each other

std::vector<std::string> arguments(const Film& film, int fps, double from, double seconds,
                                   const char* soundtrack) {
    const std::string size = std::to_string(screenWidth) + "x" + std::to_string(screenHeight);
    std::vector<std::string> words = {"ffmpeg",
                                      "-nostdin",
                                      "-loglevel",
                                      "error",
                                      "-y",
                                      "-f",
                                      "rawvideo",
                                      "-pixel_format",
                                      "bgr0",
                                      "-video_size",
                                      size,
                                      "-framerate",
                                      std::to_string(fps),
                                      "-i",
                                      "pipe:0",
                                      "-ss",
                                      std::to_string(from),
                                      "-t",
                                      std::to_string(seconds),
                                      "-i",
                                      soundtrack,
                                      "-vf",
                                      "vflip"};
    const std::string ending = fs::path(film.path).extension();
    if (ending == ".mp4" || ending == ".m4v" || ending == ".mov" || ending == ".mkv") {
        // The quickest preset: on a machine that draws in software, every cycle of the encoder is one less
        // for drawing.
        for (const char* word : {"-c:v", "libx264", "-preset", "ultrafast", "-crf", "18", "-pix_fmt",
                                 "yuv420p", "-c:a", "aac", "-b:a", "256k"})
            words.push_back(word);
    }
    words.push_back("file:" + film.unfinished);  // else a colon in it would name a protocol
    return words;
}

// The pipe's reading end becomes ffmpeg's standard input, `words` its standard error. A group of its own
// keeps it from the terminal's Ctrl-C, so that it is always we who end it.
int spawn(pid_t* process, int input, int words, const std::vector<std::string>& arguments) {
    std::vector<char*> argv;
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input, 0);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, words, 2);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    posix_spawnattr_setpgroup(&attributes, 0);
    const int error = posix_spawnp(process, "ffmpeg", &actions, &attributes, argv.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return error;
}

// The first of ffmpeg's words tell the cause, what follows only the consequences. They may begin with the
// name and address of a part of it, which tell a reader nothing.
std::string firstLine(FILE* file) {
    char line[512] = "";
    rewind(file);
    if (!fgets(line, sizeof line, file)) return "";
    line[strcspn(line, "\r\n")] = 0;
    const char* end = *line == '[' ? strstr(line, "] ") : nullptr;
    return end ? end + 2 : line;
}

}  // namespace

Film::Film(const std::string& path, int fps, double from, double seconds, const char* soundtrack)
    : path(path) {
    const fs::path place(path);
    unfinished = (place.parent_path() / ("unfinished-" + place.filename().string())).string();
    signal(SIGPIPE, SIG_IGN);
    words = tmpfile();
    int ends[2];
    if (!words || pipe2(ends, O_CLOEXEC) < 0) {
        problem = strerror(errno);
        return;
    }
    const int error =
        spawn(&process, ends[0], fileno(words), arguments(*this, fps, from, seconds, soundtrack));
    close(ends[0]);
    pipe = ends[1];
    fcntl(pipe, F_SETPIPE_SZ, pipeBytes);  // the usual size will do if that is refused
    if (error) {
        process = -1;
        problem = std::string("ffmpeg can't be started: ") + strerror(error);
    }
}

void Film::abandon() {
    if (process > 0) {
        kill(process, SIGKILL);
        wait();
        unlink(unfinished.c_str());
    }
    if (pipe >= 0) close(pipe);
    if (words) fclose(words);
    pipe = -1;
    words = nullptr;
}

int Film::wait() {
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    process = -1;
    return status;
}

bool Film::write(const Picture& picture) {
    size_t done = 0;
    while (done < picture.size()) {
        const ssize_t count = ::write(pipe, picture.data() + done, picture.size() - done);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return false;
        done += count;
    }
    return true;
}

bool Film::finish(bool complete) {
    close(pipe);
    pipe = -1;
    const int status = wait();
    const bool whole = complete && status == 0;
    if (whole && rename(unfinished.c_str(), path.c_str()) == 0) return true;
    problem = whole ? strerror(errno) : firstLine(words);
    if (problem.empty()) problem = "ffmpeg ended before the film did";
    unlink(unfinished.c_str());
    return false;
}
