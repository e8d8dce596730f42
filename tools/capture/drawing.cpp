#include "tools/capture/drawing.h"

#include <cstdio>

#include "tools/capture/hash.h"
#include "tools/capture/stopping.h"

bool tell(const std::string& line) {
    fprintf(stderr, "capture: %s\n", line.c_str());
    return false;
}

bool drawFrames(SteppedShow& show, const std::vector<int>& frames, Progress& progress, Grabber::Write write,
                std::string* problem) {
    Grabber grabber(std::move(write));
    for (int frame : frames) {
        if (wantsToStop()) return false;
        show.draw(frame);
        if (!grabber.grab()) break;
        progress.step();
    }
    const bool written = grabber.finish();
    if (problem)
        *problem = grabber.problem;
    else if (!grabber.problem.empty())
        tell(grabber.problem);
    return written;
}

bool tellNoFilm(const Film& film) {
    return !wasStopped() && tell("no film was written: " + film.problem);
}

bool finishFilm(Film& film, bool complete, Manifest* manifest,
                const std::function<std::string()>& objection) {
    if (film.problem.empty() && film.finish(complete)) film.problem = objection();
    if (film.problem.empty()) {
        if (manifest) {
            manifest->film = hashOfFile(film.unfinished);
            if (!writeManifest(film.path, *manifest)) return false;
        }
        if (film.place()) return true;
    }
    return tellNoFilm(film);
}

bool drawFilm(SteppedShow& show, const std::vector<int>& frames, Progress& progress, FilmKind kind,
              Film& film, Manifest* manifest) {
    const auto write = [&](const Picture& picture) {
        if (manifest) manifest->frames.push_back({frames[manifest->frames.size()], hashOfPicture(picture)});
        return film.writePicture(picture, kind);
    };
    const bool drawn = film.problem.empty() && drawFrames(show, frames, progress, write, &film.problem);
    return !wasStopped() && finishFilm(film, drawn, manifest);
}
