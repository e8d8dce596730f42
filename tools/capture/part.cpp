#include "tools/capture/part.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "tools/capture/drawing.h"
#include "tools/capture/hash.h"
#include "tools/capture/join.h"
#include "tools/capture/stopping.h"

namespace fs = std::filesystem;

namespace {

constexpr int secondsOfPiece = 10;  // what a capture that is killed and resumed loses at most

struct Piece {
    std::string path;
    FrameRun run;
};

// Pieces meet where groups of frames would begin anyway.
std::vector<Piece> piecesOf(const CaptureOptions& options, const FrameRuns& runs) {
    const int length = secondsOfPiece * options.fps;
    const std::string folder = options.out + ".parts/";
    const std::string ending = hasExactTimes(options.out) ? fs::path(options.out).extension() : ".mp4";
    std::vector<Piece> pieces;
    for (const FrameRun& run : runs) {
        for (int first = run.first; first <= run.last;) {
            const int last = std::min(run.last, (first / length + 1) * length - 1);
            char name[64];
            snprintf(name, sizeof name, "%06d-%06d", first, last);
            pieces.push_back({folder + name + ending, {first, last}});
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

// Whether `path` holds what would be drawn now; of a window that isn't open, the renderer is left out.
bool holds(const std::string& path, const FrameRuns& runs, Manifest wanted) {
    Manifest there;
    if (!readManifest(path, &there) || textOf(there.runs()) != textOf(runs)) return false;
    if (wanted.renderer.empty()) wanted.renderer = there.renderer;
    if (wanted.samples == samplesOfRenderer) wanted.samples = there.samples;
    return differenceOf(there, wanted).empty() && isWhole(path, there);
}

bool drawPieces(const CaptureOptions& options, const std::vector<Piece>& pieces) {
    SteppedShow show(options.fps, options.samples);
    const Manifest manifest = manifestOfWindow(options.fps, options.kind);
    std::vector<Piece> missing;
    int frames = 0;
    for (const Piece& piece : pieces) {
        if (holds(piece.path, {piece.run}, manifest)) continue;
        missing.push_back(piece);
        frames += piece.run.last - piece.run.first + 1;
    }
    if (missing.size() < pieces.size())
        fprintf(stderr, "capture: %zu of %zu pieces are there already\n", pieces.size() - missing.size(),
                pieces.size());
    Progress progress(frames);
    for (const Piece& piece : missing) {
        if (!drawPart(show, framesOf({piece.run}), progress, piece.path, manifest)) return false;
    }
    return true;
}

}  // namespace

bool drawPart(SteppedShow& show, const std::vector<int>& frames, Progress& progress, const std::string& path,
              Manifest manifest) {
    unlink(manifestPath(path).c_str());  // of a part that was there before
    Film film(path, filmWords(path, manifest.kind, manifest.fps, {}, startsOf(frames)));
    size_t next = 0;
    const bool drawn = drawFilm(show, frames, progress, film, [&](const Picture& picture) {
        manifest.frames.push_back({frames[next++], hashOfPicture(picture)});
    });
    if (!drawn) return false;
    manifest.film = hashOfFile(path);
    if (writeManifest(path, manifest)) return true;
    unlink(path.c_str());
    return false;
}

bool drawResumably(const CaptureOptions& options) {
    const FrameRuns runs = options.runs(options.fps);
    Manifest wanted = manifestOfProgram(options.fps, options.kind);
    wanted.samples = options.samples;
    if (holds(options.out, runs, wanted)) {
        fprintf(stderr, "capture: %s is whole already\n", options.out.c_str());
        return true;
    }
    const std::string folder = options.out + ".parts";
    std::error_code ignored;  // the first part tells
    fs::create_directories(folder, ignored);
    const std::vector<Piece> pieces = piecesOf(options, runs);
    if (!drawPieces(options, pieces)) {
        fs::remove(folder, ignored);  // if nothing is in it
        return false;
    }
    std::vector<std::string> paths;
    for (const Piece& piece : pieces) paths.push_back(piece.path);
    const bool silent = !options.frames.empty();
    if (!joinParts(paths, options, !silent)) return false;
    fs::remove_all(folder, ignored);
    return true;
}
