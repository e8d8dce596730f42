// Captures the show for a clock that steps: as a film with its sound, as numbered pictures, or as a
// storyboard; or joins parts of a film that many captures have drawn.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "app/sound_music.h"
#include "app/startup.h"
#include "tools/capture/drawing.h"
#include "tools/capture/hash.h"
#include "tools/capture/join.h"
#include "tools/capture/options.h"
#include "tools/capture/part.h"
#include "tools/capture/pictures.h"
#include "tools/capture/stopping.h"
#include "tools/capture/window.h"
#include "tools/installed_show.h"
#include "tools/loading/loading.h"

namespace {

bool succeeded = false;

// The show's own ways out end with status 0, also where it could not start; a capture without a result
// failed. When the display goes away, its library ends the process in the middle of a film.
void failUnlessSucceeded() {
    if (succeeded) return;
    if (Film::inProgress) Film::inProgress->abandon();
    fflush(nullptr);
    _exit(1);
}

// The films and pictures of what was read while files changed would be of a state that never was.
SteppedShow loadShow(int fps, const std::string& data) {
    initialiseDemo();
    if (hashOfFiles(showFiles()) != data) {
        fprintf(stderr, "capture: data/ was changed while it was read; start again\n");
        exit(1);
    }
    return SteppedShow(fps, SteppedShow::Loaded{});
}

bool drawWholeFilm(SteppedShow& show, const CaptureOptions& options, const std::vector<int>& frames,
                   const Soundtrack& soundtrack) {
    const SoundPart sound = {soundtrack.path, show.milliseconds(frames.front()) * 0.001,
                             double(frames.size()) / options.fps};
    Progress progress(int(frames.size()));
    Film film(options.out, filmWords(options.out, options.kind, options.fps, sound));
    return drawFilm(show, frames, progress, film);
}

// As they are meant where the caller is.
void findFiles(CaptureOptions* options) {
    const std::string folder = goToInstalledShow();
    for (std::string& part : options->parts) part = pathFrom(folder, part);
    options->storyboard = pathFrom(folder, options->storyboard);
    options->out = pathFrom(folder, options->out);
}

// Nothing of data/ is read again once the show is loaded.
bool capture(const CaptureOptions& options) {
    const Soundtrack soundtrack;
    const bool film = options.storyboard.empty() && !options.picturesWanted(), joins = !options.parts.empty();
    if (film && (options.frames.empty() || joins) && !soundtrack.problem.empty()) {
        fprintf(stderr, "capture: %s: %s\n", SoundMusic::path, soundtrack.problem.c_str());
        return false;
    }
    if (joins) return joinParts(options.parts, options, &soundtrack);
    std::vector<int> frames = framesOf(options.runs(options.fps));
    if (frames.empty()) {
        fprintf(stderr, "capture: no frame lies between --from and --to\n");
        return false;
    }
    if (!readShow().empty()) return false;
    openCaptureWindow(options.samples);
    Manifest wanted = manifestOfWindow(options.fps, options.kind, soundtrack.hash);
    if (!film) frames = missingPictures(options, frames, &wanted);
    if (frames.empty() || (film && options.resume && isDrawn(options, wanted))) return true;

    SteppedShow show = loadShow(options.fps, wanted.data);
    if (!options.storyboard.empty()) return drawStoryboard(show, options, frames);
    if (!film) return drawPictures(show, options, frames, wanted);
    if (options.resume) return drawResumably(show, options, wanted, soundtrack);
    if (options.frames.empty()) return drawWholeFilm(show, options, frames, soundtrack);
    Progress progress(int(frames.size()));
    return drawPart(show, frames, progress, options.out, wanted);
}

}  // namespace

int main(int argc, char** argv) {
    CaptureOptions options = parseCaptureOptions(argc, argv);
    findFiles(&options);
    stopOnSignals();
    atexit(failUnlessSucceeded);
    succeeded = capture(options);
    if (wasStopped() && !succeeded) {
        fprintf(stderr, options.resume ? "capture: stopped; --resume goes on from what is whole\n"
                                       : "capture: stopped; nothing was left half written\n");
    }
    return succeeded ? 0 : 1;
}
