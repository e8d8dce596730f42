// The speed of capture against drawing the same frames and keeping none.
#include <GL/glew.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "app/sound_music.h"
#include "bench/bench.h"
#include "tools/capture/film.h"
#include "tools/capture/grabber.h"
#include "tools/capture/stepped_show.h"

namespace {

constexpr int framesPerSecond = 30;
constexpr int frames = 90;
constexpr int from = 20;  // seconds
constexpr int pairs = 5;
constexpr double goal = 0.85;

double drawnSeconds(SteppedShow& show) {
    const double start = wallSeconds();
    for (int i = 0; i < frames; i++) show.draw(from * framesPerSecond + i);
    glFinish();
    return wallSeconds() - start;
}

double capturedSeconds(SteppedShow& show) {
    const std::string path = std::filesystem::temp_directory_path() / "valojuova-bench.mp4";
    const double start = wallSeconds();
    const SoundPart sound = {SoundMusic::path, from, double(frames) / framesPerSecond};
    Film film(path, filmWords(path, FilmKind::Net, framesPerSecond, sound));
    Grabber grabber([&](const Picture& picture) { return film.write(picture.data(), picture.size()); });
    for (int i = 0; i < frames; i++) {
        show.draw(from * framesPerSecond + i);
        grabber.grab();
    }
    const bool written = grabber.finish() && film.finish(true);
    const double seconds = wallSeconds() - start;
    if (!written) fprintf(stderr, "bench: %s\n", film.problem.c_str());
    std::filesystem::remove(path);
    return seconds;
}

}  // namespace

// Drawn and captured take turns.
Figures benchCapture(const std::string&) {
    SteppedShow show(framesPerSecond);
    std::vector<double> captured, drawn;
    for (int i = 0; i <= pairs; i++) {
        show.next = from * framesPerSecond;
        const double drawnAlone = drawnSeconds(show);
        show.next = from * framesPerSecond;
        const double drawnAndKept = capturedSeconds(show);
        if (i == 0) continue;  // once before it counts
        drawn.push_back(frames / drawnAlone);
        captured.push_back(frames / drawnAndKept);
    }
    return {paired("capture", "frames/s", captured, drawn, Goal::ratioAtLeast, goal)};
}
