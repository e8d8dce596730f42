#include "tools/capture/drawing.h"

#include <cstdio>

#include "tools/capture/stopping.h"

bool drawFrames(SteppedShow& show, const std::vector<int>& frames, Progress& progress, Grabber::Write write) {
    Grabber grabber(std::move(write));
    for (int frame : frames) {
        if (wantsToStop()) return false;
        show.draw(frame);
        if (!grabber.grab()) return false;
        progress.step();
    }
    return grabber.finish();
}

bool finishFilm(Film& film, bool complete) {
    if (film.problem.empty() && film.finish(complete)) return true;
    if (!wasStopped()) fprintf(stderr, "capture: no film was written: %s\n", film.problem.c_str());
    return false;
}

bool drawFilm(SteppedShow& show, const std::vector<int>& frames, Progress& progress, Film& film,
              const std::function<void(const Picture&)>& seen) {
    const bool drawn =
        film.problem.empty() && drawFrames(show, frames, progress, [&](const Picture& picture) {
            if (seen) seen(picture);
            return film.write(picture.data(), picture.size());
        });
    return !wasStopped() && finishFilm(film, drawn);
}
