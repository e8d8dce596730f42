// The speed of capture, of each kind of film, against drawing the same frames and keeping none.
#include <GL/glew.h>

#include <cstdio>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "app/sound_music.h"
#include "bench/bench.h"
#include "tools/capture/film.h"
#include "tools/capture/grabber.h"
#include "tools/capture/stepped_show.h"

namespace {

constexpr int framesPerSecond = 60;  // as films have
constexpr int frames = 90;
constexpr int from = 20;  // seconds
constexpr int pairs = 5;

struct Row {
    const char* name;
    FilmKind kind;
    int samples;
    Goal goal = Goal::none;
    double ratio = 0;
};

// Both sides of a pair draw with the row's samples.
constexpr Row rows[] = {
    {"capture", FilmKind::Net, 0, Goal::ratioAtLeast, 0.9},
    {"capture --samples 4", FilmKind::Net, 4},
    {"capture --upload", FilmKind::Upload, 0, Goal::ratioAtLeast, 0.8},
    {"capture --upload --samples 4", FilmKind::Upload, 4},
    {"capture --lossless", FilmKind::Lossless, 0},
    {"capture --lossless --samples 4", FilmKind::Lossless, 4},
};

double drawnSeconds(SteppedShow& show) {
    const double start = wallSeconds();
    for (int i = 0; i < frames; i++) show.draw(from * framesPerSecond + i);
    glFinish();
    return wallSeconds() - start;
}

double capturedSeconds(SteppedShow& show, FilmKind kind) {
    const std::string path = std::filesystem::temp_directory_path() / "valojuova-bench.mp4";
    const double start = wallSeconds();
    const FilmSound sound = {SoundMusic::path, from, double(frames) / framesPerSecond, ""};
    Film film(path, filmWords(path, kind, framesPerSecond, sound));
    Grabber grabber([&](const Picture& picture) { return film.write(picture.data(), picture.size()); });
    for (int i = 0; i < frames; i++) {
        show.draw(from * framesPerSecond + i);
        grabber.grab();
    }
    const bool written = grabber.finish() && film.finish(true) && film.place();
    const double seconds = wallSeconds() - start;
    if (!written) fprintf(stderr, "bench: %s\n", film.problem.c_str());
    std::filesystem::remove(path);
    return seconds;
}

}  // namespace

void printCapturePairs(int row) {
    SteppedShow show(framesPerSecond, rows[row].samples);
    for (int i = 0; i <= pairs; i++) {
        show.next = from * framesPerSecond;
        const double drawn = drawnSeconds(show);
        show.next = from * framesPerSecond;
        const double captured = capturedSeconds(show, rows[row].kind);
        if (i > 0) printf("%f %f\n", frames / captured, frames / drawn);  // once before it counts
    }
}

// Drawn and captured take turns, in a process for each row: a window has one number of samples.
Figures benchCapture(const std::string& part) {
    Figures figures;
    for (const Row& row : rows) {
        if (std::string(row.name).find(part) == std::string::npos) continue;
        std::istringstream lines(outputOf(thisProgram("capture-pairs " + std::to_string(&row - rows))));
        std::vector<double> captured, drawn;
        double ours, alone;
        while (lines >> ours >> alone) {
            captured.push_back(ours);
            drawn.push_back(alone);
        }
        if (captured.empty()) continue;  // the driver has no such window
        figures.push_back(paired(row.name, "frames/s", captured, drawn, row.goal, row.ratio));
    }
    return figures;
}
