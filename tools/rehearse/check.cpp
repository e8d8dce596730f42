#include "tools/rehearse/check.h"

#include <signal.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vorbis/vorbisfile.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "geometry/aml.h"
#include "render/textures.h"
#include "script/timeline.h"
#include "sound/decoder.h"

namespace {

constexpr int snapshotDescriptor = 3;
constexpr rlim_t patience = 20;            // seconds of processor time
constexpr rlim_t mostMemory = 4ull << 30;  // bytes
constexpr char snapshotPath[] = "/proc/self/fd/3";
constexpr const char* kinds[] = {"picture", "model", "music"};

int refuse(const char* reason) {
    fprintf(stderr, "%s\n", reason);
    return 1;
}

bool isPng(const std::string& name) {
    return name.ends_with("png") || name.ends_with("PNG");
}

// libjpeg fills in what a broken file lacks and only warns: its warnings mean a file that is damaged.
bool warned() {
    return lseek(STDERR_FILENO, 0, SEEK_CUR) > 0;
}

int checkPicture(const std::string& name) {
    Image image = {};
    if (readPicture(snapshotPath, name, &image) != 0) return 1;
    if (!isTextureImage(image)) {
        fprintf(stderr, "%d channels, %u bytes for %d pixels; the show takes 3 or 4 channels of 8 bits\n",
                image.channels, image.stride, image.width);
        return 1;
    }
    return !isPng(name) && warned() ? 1 : 0;
}

int checkModel(const std::string& name) {
    MeshSet set;
    ResDescFile file(snapshotPath);
    loadAml(set, file, name.c_str());
    for (Mesh& mesh : set) mesh.expandPositions(name.c_str());
    return 0;
}

// The last page of a whole file says that it is the last.
bool isWhole() {
    FILE* file = fopen(snapshotPath, "rb");
    if (!file) return false;
    constexpr long tailBytes = 70000;  // more than the largest page
    fseek(file, 0, SEEK_END);
    fseek(file, std::max(ftell(file) - tailBytes, 0L), SEEK_SET);
    std::vector<char> tail(tailBytes);
    tail.resize(fread(tail.data(), 1, tail.size(), file));
    fclose(file);
    constexpr char capture[] = {'O', 'g', 'g', 'S'};
    const auto page = std::find_end(tail.begin(), tail.end(), capture, capture + 4);
    constexpr char lastPage = 4;
    return tail.end() - page > 5 && (page[5] & lastPage);
}

struct Column {
    float peak = 0;
    double squares = 0;
    long samples = 0;
};

int checkMusic() {
    if (!sound::Decoder::open(snapshotPath)) return refuse("no Ogg Vorbis file that can be played");
    if (!isWhole()) return refuse("the file ends too early");
    OggVorbis_File file;
    if (ov_fopen(snapshotPath, &file) != 0) return 1;
    std::vector<Column> columns(waveformColumns);
    const double seconds = double(programme().back().begin);
    float** channels = nullptr;
    int link = 0;
    long got = 0;
    while ((got = ov_read_float(&file, &channels, 4096, &link)) != 0) {
        if (got < 0) return refuse("the file is damaged");
        const double start = ov_time_tell(&file);
        const vorbis_info* info = ov_info(&file, -1);
        for (long i = 0; i < got; i++) {
            const double time = start + double(i - got) / double(info->rate);
            const int at = int(time / seconds * waveformColumns);
            if (at < 0 || at >= waveformColumns) continue;
            for (int channel = 0; channel < info->channels; channel++) {
                const float sample = channels[channel][i];
                columns[at].peak = std::max(columns[at].peak, std::fabs(sample));
                columns[at].squares += double(sample) * sample;
                columns[at].samples++;
            }
        }
    }
    for (const Column& column : columns) {
        const double loudness = std::sqrt(column.squares / double(std::max(column.samples, 1L)));
        putchar(int(std::lround(std::min(column.peak, 1.0f) * 255)));
        putchar(int(std::lround(std::min(loudness, 1.0) * 255)));
    }
    return 0;
}

std::string contentOf(int file) {
    std::string content;
    char block[4096];
    lseek(file, 0, SEEK_SET);
    for (ssize_t got; (got = read(file, block, sizeof block)) > 0;) content.append(block, size_t(got));
    return content;
}

// Of what readers say, which may be several lines, and may name the file by the path that it was read from.
std::string problemOf(const std::string& name, const std::string& words, int status) {
    std::string line = words.substr(0, words.find('\n'));
    for (const std::string& start : {"AML file " + name + ": ", std::string("libpng error: ")}) {
        if (line.starts_with(start)) line.erase(0, start.size());
    }
    if (line.empty()) line = WIFEXITED(status) ? "can't be read" : "no reader can stand it";
    return name + ": " + line;
}

}  // namespace

const char* checkProgram = "/proc/self/exe";

int runCheck(int argc, const char* const* argv) {
    if (argc != 4) return refuse("rehearse: --check is for the program itself");
    const rlimit seconds = {patience, patience}, bytes = {mostMemory, mostMemory};
    setrlimit(RLIMIT_CPU, &seconds);
    setrlimit(RLIMIT_AS, &bytes);
    const std::string kind = argv[2], name = argv[3];
    if (kind == kinds[0]) return checkPicture(name);
    if (kind == kinds[1]) return checkModel(name);
    return checkMusic();
}

int readPicture(const char* path, const std::string& name, Image* image) {
    return isPng(name) ? loadPng(path, image, 0) : loadJpeg(path, image, 0);
}

Check::Check(FileKind kind, const std::string& name, std::unique_ptr<Snapshot> taken)
    : kind(kind), name(name), snapshot(std::move(taken)) {
    output = memfd_create("output", MFD_CLOEXEC);
    words = memfd_create("words", MFD_CLOEXEC);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, words, STDERR_FILENO);
    posix_spawn_file_actions_adddup2(&actions, snapshot->descriptor, snapshotDescriptor);
    std::string words[] = {"rehearse", "--check", kinds[int(kind)], name};
    char* argv[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(), nullptr};
    if (posix_spawn(&process, checkProgram, &actions, nullptr, argv, environ) != 0) process = -1;
    posix_spawn_file_actions_destroy(&actions);
}

Check::~Check() {
    if (process > 0) {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }
    close(output);
    close(words);
}

std::optional<Check::Result> Check::result() {
    int status = -1;
    if (process > 0 && waitpid(process, &status, WNOHANG) == 0) return std::nullopt;
    process = -1;
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return Result{true, contentOf(output), ""};
    return Result{false, "", problemOf(name, contentOf(words), status)};
}
