// Captures the show for a clock that steps: as a film with its sound, as numbered pictures, or as a
// storyboard; or joins parts of a film that many captures have drawn.
#include "app/sound_music.h"
#include "tools/capture/drawing.h"
#include "tools/capture/join.h"
#include "tools/capture/options.h"
#include "tools/capture/part.h"
#include "tools/capture/pictures.h"
#include "tools/capture/stopping.h"
#include "tools/capture/window.h"
#include "tools/data_folder.h"
#include "tools/installed_show.h"
#include "tools/loading/loading.h"
#include "tools/success.h"

namespace {

bool drawWholeFilm(SteppedShow& show, const CaptureOptions& options, const std::vector<int>& frames,
                   const Soundtrack& soundtrack, const Manifest& manifest) {
    const FilmSound sound = {soundtrack.path, show.milliseconds(frames.front()) * 0.001,
                             double(frames.size()) / options.fps, originOf(manifest)};
    Progress progress(int(frames.size()));
    Film film(options.out, filmWords(options.out, options.kind, options.fps, sound));
    return drawFilm(show, frames, progress, options.kind, film);
}

bool join(const CaptureOptions& options) {
    const Soundtrack soundtrack(readShowFile({FileKind::music, SoundMusic::path}));
    if (soundtrack.problem.empty()) return joinParts(options.parts, options, &soundtrack);
    return tell(soundtrack.problem);
}

// Nothing of data/ is read a second time: what is saved there later isn't in the film.
bool capture(const CaptureOptions& options) {
    FolderLock held = holdDataSet();
    stopOnSignals();  // until then there is nothing that would have to be put away
    if (!options.parts.empty()) return join(options);
    std::vector<int> frames = framesOf(options.runs(options.fps));
    if (frames.empty()) return tell("no frame lies between --from and --to");
    const bool film = options.storyboard.empty() && !options.picturesWanted();
    const ReadShow read = readShow(film && options.frames.empty());
    held.release();
    if (!read.good) return false;
    const Soundtrack soundtrack(read.music);
    openCaptureWindow(options.samples);
    Manifest wanted = manifestOfWindow(options.fps, options.kind, read.data, soundtrack.hash);
    if (!film) frames = missingPictures(options, frames, &wanted);
    if (frames.empty() || (film && options.resume && isDrawn(options, wanted))) return true;

    loadShow();
    SteppedShow show(options.fps, SteppedShow::Loaded{});
    if (!options.storyboard.empty()) return drawStoryboard(show, options, frames);
    if (!film) return drawPictures(show, options, frames, wanted);
    if (options.resume) return drawResumably(show, options, wanted, soundtrack);
    if (options.frames.empty()) return drawWholeFilm(show, options, frames, soundtrack, wanted);
    Progress progress(int(frames.size()));
    return drawPart(show, frames, progress, options.out, wanted);
}

}  // namespace

int main(int argc, char** argv) {
    CaptureOptions options = parseCaptureOptions(argc, argv);
    const std::string folder = goToInstalledShow();
    for (std::string& part : options.parts) part = pathFrom(folder, part);
    options.storyboard = pathFrom(folder, options.storyboard);
    options.out = pathFrom(folder, options.out);
    // When the display goes away, its library ends the process in the middle of a film.
    failUnlessSucceeded([] {
        if (Film::inProgress) Film::inProgress->abandon();
    });
    succeeded = capture(options);
    if (wasStopped() && !succeeded)
        tell(options.resume ? "stopped; --resume goes on from what is whole"
                            : "stopped; nothing was left half written");
    return succeeded ? 0 : 1;
}
