// The speed of capture, of each kind of film, against drawing the same frames and keeping none: frames a
// second of processor time, ours and the encoder's, which other work on the machine changes little.
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
constexpr int frames = 30;           // a group of a film
constexpr int pairs = 9;             // all over the show: some scenes take three times as long as others
constexpr int firstSecond = 8;
constexpr int between = 19;  // seconds from one to the next

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

double drawnSeconds(SteppedShow& show, int first) {
    show.next = first;
    const double start = processSeconds();
    for (int i = 0; i < frames; i++) show.draw(first + i);
    glFinish();
    return processSeconds() - start;
}

// But for the encoder's.
double capturedSeconds(SteppedShow& show, int first, FilmKind kind, Film& film) {
    show.next = first;
    const double start = processSeconds();
    Grabber grabber([&](const Picture& picture) { return film.writePicture(picture, kind); });
    for (int i = 0; i < frames; i++) {
        show.draw(first + i);
        grabber.grab();
    }
    grabber.finish();
    return processSeconds() - start;
}

}  // namespace

// Into one film, as the encoder's start is nothing beside a whole show. What it takes of the frames of a
// round it has taken when they have been drawn again.
void printCapturePairs(int row) {
    SteppedShow show(framesPerSecond, rows[row].samples);
    const std::string path = std::filesystem::temp_directory_path() / "valojuova-bench.mp4";
    const FilmSound sound = {SoundMusic::path, 0, double(pairs + 1) * frames / framesPerSecond, ""};
    Film film(path, filmWords(path, rows[row].kind, framesPerSecond, sound));
    for (int i = 0; i <= pairs; i++) {
        const int first = (firstSecond + i * between) * framesPerSecond;
        show.next = first;
        show.draw(first);  // what a scene's first frame takes is nothing beside the scene
        const double start = processSeconds(film.process);
        const double captured = capturedSeconds(show, first, rows[row].kind, film);
        const double drawn = drawnSeconds(show, first);
        const double encoded = processSeconds(film.process) - start;
        if (i > 0) printf("%f %f\n", frames / (captured + encoded), frames / drawn);  // once before it counts
    }
    if (!film.finish(true)) fprintf(stderr, "bench: %s\n", film.problem.c_str());
}

// Drawn and captured take turns, in a process for each row: a window has one number of samples.
Figures benchCapture(const std::string& filter) {
    Figures figures;
    for (const Row& row : rows) {
        if (std::string(row.name).find(filter) == std::string::npos) continue;
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
