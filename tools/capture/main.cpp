// Captures the show for a clock that steps: as a film with its sound, as numbered pictures, or as a
// storyboard.
#include <GL/glew.h>
#include <SDL/SDL.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include "app/sound_music.h"
#include "render/screen.h"
#include "tools/capture/film.h"
#include "tools/capture/grabber.h"
#include "tools/capture/options.h"
#include "tools/capture/progress.h"
#include "tools/capture/stepped_show.h"
#include "tools/capture/storyboard.h"
#include "tools/capture/whole_file.h"

namespace {

volatile sig_atomic_t stopped = 0;
bool succeeded = false;
Film* filmInProgress = nullptr;

void stop(int) {
    stopped = 1;
}

// The show's own ways out end with status 0, also where it could not start; a capture without a result
// failed. When the display goes away, its library ends the process in the middle of a film.
void failUnlessSucceeded() {
    if (succeeded) return;
    if (filmInProgress) filmInProgress->abandon();
    fflush(nullptr);
    _exit(1);
}

bool wantsToStop() {
    SDL_Event event;
    while (SDL_PollEvent(&event)) {
        if (event.type == SDL_QUIT) stopped = 1;
    }
    return stopped;
}

// Draws the frames and hands each to `write`. False if that failed or the capture was stopped.
bool captureFrames(SteppedShow& show, const std::vector<int>& frames, Grabber::Write write) {
    Grabber grabber(std::move(write));
    Progress progress(static_cast<int>(frames.size()));
    for (int frame : frames) {
        if (wantsToStop()) return false;
        show.draw(frame);
        if (!grabber.grab()) return false;
        progress.step();
    }
    return grabber.finish();
}

std::vector<int> framesOf(const SteppedShow& show, const CaptureOptions& options) {
    std::vector<int> frames;
    for (int i = show.framesBefore(options.from); i < show.framesBefore(options.to); i++) frames.push_back(i);
    return frames;
}

bool captureFilm(SteppedShow& show, const CaptureOptions& options, const std::vector<int>& frames) {
    const double from = show.milliseconds(frames.front()) * 0.001;
    Film film(options.out, options.fps, from, static_cast<double>(frames.size()) / options.fps,
              SoundMusic::path);
    filmInProgress = &film;
    const bool drawn = film.problem.empty() && captureFrames(show, frames, [&](const Picture& picture) {
                           return film.write(picture);
                       });
    const bool finished = !stopped && film.problem.empty() && film.finish(drawn);
    filmInProgress = nullptr;
    if (!finished && !stopped) fprintf(stderr, "capture: no film was written: %s\n", film.problem.c_str());
    return finished;
}

bool capturePictures(SteppedShow& show, const CaptureOptions& options, const std::vector<int>& frames) {
    std::error_code ignored;  // the first picture tells
    std::filesystem::create_directories(std::filesystem::path(options.out).parent_path(), ignored);
    Image image = createImage(screenWidth, screenHeight, 3);
    size_t next = 0;
    const bool done = captureFrames(show, frames, [&](const Picture& picture) {
        for (size_t i = 0; i < picture.size() / 4; i++) {
            for (int channel = 0; channel < 3; channel++)
                image.pixels[i * 3 + channel] = picture[i * 4 + 2 - channel];
        }
        flipImage(image, 1, 0);
        std::vector<char> name(options.out.size() + 16);
        snprintf(name.data(), name.size(), options.out.c_str(), frames[next++]);
        return writeWholePng(name.data(), image);
    });
    delete[] image.pixels;
    return done;
}

bool captureStoryboard(SteppedShow& show, const CaptureOptions& options, const std::vector<int>& all) {
    std::vector<int> frames;
    for (int i = 0; options.from + i * options.every < options.to; i++)
        frames.push_back(std::min(show.framesBefore(options.from + i * options.every), all.back()));
    Storyboard storyboard(static_cast<int>(frames.size()));
    int next = 0;
    return captureFrames(show, frames,
                         [&](const Picture& picture) {
                             storyboard.add(next, picture, show.milliseconds(frames[next]) * 0.001);
                             next++;
                             return true;
                         }) &&
           storyboard.save(options.storyboard.c_str());
}

bool capture(const CaptureOptions& options) {
    for (int signalNumber : {SIGINT, SIGTERM, SIGHUP}) signal(signalNumber, stop);
    SteppedShow show(options.fps);
    const std::vector<int> frames = framesOf(show, options);
    if (frames.empty()) {
        fprintf(stderr, "capture: no frame lies between --from and --to\n");
        return false;
    }
    if (!options.storyboard.empty()) return captureStoryboard(show, options, frames);
    const bool pictures = options.out.ends_with(".png");
    return pictures ? capturePictures(show, options, frames) : captureFilm(show, options, frames);
}

}  // namespace

int main(int argc, char** argv) {
    const CaptureOptions options = parseCaptureOptions(argc, argv);
    atexit(failUnlessSucceeded);
    succeeded = capture(options);
    if (stopped && !succeeded) fprintf(stderr, "capture: stopped; nothing was left half written\n");
    return succeeded ? 0 : 1;
}
