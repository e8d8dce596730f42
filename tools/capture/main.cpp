// Captures the show for a clock that steps: as a film with its sound, as numbered pictures, or as a
// storyboard; or joins parts of a film that many captures have drawn.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "app/sound_music.h"
#include "tools/capture/drawing.h"
#include "tools/capture/join.h"
#include "tools/capture/options.h"
#include "tools/capture/part.h"
#include "tools/capture/pictures.h"
#include "tools/capture/stopping.h"
#include "tools/installed_show.h"

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

bool drawWholeFilm(const CaptureOptions& options, const std::vector<int>& frames) {
    SteppedShow show(options.fps, options.samples);
    const SoundPart sound = {SoundMusic::path, show.milliseconds(frames.front()) * 0.001,
                             double(frames.size()) / options.fps};
    Progress progress(int(frames.size()));
    Film film(options.out, filmWords(options.out, options.kind, options.fps, sound));
    return drawFilm(show, frames, progress, film);
}

bool drawOnePart(const CaptureOptions& options, const std::vector<int>& frames) {
    SteppedShow show(options.fps, options.samples);
    Progress progress(int(frames.size()));
    return drawPart(show, frames, progress, options.out, manifestOfWindow(options.fps, options.kind));
}

// As they are meant where the caller is; of numbered pictures the name is a format.
void findFiles(CaptureOptions* options) {
    std::string folder = goToInstalledShow();
    for (std::string& part : options->parts) part = pathFrom(folder, part);
    options->storyboard = pathFrom(folder, options->storyboard);
    if (options->picturesWanted())
        for (size_t at = 0; (at = folder.find('%', at)) != std::string::npos; at += 2)
            folder.insert(at, 1, '%');
    options->out = pathFrom(folder, options->out);
}

bool capture(const CaptureOptions& options) {
    if (!options.parts.empty()) return joinParts(options.parts, options, true);
    const std::vector<int> frames = framesOf(options.runs(options.fps));
    if (frames.empty()) {
        fprintf(stderr, "capture: no frame lies between --from and --to\n");
        return false;
    }
    if (!options.storyboard.empty()) return drawStoryboard(options, frames);
    if (options.picturesWanted()) return drawPictures(options, frames);
    if (options.resume) return drawResumably(options);
    return options.frames.empty() ? drawWholeFilm(options, frames) : drawOnePart(options, frames);
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
