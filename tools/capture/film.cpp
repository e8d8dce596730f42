#include "tools/capture/film.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>

#include "render/screen.h"
#include "script/timeline.h"
#include "tools/capture/video_levels.h"
#include "tools/formatted.h"
#include "tools/whole_file.h"

namespace {

constexpr int pipeBytes = 1 << 20;  // half a picture, so that writer and reader seldom wait for each other

volatile sig_atomic_t awaited = 0;  // the process that finish() waits for

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

// That file, made anew and held until it is closed; -1 with the cause in errno. One that is there already is
// of a capture that was killed, whose ffmpeg may still be at it, or of one that holds it.
int holdAnew(const char* path) {
    constexpr int flags = O_WRONLY | O_CREAT | O_CLOEXEC;
    const int left = open(path, flags, 0666);
    if (left < 0) return -1;
    int file = -1;
    if (flock(left, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) {
        unlink(path);
        file = open(path, flags | O_EXCL, 0666);
        if (file >= 0) flock(file, LOCK_EX | LOCK_NB);
    }
    const int error = errno;
    close(left);
    errno = error;
    return file;
}

}  // namespace

Film* Film::inProgress = nullptr;

Film::Film(const std::string& path, const Words& inputs) : path(path), unfinished(unfinishedPath(path)) {
    inProgress = this;
    signal(SIGPIPE, SIG_IGN);
    held = holdAnew(unfinished.c_str());
    if (held < 0 && (errno == EWOULDBLOCK || errno == EEXIST)) {
        unfinished.clear();
        problem = "another capture is writing it";
        return;
    }
    words = tmpfile();
    progress = tmpfile();
    int ends[2];
    if (!words || !progress || pipe2(ends, O_CLOEXEC) < 0) {
        problem = strerror(errno);
        return;
    }
    Words arguments = {"ffmpeg", "-nostdin", "-loglevel", "error", "-xerror", "-y"};
    append(&arguments, inputs);
    arguments.push_back("file:" + unfinished);  // else a colon in it would name a protocol
    // In a group of its own, so that it is always we who end it.
    process = startProgram(arguments, {ends[0], fileno(progress), fileno(words)}, Group::own);
    if (process < 0) problem = std::string("ffmpeg can't be started: ") + strerror(errno);
    close(ends[0]);
    pipe = ends[1];
    fcntl(pipe, F_SETPIPE_SZ, pipeBytes);  // the usual size will do if that is refused
}

void Film::abandon() {
    if (process > 0) {
        kill(process, SIGKILL);
        wait();
    }
    if (!unfinished.empty()) unlink(unfinished.c_str());
    unfinished.clear();
    for (const int file : {pipe, held})
        if (file >= 0) close(file);
    if (words) fclose(words);
    if (progress) fclose(progress);
    pipe = held = -1;
    words = progress = nullptr;
    if (inProgress == this) inProgress = nullptr;
}

int Film::wait() {
    const int status = waitForEnd(process);
    process = -1;
    return status;
}

bool Film::write(const void* bytes, size_t count) {
    const char* next = static_cast<const char*>(bytes);
    while (count > 0) {
        const ssize_t written = ::write(pipe, next, count);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        next += written;
        count -= written;
    }
    return true;
}

bool Film::writePicture(const Picture& picture, FilmKind kind) {
    if (!takesVideoLevels(path, kind)) return write(picture.data(), picture.size());
    fillVideoLevels(picture, &levels);
    return write(levels.data(), levels.size());
}

int Film::framesWritten() const {
    int frames = -1;
    char line[256];
    rewind(progress);
    while (fgets(line, sizeof line, progress)) sscanf(line, "frame=%d", &frames);
    return frames;
}

bool Film::finish(bool complete) {
    close(pipe);
    pipe = -1;
    awaited = process;
    const bool ended = wait() == 0;
    awaited = 0;
    if (!complete || !ended)
        problem = firstLine(words);
    else if (expectedFrames == 0 || framesWritten() == expectedFrames)
        return true;
    else
        problem = "ffmpeg wrote " + std::to_string(framesWritten()) + " frames of " +
                  std::to_string(expectedFrames);
    if (problem.empty()) problem = "ffmpeg ended before the film did";
    return false;
}

bool Film::place() {
    if (rename(unfinished.c_str(), path.c_str()) != 0) {
        problem = strerror(errno);
        return false;
    }
    unfinished.clear();
    return true;
}

void Film::interruptFinish() {
    if (awaited > 0) kill(awaited, SIGKILL);
}

namespace {

// A file, as ffmpeg reads it, with a chapter for each segment of the show that lies in the film, which begins
// at second `from` of it.
std::string chapters(double from, double seconds) {
    std::string text = ";FFMETADATA1\n";
    const auto entries = programme();
    const auto milliseconds = [&](const ProgrammeEntry& entry) {
        return std::lround(std::clamp(double(entry.begin) - from, 0.0, seconds) * 1000);
    };
    for (size_t i = 0; i + 1 < entries.size(); i++) {
        const long begin = milliseconds(entries[i]), end = milliseconds(entries[i + 1]);
        if (begin < end)
            text += formatted("[CHAPTER]\nTIMEBASE=1/1000\nSTART=%ld\nEND=%ld\ntitle=%s\n", begin, end,
                              entries[i].name);
    }
    return text;
}

}  // namespace

Words soundInput(const std::string& path, FilmKind kind, const FilmSound& sound) {
    if (sound.path.empty()) return {};
    Words words = {"-ss", std::to_string(sound.from), "-t", std::to_string(sound.seconds), "-i", sound.path};
    append(&words, {"-f", "ffmetadata", "-i", fileInMemory(chapters(sound.from, sound.seconds))});
    append(&words, soundWords(path, kind));
    append(&words, {"-metadata", "title=Valojuova", "-metadata", "creation_time=now"});
    append(&words, {"-metadata", "comment=" + sound.origin});
    append(&words, {"-metadata", "copyright=CC BY 4.0, https://creativecommons.org/licenses/by/4.0/"});
    return words;
}

Words filmWords(const std::string& path, FilmKind kind, int fps, const FilmSound& sound,
                const std::vector<int>& starts) {
    const std::string size = std::to_string(screenWidth) + "x" + std::to_string(screenHeight);
    const std::string pixels = takesVideoLevels(path, kind) ? "yuv420p" : "bgr0";
    Words words = {"-f", "rawvideo",   "-pixel_format",     pixels, "-video_size",
                   size, "-framerate", std::to_string(fps), "-i",   "pipe:0"};
    append(&words, soundInput(path, kind, sound));
    append(&words, pictureWords(path, kind, fps));
    std::string times;
    for (int frame : starts) {
        if (!times.empty()) times += ',';
        times += std::to_string(double(frame) / fps);
    }
    if (starts.size() > 1) append(&words, {"-force_key_frames", times, "-forced-idr", "1"});
    append(&words, containerWords(path));
    return words;
}
