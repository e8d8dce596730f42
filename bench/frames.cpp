// Milliseconds of each part of the programme's frames, against the same frames replayed from a recording of
// their GL calls: what is over is ours.
#include <GL/glew.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "app/frame.h"
#include "bench/bench.h"
#include "bench/moments.h"
#include "script/timeline.h"
#include "tools/capture/stepped_show.h"

namespace {

constexpr int framesPerSecond = 30;
constexpr int frames = 60;
constexpr int warmUpFrames = 10;
constexpr int replays = 3;
constexpr double goal = 1.03;

std::string shell(const std::string& command) {
    FILE* pipe = popen((command + " 2>/dev/null").c_str(), "r");
    std::string output;
    std::array<char, 4096> part;
    while (const size_t count = fread(part.data(), 1, part.size(), pipe)) output.append(part.data(), count);
    pclose(pipe);
    return output;
}

std::string momentCommand(int entry, int count) {
    return std::filesystem::read_symlink("/proc/self/exe").string() + " moment " + std::to_string(entry) +
           " " + std::to_string(count);
}

// Records a moment and replays the recording as fast as it goes, loading included: "Rendered N frames in S
// secs, ...", of which S.
double replaySeconds(int entry, int count) {
    const std::string trace = std::filesystem::temp_directory_path() / "valojuova-bench.trace";
    shell("apitrace trace -o " + trace + " " + momentCommand(entry, count));
    double best = 1e9;
    for (int i = 0; i < replays; i++) {
        const std::string output = shell("apitrace replay --benchmark " + trace);
        const size_t place = output.find(" frames in ");
        if (place != std::string::npos) best = std::min(best, std::atof(output.c_str() + place + 11));
    }
    std::filesystem::remove(trace);
    return best;
}

// Recordings of a few frames and of many hold the same loading, so their difference is of frames alone.
double replayedFrame(int entry) {
    return (replaySeconds(entry, frames) - replaySeconds(entry, warmUpFrames)) / (frames - warmUpFrames);
}

}  // namespace

Moment drawMoment(int entry, int count) {
    SteppedShow show(framesPerSecond);
    const auto sheet = programme();
    const float middle = (sheet[entry].begin + sheet[entry + 1].begin) / 2;
    Moment start;
    for (int i = 0; i < count; i++) {
        if (i == warmUpFrames) start = {wallSeconds(), processSeconds()};
        show.music.ms = int(middle * 1000) + i * 1000 / framesPerSecond;
        renderFrame();
    }
    glFinish();
    const int counted = std::max(1, count - warmUpFrames);
    return {(wallSeconds() - start.wall) / counted, (processSeconds() - start.process) / counted};
}

Figures benchFrames() {
    Figures figures;
    const auto sheet = programme();
    for (int entry = 0; entry + 1 < int(sheet.size()); entry++) {
        Moment best{1e9, 1e9};
        for (int i = 0; i < replays; i++) {
            Moment moment;
            sscanf(shell(momentCommand(entry, frames)).c_str(), "%lf %lf", &moment.wall, &moment.process);
            if (moment.wall < best.wall) best = moment;
        }
        char name[64];
        snprintf(name, sizeof name, "a frame after %.1f s", double(sheet[entry].begin));
        figures.push_back({name, best.wall * 1000, "ms", replayedFrame(entry) * 1000, goal, false});
        figures.push_back({std::string(name) + ", CPU", best.process * 1000, "ms", 0, 0, false});
    }
    return figures;
}
