#include "tools/capture/part.h"

#include <algorithm>
#include <filesystem>

#include "tools/capture/drawing.h"
#include "tools/capture/join.h"
#include "tools/formatted.h"

namespace fs = std::filesystem;

namespace {

struct Piece {
    std::string path;
    FrameRun run;
};

// Pieces meet where groups of frames would begin anyway.
std::vector<Piece> piecesOf(const CaptureOptions& options, const FrameRuns& runs) {
    const int length = secondsOfPiece * options.fps;
    const std::string folder = options.out + ".parts/";
    std::string ending = options.kind == FilmKind::Archive ? ".mov" : ".mp4";
    if (hasExactTimes(options.out)) ending = fs::path(options.out).extension();
    std::vector<Piece> pieces;
    for (const FrameRun& run : runs) {
        for (int first = run.first; first <= run.last;) {
            const int last = std::min(run.last, (first / length + 1) * length - 1);
            pieces.push_back({folder + formatted("%06d-%06d", first, last) + ending, {first, last}});
            first = last + 1;
        }
    }
    return pieces;
}

// Where in a part frames follow that lie apart in the show.
std::vector<int> startsOf(const std::vector<int>& frames) {
    std::vector<int> starts;
    for (size_t i = 0; i < frames.size(); i++) {
        if (i == 0 || frames[i] != frames[i - 1] + 1) starts.push_back(int(i));
    }
    return starts;
}

// Whether `path` holds the frames as `wanted` would have them drawn. If it is whole but does not, `why` tells
// in words that go on "was drawn ...".
bool holds(const std::string& path, const FrameRuns& runs, const Manifest& wanted, std::string* why) {
    Manifest there;
    if (!readManifest(path, &there) || !isWhole(path, there)) return false;
    *why = differenceOf(there, wanted);
    const std::string has = textOf(there.runs()), needs = textOf(runs);
    if (why->empty() && has != needs) *why = "with other frames: " + has + "; " + needs;
    return why->empty();
}

bool drawPieces(SteppedShow& show, const std::vector<Piece>& pieces, const Manifest& wanted) {
    std::vector<Piece> missing;
    int frames = 0, outdated = 0;
    std::string example;
    for (const Piece& piece : pieces) {
        std::string why;
        if (holds(piece.path, {piece.run}, wanted, &why)) continue;
        // Captures put a manifest in its place before its film, so this is somebody's.
        if (fs::exists(piece.path) && !fs::exists(manifestPath(piece.path)))
            return tell(piece.path + " is in the way: it has no manifest");
        if (!why.empty() && outdated++ == 0) example = piece.path + " was drawn " + why;
        missing.push_back(piece);
        frames += piece.run.last - piece.run.first + 1;
    }
    if (missing.size() < pieces.size())
        tell(formatted("%zu of %zu pieces are there already", pieces.size() - missing.size(), pieces.size()));
    if (outdated > 0)
        tell(formatted("%d of %zu pieces are drawn again: ", outdated, pieces.size()) + example);
    Progress progress(frames);
    for (const Piece& piece : missing) {
        if (!drawPart(show, framesOf({piece.run}), progress, piece.path, wanted)) return false;
    }
    return true;
}

// A second of it, written and dropped: what ffmpeg has against it would come only after all is drawn.
bool canHaveSound(const CaptureOptions& options, const Soundtrack& soundtrack) {
    Film film(options.out, soundInput(options.out, options.kind, {soundtrack.path, 0, 1, ""}));
    return (film.problem.empty() && film.finish(true)) || tellNoFilm(film);
}

}  // namespace

bool drawPart(SteppedShow& show, const std::vector<int>& frames, Progress& progress, const std::string& path,
              Manifest manifest) {
    Film film(path, filmWords(path, manifest.kind, manifest.fps, {}, startsOf(frames)));
    return drawFilm(show, frames, progress, manifest.kind, film, &manifest);
}

bool isDrawn(const CaptureOptions& options, const Manifest& wanted) {
    std::string why;
    const bool drawn = holds(options.out, options.runs(options.fps), wanted, &why);
    if (drawn) tell(options.out + " is whole already");
    if (!why.empty()) tell(options.out + " is drawn again: it was drawn " + why);
    return drawn;
}

bool drawResumably(SteppedShow& show, const CaptureOptions& options, const Manifest& wanted,
                   const Soundtrack& soundtrack) {
    const bool silent = !options.frames.empty();
    if (!silent && !canHaveSound(options, soundtrack)) return false;
    const std::string folder = options.out + ".parts";
    std::error_code ignored;  // the first part tells
    fs::create_directories(folder, ignored);
    const std::vector<Piece> pieces = piecesOf(options, options.runs(options.fps));
    std::vector<std::string> paths;
    for (const Piece& piece : pieces) paths.push_back(piece.path);
    const bool whole =
        drawPieces(show, pieces, wanted) && joinParts(paths, options, silent ? nullptr : &soundtrack);
    // Only what was made here: whatever else lies in a folder of that name is somebody's.
    for (const std::string& path : paths) {
        if (!whole) break;
        fs::remove(path, ignored);
        fs::remove(manifestPath(path), ignored);
    }
    fs::remove(folder, ignored);  // if nothing is in it
    return whole;
}
